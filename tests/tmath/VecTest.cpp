#include <gtest/gtest.h>

#include "platform/tmath/Vec2.h"
#include "platform/tmath/Vec3.h"

using tavi::Vec2;
using tavi::Vec3;

TEST(Vec2, AddsSubtractsAndScalesByComponent) {
    const Vec2<float> a(1.5f, -2.0f);
    const Vec2<float> b(0.5f, 4.0f);
    EXPECT_EQ(a + b, Vec2<float>(2.0f, 2.0f));
    EXPECT_EQ(a - b, Vec2<float>(1.0f, -6.0f));
    EXPECT_EQ(a * 2.0f, Vec2<float>(3.0f, -4.0f));
}

TEST(Vec2, DiffersWhenOneComponentDoes) {
    EXPECT_NE(Vec2<float>(1.0f, 2.0f), Vec2<float>(1.0f, 3.0f));
    EXPECT_NE(Vec2<float>(1.0f, 2.0f), Vec2<float>(3.0f, 2.0f));
}

TEST(Vec, StartsAtZero) {
    EXPECT_EQ(Vec2<float>(), Vec2<float>(0.0f, 0.0f));
    EXPECT_EQ(Vec3<double>(), Vec3<double>(0.0, 0.0, 0.0));
}

TEST(Vec3, AddsSubtractsAndScalesByComponent) {
    const Vec3<double> a(1.0, 2.0, 3.0);
    const Vec3<double> b(-4.0, 0.5, 6.0);
    EXPECT_EQ(a + b, Vec3<double>(-3.0, 2.5, 9.0));
    EXPECT_EQ(a - b, Vec3<double>(5.0, 1.5, -3.0));
    EXPECT_EQ(a * -2.0, Vec3<double>(-2.0, -4.0, -6.0));
    Vec3<double> vec(1.0, 2.0, 3.0);
    (vec += Vec3<double>(1.0, 1.0, 1.0)) += Vec3<double>(0.0, 0.0, 5.0);
    EXPECT_EQ(vec, Vec3<double>(2.0, 3.0, 9.0));
}

TEST(Vec3, DiffersWhenOneComponentDoes) {
    EXPECT_NE(Vec3<double>(1.0, 2.0, 3.0), Vec3<double>(0.0, 2.0, 3.0));
    EXPECT_NE(Vec3<double>(1.0, 2.0, 3.0), Vec3<double>(1.0, 0.0, 3.0));
    EXPECT_NE(Vec3<double>(1.0, 2.0, 3.0), Vec3<double>(1.0, 2.0, 0.0));
}

TEST(Vec3, DotMultipliesAndSumsAndCrossIsRightHanded) {
    EXPECT_EQ(Vec3<double>(1.0, 2.0, 3.0).dot({4.0, -5.0, 6.0}), 12.0);
    EXPECT_EQ(Vec3<double>(1.0, 0.0, 0.0).cross({0.0, 1.0, 0.0}), Vec3<double>(0.0, 0.0, 1.0));
    EXPECT_EQ(Vec3<double>(1.0, 2.0, 3.0).cross({4.0, 5.0, 6.0}), Vec3<double>(-3.0, 6.0, -3.0));
}
