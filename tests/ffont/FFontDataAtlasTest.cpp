// More glyphs and sizes than the texture holds: what is drawn stays right.

#include <string>

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "platform/ffont/GlyphAtlas.h"
#include "tests/ffont/WorldView.h"
#include "tests/support/Ink.h"

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

using FFontDataAtlas = DrawnFace;

}  // namespace

TEST_F(FFontDataAtlas, TextStaysRightAfterThousandsOfGlyphsAndSizes) {
    const std::string text = latin1();
    // 60 sizes up to an em of 150 pixels with 190 glyphs each: several times what the texture holds.
    for (int size = 0; size < 60; ++size) {
        const float scale = 1.0f + 0.055f * static_cast<float>(size);
        float x = -20.0f * scale;
        float y = 0.0f;
        for (std::size_t start = 0; start < text.size(); start += 20) {
            // Turned a little, so that what is out of sight is rasterised too.
            glPushMatrix();
            glRotatef(1.0f, 0.0f, 0.0f, 1.0f);
            face.drawString(text.substr(start, 20).c_str(), x, y, scale, scale, -1.0f, -1.0f);
            glPopMatrix();
        }
        FFontData fresh(vera, 24);
        const auto expected = drawn(gl, fresh, "Score: 100", -3.0f, 0.0f, scale, scale);
        ASSERT_EQ(largestDifference(drawn(gl, face, "Score: 100", -3.0f, 0.0f, scale, scale), expected), 0);
    }
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(FFontDataAtlas, OneLineMayNeedMoreThanTheTextureHolds) {
    glRotatef(1.0f, 0.0f, 0.0f, 1.0f);
    // An em of 280 pixels: the first few letters are in sight, the rest drives them out of the texture.
    const float scale = 8.0f;
    FFontData fresh(vera, 24);
    const auto start = drawn(gl, fresh, "QWERTY", -4.0f, -1.0f, scale, scale);
    const auto whole = drawn(gl, face, ("QWERTY" + latin1() + latin1()).c_str(), -4.0f, -1.0f, scale, scale);
    EXPECT_EQ(largestDifference(whole, start), 0);
    EXPECT_GT(inkPixels(start), 10000.0);
}

TEST_F(FFontDataAtlas, GlyphsLargerThanTheTextureAreStillDrawn) {
    // The stem of an I 20 times as wide as the window is high covers everything.
    const auto inside = drawn(gl, face, "I", -30.0f, -200.0f, 400.0f, 1000.0f);
    EXPECT_GT(inkPixels(inside), 640.0 * 480.0 * 0.3);
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(FFontDataAtlas, GlyphThatFilledALargeAtlasFitsTheSmallOneAfterIt) {
    // An em of 1700 pixels: a 4K window's texture takes one such glyph, a small window's none at full size.
    glViewport(0, 0, 3840, 2160);
    drawn(gl, face, "M", -8.0f, -4.0f, 10.9f, 10.9f);
    glViewport(0, 0, 640, 480);
    const auto second = drawn(gl, face, "W", -16.0f, -8.0f, 49.0f, 49.0f);
    FFontData fresh(vera, 24);
    EXPECT_EQ(largestDifference(second, drawn(gl, fresh, "W", -16.0f, -8.0f, 49.0f, 49.0f)), 0);
    EXPECT_GT(inkPixels(second), 10000.0);
}

TEST_F(FFontDataAtlas, IsLargerForALargeWindow) {
    glViewport(0, 0, 64, 64);
    unsigned int texture = 0;
    glGenTextures(1, &texture);
    GlyphAtlas atlas(texture);
    EXPECT_EQ(atlas.maxSamples(), 512);
    glViewport(0, 0, 1920, 1080);
    EXPECT_EQ(atlas.maxSamples(), 1024);
    glViewport(0, 0, 3840, 2160);
    EXPECT_EQ(atlas.maxSamples(), 2048);
}

TEST_F(FFontDataAtlas, VerySmallTextIsAShadowOfItself) {
    const auto image = drawn(gl, face, "MMMMMMMMMMMMMMMMMMMM", 0.0f, 0.0f, 0.05f, 0.05f);
    const InkBox ink = inkBox(image);
    EXPECT_NEAR(ink.width(), 20 * 0.05 * 0.6 * 1767 / 2048 * view.pixelsPerUnit(), 2.0);
    EXPECT_LE(ink.height(), 3);
}
