// What a face draws, looked at pixel by pixel.

#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "platform/ffont/FFontData.h"
#include "tests/ffont/WorldView.h"
#include "tests/support/Ink.h"
#include "tests/support/OffscreenGL.h"

namespace {

const double emAt24 = 0.6;
// The outline of H, in ems.
const double leftOfH = 201.0 / 2048;
const double heightOfH = 1493.0 / 2048;

class FFontDataDrawing : public DrawnFace {
protected:
    tavi::Image<unsigned char> drawnInBox(const char* text, float x, float y, float width, float height) {
        glClear(GL_COLOR_BUFFER_BIT);
        glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
        face.drawString(text, x, y, 1.0f, 1.0f, width, height);
        return gl.read();
    }
};

}  // namespace

TEST_F(FFontDataDrawing, TheEmHasItsSizeInPixels) {
    const InkBox ink = inkBox(drawn(gl, face, "H", 0.0f, 0.0f, 1.0f, 1.0f), 128);
    EXPECT_NEAR(ink.height(), emAt24 * heightOfH * view.pixelsPerUnit(), 0.75);
    EXPECT_NEAR(ink.left, view.columnOf(emAt24 * leftOfH), 1.0);
    EXPECT_NEAR(ink.bottom, view.rowOf(0.0), 1.0);
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(FFontDataDrawing, ScalesAreSeparateAndItFollowsTheModelviewTransform) {
    const InkBox even = inkBox(drawn(gl, face, "H", 0.0f, 0.0f, 1.0f, 1.0f));
    const InkBox wide = inkBox(drawn(gl, face, "H", 0.0f, 0.0f, 3.0f, 1.0f));
    const InkBox high = inkBox(drawn(gl, face, "H", 0.0f, 0.0f, 1.0f, 3.0f));
    EXPECT_NEAR(wide.width(), 3 * even.width(), 4);
    EXPECT_NEAR(wide.height(), even.height(), 1);
    EXPECT_NEAR(high.width(), even.width(), 1);
    EXPECT_NEAR(high.height(), 3 * even.height(), 4);
    glTranslatef(view.xOf(420) - view.xOf(320), view.yOf(140) - view.yOf(240), 0.0f);
    const InkBox moved = inkBox(drawn(gl, face, "H", 0.0f, 0.0f, 1.0f, 1.0f));
    EXPECT_EQ(moved.left, even.left + 100);
    EXPECT_EQ(moved.top, even.top - 100);
}

TEST_F(FFontDataDrawing, DrawsAsWideAsItMeasures) {
    const char* between = "AV To, \xC3\xA9W. fi";
    const float x = -3.0f;
    const InkBox first = inkBox(drawn(gl, face, "I", x, 0.0f, 1.0f, 1.0f));
    const InkBox second =
        inkBox(drawn(gl, face, "I", x + face.measureString(between, 1.0f), 0.0f, 1.0f, 1.0f));
    const auto whole = drawn(gl, face, (between + std::string("I")).c_str(), x, 0.0f, 1.0f, 1.0f);
    EXPECT_EQ(inkBox(whole).right, second.right);
    EXPECT_GT(second.left, first.left + 100);
}

TEST_F(FFontDataDrawing, UsesTheCurrentColourAndBlendsByItsAlpha) {
    glClearColor(0.0f, 0.0f, 1.0f, 1.0f);
    glClear(GL_COLOR_BUFFER_BIT);
    glColor4f(1.0f, 0.5f, 0.0f, 0.5f);
    float x = view.xOf(320);
    float y = view.yOf(240);
    // Large enough for the stem of I to fill whole pixels.
    face.drawString("I", x, y, 6.0f, 6.0f, -1.0f, -1.0f);
    const auto image = gl.read();
    const int column = 320 + static_cast<int>(6 * emAt24 * (201.0 + 100.0) / 2048 * view.pixelsPerUnit());
    EXPECT_NEAR(image.at(column, 200, 0), 128, 1);
    EXPECT_NEAR(image.at(column, 200, 1), 64, 1);
    EXPECT_NEAR(image.at(column, 200, 2), 127, 1);
    EXPECT_EQ(image.at(5, 5, 2), 255);
}

TEST_F(FFontDataDrawing, NothingOfTheGroundShowsInsideAStem) {
    const auto image = drawn(gl, face, "I", 0.0f, 0.0f, 6.0f, 6.0f);
    const InkBox ink = inkBox(image, 255);
    for (int y = ink.top; y < ink.bottom; ++y) {
        for (int x = ink.left; x < ink.right; ++x) {
            ASSERT_EQ(inkAt(image, x, y), 255);
        }
    }
    EXPECT_NEAR(ink.width(), 6 * emAt24 * 202 / 2048 * view.pixelsPerUnit(), 2.0);
}

TEST_F(FFontDataDrawing, MissingCharactersAndBadBytesShowTheSameBox) {
    const auto missing = drawn(gl, face, "\xE4\xB8\xAD", 0.0f, 0.0f, 1.0f, 1.0f);
    EXPECT_FALSE(inkBox(missing).empty());
    EXPECT_EQ(largestDifference(drawn(gl, face, "\xFF", 0.0f, 0.0f, 1.0f, 1.0f), missing), 0);
    EXPECT_EQ(largestDifference(drawn(gl, face, "\xEF\xBF\xBD", 0.0f, 0.0f, 1.0f, 1.0f), missing), 0);
}

TEST_F(FFontDataDrawing, TextDoesNotLeaveTheWidthOfItsBox) {
    const float x = view.xOf(100);
    const float y = view.yOf(240);
    const auto whole = drawn(gl, face, "MMMM", x, y, 1.0f, 1.0f);
    // Through the middle of the second M.
    const int cutColumn = 100 + static_cast<int>(1.5 * emAt24 * 1767 / 2048 * view.pixelsPerUnit());
    const auto cut = drawnInBox("MMMM", x, y, view.xOf(cutColumn) - x, -1.0f);
    EXPECT_EQ(inkBox(cut).right, cutColumn);
    EXPECT_GT(inkBox(whole).right, cutColumn + 20);
    EXPECT_NEAR(inkPixels(cut), inkPixels(whole, 0, cutColumn), 0.1);
}

TEST_F(FFontDataDrawing, TextDoesNotLeaveTheHeightOfItsBox) {
    const float x = view.xOf(100);
    const float y = view.yOf(240);
    const auto whole = drawn(gl, face, "Hjg", x, y, 1.0f, 1.0f);
    const int bottomRow =
        static_cast<int>(std::lround(view.rowOf(static_cast<double>(y + face.descender()))));
    const int cutRow = bottomRow - 20;
    const auto cut = drawnInBox("Hjg", x, y, 0.0f, view.yOf(cutRow) - (y + face.descender()));
    EXPECT_EQ(inkBox(cut).top, cutRow);
    EXPECT_EQ(inkBox(cut).bottom, inkBox(whole).bottom);
    EXPECT_LT(inkBox(whole).top, cutRow - 5);
}

TEST_F(FFontDataDrawing, ABoxLargerThanTheTextCutsNothing) {
    const auto whole = drawn(gl, face, "Hjg", -1.0f, 0.0f, 1.0f, 1.0f);
    const float textHeight = face.ascender() - face.descender();
    for (const auto& [width, height] :
         {std::pair(100.0f, 100.0f), {100.0f, 10.0f}, {-1.0f, -1.0f}, {0.0f, 0.0f}, {5.0f, textHeight}}) {
        EXPECT_EQ(largestDifference(drawnInBox("Hjg", -1.0f, 0.0f, width, height), whole), 0);
    }
}

TEST_F(FFontDataDrawing, TheBoxCutsTurnedTextInItsOwnPlane) {
    glRotatef(90.0f, 0.0f, 0.0f, 1.0f);
    const auto whole = drawn(gl, face, "MMMM", 0.0f, 0.0f, 1.0f, 1.0f);
    const auto cut = drawnInBox("MMMM", 0.0f, 0.0f, 0.5f, -1.0f);
    EXPECT_NEAR(inkBox(whole).height(), emAt24 * 4 * 1767 / 2048 * view.pixelsPerUnit(), 10);
    EXPECT_NEAR(inkBox(cut).top, view.rowOf(0.5), 1.0);
    EXPECT_EQ(inkBox(cut).bottom, inkBox(whole).bottom);
}

TEST_F(FFontDataDrawing, LettersAcrossTheWindowsEdgesShowTheirPartInside) {
    const auto inside = drawn(gl, face, "M", view.xOf(100), view.yOf(240), 2.0f, 2.0f);
    const InkBox ink = inkBox(inside);
    const double half = inkPixels(inside, ink.left, ink.left + ink.width() / 2);
    const double originToMiddle = ink.left + ink.width() / 2 - 100;
    const auto left = drawn(gl, face, "M", view.xOf(-originToMiddle), view.yOf(240), 2.0f, 2.0f);
    EXPECT_NEAR(inkPixels(left), half, 0.1 * half);
    const auto right = drawn(gl, face, "M", view.xOf(640 - originToMiddle), view.yOf(240), 2.0f, 2.0f);
    EXPECT_NEAR(inkPixels(right), half, 0.1 * half);
    EXPECT_FALSE(inkBox(drawn(gl, face, "M", view.xOf(100), view.yOf(480 + 10), 2.0f, 2.0f)).empty());
    EXPECT_FALSE(inkBox(drawn(gl, face, "j", view.xOf(100), view.yOf(-2), 2.0f, 2.0f)).empty());
}

TEST_F(FFontDataDrawing, TurnedAndMirroredTextHasTheSameInk) {
    const double upright = inkPixels(drawn(gl, face, "Score", 0.0f, 0.0f, 2.0f, 2.0f));
    glScalef(-1.0f, 1.0f, 1.0f);
    const auto mirrored = drawn(gl, face, "Score", 0.0f, 0.0f, 2.0f, 2.0f);
    EXPECT_NEAR(inkPixels(mirrored), upright, 0.02 * upright);
    EXPECT_LE(inkBox(mirrored, 64).right, 321);
    glRotatef(30.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_NEAR(inkPixels(drawn(gl, face, "Score", 0.0f, 0.0f, 2.0f, 2.0f)), upright, 0.02 * upright);
}

TEST_F(FFontDataDrawing, DepthTestHidesTextBehindAnObject) {
    glEnable(GL_DEPTH_TEST);
    glClear(GL_DEPTH_BUFFER_BIT);
    glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE);
    glTranslatef(0.0f, 0.0f, 1.0f);
    glRectf(-5.0f, -5.0f, 5.0f, 5.0f);
    glTranslatef(0.0f, 0.0f, -1.0f);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    EXPECT_TRUE(inkBox(drawnInBox("hidden", 0.0f, 0.0f, -1.0f, -1.0f)).empty());
}

TEST_F(FFontDataDrawing, OddNumbersDrawNothingAndHarmNothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float odd : {nan, infinity, -infinity, 0.0f, 1e30F, 1e-30F}) {
        drawn(gl, face, "odd", odd, 0.0f, 1.0f, 1.0f);
        drawn(gl, face, "odd", 0.0f, odd, 1.0f, 1.0f);
        drawn(gl, face, "odd", 0.0f, 0.0f, odd, 1.0f);
        drawn(gl, face, "odd", 0.0f, 0.0f, 1.0f, odd);
        drawnInBox("odd", 0.0f, 0.0f, odd, odd);
    }
    EXPECT_TRUE(inkBox(drawn(gl, face, "odd", nan, 0.0f, 1.0f, 1.0f)).empty());
    EXPECT_TRUE(inkBox(drawn(gl, face, "odd", 0.0f, 0.0f, 1.0f, 0.0f)).empty());
    EXPECT_TRUE(gl.noErrors());
    EXPECT_FALSE(inkBox(drawn(gl, face, "even", 0.0f, 0.0f, 1.0f, 1.0f)).empty());
}

TEST(FFontDataContext, AFaceDrawsOnceThereIsAContextAndOutlivesIt) {
    FFontData face("Fonts/Vera.ttf", 24);
    float x = 0.0f;
    float y = 0.0f;
    face.drawString("early", x, y, 1.0f, 1.0f, -1.0f, -1.0f);
    {
        const OffscreenGL gl(640, 480);
        const WorldView view(gl);
        EXPECT_FALSE(inkBox(drawn(gl, face, "late", 0.0f, 0.0f, 1.0f, 1.0f)).empty());
        EXPECT_TRUE(gl.noErrors());
    }
    EXPECT_GT(face.drawString("text", x, y, 1.0f, 1.0f, -1.0f, -1.0f), 0.0f);
}
