// More glyphs and sizes than the texture holds: what is drawn stays right.

#include <string>

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "platform/ffont/FFontData.h"
#include "tests/ffont/WorldView.h"
#include "tests/support/Ink.h"
#include "tests/support/OffscreenGL.h"

namespace {

const char* const vera = "Fonts/Vera.ttf";

std::string latin1() {
    std::string text;
    for (char character = '!'; character <= '~'; ++character) {
        text += character;
    }
    for (int character = 0xA1; character <= 0xFF; ++character) {
        text += static_cast<char>(character < 0xC0 ? 0xC2 : 0xC3);
        text += static_cast<char>(0x80 | (character & 0x3F));
    }
    return text;
}

}  // namespace

TEST(FFontDataAtlas, TextStaysRightAfterThousandsOfGlyphsAndSizes) {
    const OffscreenGL gl(640, 480);
    const WorldView view(gl);
    FFontData used(vera, 24);
    const std::string text = latin1();
    // 60 sizes up to an em of 150 pixels with 190 glyphs each: several times what the texture holds.
    for (int size = 0; size < 60; ++size) {
        const float scale = 1.0F + 0.055F * static_cast<float>(size);
        float x = -20.0F * scale;
        float y = 0.0F;
        for (std::size_t start = 0; start < text.size(); start += 20) {
            // Turned a little, so that what is out of sight is rasterised too.
            glPushMatrix();
            glRotatef(1.0F, 0.0F, 0.0F, 1.0F);
            used.drawString(text.substr(start, 20).c_str(), x, y, scale, scale, -1.0F, -1.0F);
            glPopMatrix();
        }
        FFontData fresh(vera, 24);
        const auto expected = drawn(gl, fresh, "Score: 100", -3.0F, 0.0F, scale, scale);
        ASSERT_EQ(largestDifference(drawn(gl, used, "Score: 100", -3.0F, 0.0F, scale, scale), expected), 0);
    }
    EXPECT_TRUE(gl.noErrors());
}

TEST(FFontDataAtlas, OneLineMayNeedMoreThanTheTextureHolds) {
    const OffscreenGL gl(640, 480);
    const WorldView view(gl);
    glRotatef(1.0F, 0.0F, 0.0F, 1.0F);
    // An em of 280 pixels: the first few letters are in sight, the rest drives them out of the texture.
    const float scale = 8.0F;
    FFontData fresh(vera, 24);
    const auto start = drawn(gl, fresh, "QWERTY", -4.0F, -1.0F, scale, scale);
    FFontData face(vera, 24);
    const auto whole = drawn(gl, face, ("QWERTY" + latin1() + latin1()).c_str(), -4.0F, -1.0F, scale, scale);
    EXPECT_EQ(largestDifference(whole, start), 0);
    EXPECT_GT(inkPixels(start), 10000.0);
}

TEST(FFontDataAtlas, GlyphsLargerThanTheTextureAreStillDrawn) {
    const OffscreenGL gl(640, 480);
    const WorldView view(gl);
    FFontData face(vera, 24);
    // The stem of an I 20 times as wide as the window is high covers everything.
    const auto inside = drawn(gl, face, "I", -30.0F, -200.0F, 400.0F, 1000.0F);
    EXPECT_GT(inkPixels(inside), 640.0 * 480.0 * 0.3);
    EXPECT_TRUE(gl.noErrors());
}

TEST(FFontDataAtlas, VerySmallTextIsAShadowOfItself) {
    const OffscreenGL gl(640, 480);
    const WorldView view(gl);
    FFontData face(vera, 24);
    const auto image = drawn(gl, face, "MMMMMMMMMMMMMMMMMMMM", 0.0F, 0.0F, 0.05F, 0.05F);
    const InkBox ink = inkBox(image);
    EXPECT_NEAR(ink.width(), 20 * 0.05 * 0.6 * 1767 / 2048 * view.pixelsPerUnit(), 2.0);
    EXPECT_LE(ink.height(), 3);
}
