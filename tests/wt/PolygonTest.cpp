#include "platform/wt/Polygon.h"

#include <gtest/gtest.h>

#include "platform/wt/Theme.h"

namespace {

TEST(PolygonTest, QuadHasItsCornersCounterClockwiseFromTheLowerLeft) {
    const auto corners = wt::makeQuad({0.1F, 0.2F}, {0.5F, 0.25F});
    ASSERT_EQ(corners.size(), 4U);
    EXPECT_EQ(corners[0], (tavi::Vec2<float>(0.1F, 0.2F)));
    EXPECT_EQ(corners[1], (tavi::Vec2<float>(0.6F, 0.2F)));
    EXPECT_EQ(corners[2], (tavi::Vec2<float>(0.6F, 0.45F)));
    EXPECT_EQ(corners[3], (tavi::Vec2<float>(0.1F, 0.45F)));
}

TEST(PolygonTest, ExtentIsTheBoundingBox) {
    EXPECT_EQ(wt::Polygon({{1, 1}, {3, 2}, {2, 5}}).extent(), (tavi::Vec2<float>(2, 4)));
    EXPECT_EQ(wt::Polygon().extent(), (tavi::Vec2<float>(0, 0)));
}

TEST(PolygonTest, FillIsTheThemesUntilAColourIsGiven) {
    wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
    EXPECT_EQ(polygon.fill(), wt::theme().solid);
    polygon.setColor(tavi::Vec3<float>(0.9F, 0.9F, 1.0F));
    polygon.setAlpha(0.5F);
    EXPECT_EQ(polygon.fill(), wt::Color(0.9F, 0.9F, 1.0F, 0.5F));
}

TEST(PolygonTest, EmptyImageAndUnknownUnitLeaveItWithoutAPicture) {
    wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
    tavi::Image<unsigned char> nothing(0, 0, 0);
    polygon.setTexture(nothing, 0);
    tavi::Image<unsigned char> dot(1, 1, 3);
    polygon.setTexture(dot, -1);
    polygon.setTexture(dot, 4);
    EXPECT_FALSE(polygon.hasTexture());
    EXPECT_EQ(polygon.fill(), wt::theme().solid);
}

TEST(PolygonTest, PictureWithoutAGLContextIsNoPicture) {
    wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
    tavi::Image<unsigned char> dot(1, 1, 3);
    polygon.setTexture(dot, 0);
    EXPECT_FALSE(polygon.hasTexture());
}

}  // namespace
