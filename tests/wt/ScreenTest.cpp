#include "platform/wt/Screen.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

namespace {

wt::Screen sized(int width, int height) {
    wt::Screen screen;
    screen.width = width;
    screen.height = height;
    return screen;
}

TEST(ScreenTest, MiddlesOfTheCornerPixelsAreHalfAPixelInside) {
    const wt::Screen screen = sized(200, 100);
    EXPECT_NEAR(screen.fromPixel(0, 0).x, -0.995F, 1e-6F);
    EXPECT_NEAR(screen.fromPixel(0, 0).y, 0.99F, 1e-6F);
    EXPECT_NEAR(screen.fromPixel(199, 99).x, 0.995F, 1e-6F);
    EXPECT_NEAR(screen.fromPixel(199, 99).y, -0.99F, 1e-6F);
}

TEST(ScreenTest, SnappedEdgesLieBetweenPixelsAndNeighboursStayNeighbours) {
    const wt::Screen screen = sized(641, 479);
    const wt::Rect below = screen.snapped({0.1003F, -0.3337F, 0.25F, 0.111F});
    const wt::Rect above = screen.snapped({0.1003F, -0.3337F + 0.111F, 0.25F, 0.2F});
    for (const float edge : {below.x / screen.pixelX(), below.right() / screen.pixelX(),
                             below.y / screen.pixelY(), below.top() / screen.pixelY()}) {
        EXPECT_NEAR(edge, std::round(edge), 1e-3F);
    }
    EXPECT_FLOAT_EQ(below.top(), above.y);
    EXPECT_NEAR(below.w, 0.25F, screen.pixelX());
}

TEST(ScreenTest, TextIsLegibleAt480LinesAndKeepsItsShareOfALargeScreen) {
    EXPECT_EQ(sized(640, 480).emPixels(), 14.0F);
    EXPECT_NEAR(sized(1920, 1080).emPixels() / 1080, 1.0F / 42, 0.001F);
    EXPECT_NEAR(sized(3840, 2160).emPixels() / 2160, 1.0F / 42, 0.001F);
    EXPECT_EQ(sized(2560, 1080).emPixels(), sized(1920, 1080).emPixels());
}

TEST(ScreenTest, NarrowScreenHasNoLargerTextThanItsWidthAllows) {
    EXPECT_EQ(sized(480, 640).emPixels(), 14.0F);
    EXPECT_LT(sized(1080, 1920).emPixels(), sized(1920, 1080).emPixels());
    EXPECT_LE(sized(120, 1000).emPixels(), 5.0F);
}

TEST(ScreenTest, TinyAndEmptyScreensStillHaveTextOfAPixel) {
    EXPECT_EQ(sized(1, 1).emPixels(), 1.0F);
    const wt::Screen before = wt::screen();
    wt::setScreen(sized(0, -3));
    EXPECT_EQ(wt::screen().width, 1);
    EXPECT_EQ(wt::screen().height, 1);
    wt::setScreen(before);
}

}  // namespace
