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
    EXPECT_NEAR(screen.fromPixel(0, 0).x, -0.995f, 1e-6f);
    EXPECT_NEAR(screen.fromPixel(0, 0).y, 0.99f, 1e-6f);
    EXPECT_NEAR(screen.fromPixel(199, 99).x, 0.995f, 1e-6f);
    EXPECT_NEAR(screen.fromPixel(199, 99).y, -0.99f, 1e-6f);
}

TEST(ScreenTest, SnappedEdgesLieBetweenPixelsAndNeighboursStayNeighbours) {
    const wt::Screen screen = sized(641, 479);
    const wt::Rect below = screen.snapped({0.1003f, -0.3337f, 0.25f, 0.111f});
    const wt::Rect above = screen.snapped({0.1003f, -0.3337f + 0.111f, 0.25f, 0.2f});
    for (const float edge : {below.x / screen.pixelX(), below.right() / screen.pixelX(),
                             below.y / screen.pixelY(), below.top() / screen.pixelY()}) {
        EXPECT_NEAR(edge, std::round(edge), 1e-3f);
    }
    EXPECT_FLOAT_EQ(below.top(), above.y);
    EXPECT_NEAR(below.w, 0.25f, screen.pixelX());
}

TEST(ScreenTest, TextIsLegibleAt480LinesAndKeepsItsShareOfALargeScreen) {
    EXPECT_EQ(sized(640, 480).emPixels(), 14.0f);
    EXPECT_NEAR(sized(1920, 1080).emPixels() / 1080, 1.0f / 42, 0.001f);
    EXPECT_NEAR(sized(3840, 2160).emPixels() / 2160, 1.0f / 42, 0.001f);
    EXPECT_EQ(sized(2560, 1080).emPixels(), sized(1920, 1080).emPixels());
}

TEST(ScreenTest, NarrowScreenHasNoLargerTextThanItsWidthAllows) {
    EXPECT_EQ(sized(480, 640).emPixels(), 14.0f);
    EXPECT_LT(sized(1080, 1920).emPixels(), sized(1920, 1080).emPixels());
    EXPECT_LE(sized(120, 1000).emPixels(), 5.0f);
}

TEST(ScreenTest, TinyAndEmptyScreensStillHaveTextOfAPixel) {
    EXPECT_EQ(sized(1, 1).emPixels(), 1.0f);
    const wt::Screen before = wt::screen();
    wt::setScreen(sized(0, -3));
    EXPECT_EQ(wt::screen().width, 1);
    EXPECT_EQ(wt::screen().height, 1);
    wt::setScreen(before);
}

}  // namespace
