#include "platform/wt/Polygon.h"

#include <gtest/gtest.h>

#include "platform/wt/Theme.h"

namespace {

TEST(PolygonTest, ExtentIsTheBoundingBox) {
    EXPECT_EQ(wt::Polygon({{1, 1}, {3, 2}, {2, 5}}).extent(), (tavi::Vec2<float>(2, 4)));
    EXPECT_EQ(wt::Polygon().extent(), (tavi::Vec2<float>(0, 0)));
}

TEST(PolygonTest, FillIsTheThemesUntilAColourIsGiven) {
    wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
    EXPECT_EQ(polygon.fill(), wt::theme().solid);
    polygon.setColor(tavi::Vec3<float>(0.9f, 0.9f, 1.0f));
    polygon.setAlpha(0.5f);
    EXPECT_EQ(polygon.fill(), wt::Color(0.9f, 0.9f, 1.0f, 0.5f));
}

TEST(PolygonTest, EmptyImageAndUnknownUnitAndNoGLContextLeaveItWithoutAPicture) {
    wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
    tavi::Image<unsigned char> nothing(0, 0, 0);
    polygon.setTexture(nothing, 0);
    tavi::Image<unsigned char> dot(1, 1, 3);
    for (const int unit : {-1, 4, 0}) {
        polygon.setTexture(dot, unit);
    }
    EXPECT_FALSE(polygon.hasTexture());
    EXPECT_EQ(polygon.fill(), wt::theme().solid);
}

}  // namespace
