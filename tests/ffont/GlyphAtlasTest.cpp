#include "platform/ffont/GlyphAtlas.h"

#include <memory>
#include <utility>

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "tests/support/OffscreenGL.h"

namespace {

// A picture of one value, which its neighbours do not have.
GlyphImage plain(int width, int height, unsigned char value) {
    GlyphImage image;
    image.leftPx = -3;
    image.topPx = 17;
    image.width = width;
    image.height = height;
    image.coverage.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), value);
    return image;
}

GlyphKey keyNumber(int number) {
    GlyphKey key;
    key.glyph = static_cast<unsigned int>(number);
    key.emWidthSteps = 100;
    key.emHeightSteps = 100;
    return key;
}

class GlyphAtlasTest : public testing::Test {
protected:
    GlyphAtlasTest() {
        glGenTextures(1, &texture);
        atlas = std::make_unique<GlyphAtlas>(texture);
    }
    std::vector<unsigned char> texels() {
        const auto side = static_cast<std::size_t>(atlas->maxSamples());
        std::vector<unsigned char> values(side * side);
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        glBindTexture(GL_TEXTURE_2D, texture);
        glGetTexImage(GL_TEXTURE_2D, 0, GL_ALPHA, GL_UNSIGNED_BYTE, values.data());
        return values;
    }
    // True when all samples of the picture's place have the value.
    bool holds(const std::vector<unsigned char>& values, const AtlasGlyph& glyph, unsigned char value) {
        const auto side = static_cast<float>(atlas->maxSamples());
        for (int y = static_cast<int>(glyph.top * side); y < static_cast<int>(glyph.bottom * side); ++y) {
            for (int x = static_cast<int>(glyph.left * side); x < static_cast<int>(glyph.right * side); ++x) {
                if (values.begin()[y * atlas->maxSamples() + x] != value) {
                    return false;
                }
            }
        }
        return true;
    }

    const OffscreenGL gl{16, 16};
    unsigned int texture = 0;
    std::unique_ptr<GlyphAtlas> atlas;
};

}  // namespace

TEST_F(GlyphAtlasTest, FindsWhatWasAddedAndNothingElse) {
    EXPECT_EQ(atlas->find(keyNumber(1)), nullptr);
    const AtlasGlyph* added = atlas->add(keyNumber(1), plain(10, 20, 50));
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(atlas->find(keyNumber(1)), added);
    EXPECT_EQ(atlas->find(keyNumber(2)), nullptr);
    EXPECT_EQ(added->leftPx, -3);
    EXPECT_EQ(added->topPx, 17);
    EXPECT_EQ(added->widthPx, 10);
    EXPECT_EQ(added->heightPx, 20);
}

TEST_F(GlyphAtlasTest, EveryFieldOfTheKeyCounts) {
    const GlyphKey key = keyNumber(1);
    ASSERT_NE(atlas->add(key, plain(4, 4, 50)), nullptr);
    GlyphKey other = key;
    other.emWidthSteps = 101;
    EXPECT_EQ(atlas->find(other), nullptr);
    other = key;
    other.emHeightSteps = 99;
    EXPECT_EQ(atlas->find(other), nullptr);
    other = key;
    other.phaseX = 1;
    EXPECT_EQ(atlas->find(other), nullptr);
    other = key;
    other.phaseY = 1;
    EXPECT_EQ(atlas->find(other), nullptr);
    other = key;
    other.hinted = true;
    EXPECT_EQ(atlas->find(other), nullptr);
}

TEST_F(GlyphAtlasTest, KeepsAnEmptyPictureWithoutRoomForIt) {
    const AtlasGlyph* blank = atlas->add(keyNumber(1), GlyphImage());
    ASSERT_NE(blank, nullptr);
    EXPECT_EQ(blank->widthPx, 0);
    EXPECT_EQ(atlas->find(keyNumber(1)), blank);
}

TEST_F(GlyphAtlasTest, ScalesAReducedPictureUp) {
    GlyphImage image = plain(10, 20, 50);
    image.pixelsPerSample = 4;
    const AtlasGlyph* glyph = atlas->add(keyNumber(1), image);
    EXPECT_EQ(glyph->widthPx, 40);
    EXPECT_EQ(glyph->heightPx, 80);
}

TEST_F(GlyphAtlasTest, PicturesOfAllSizesDoNotOverlap) {
    std::vector<std::pair<const AtlasGlyph*, unsigned char>> added;
    for (int i = 0; i < 250; ++i) {
        const auto value = static_cast<unsigned char>(i + 1);
        added.emplace_back(atlas->add(keyNumber(i), plain(3 + i * 7 % 90, 3 + i * 13 % 70, value)), value);
        ASSERT_NE(added.back().first, nullptr);
    }
    const std::vector<unsigned char> values = texels();
    for (const auto& [glyph, value] : added) {
        EXPECT_TRUE(holds(values, *glyph, value));
    }
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(GlyphAtlasTest, IsFullInTheEndAndEmptyAfterClear) {
    const int side = atlas->maxSamples();
    int count = 0;
    while (atlas->add(keyNumber(count), plain(side / 8, side / 8, 1)) != nullptr) {
        ++count;
        ASSERT_LE(count, 64);
    }
    EXPECT_EQ(count, 64);
    EXPECT_EQ(atlas->find(keyNumber(64)), nullptr);
    EXPECT_NE(atlas->add(keyNumber(1000), GlyphImage()), nullptr);
    atlas->clear();
    EXPECT_EQ(atlas->find(keyNumber(0)), nullptr);
    const AtlasGlyph* largest = atlas->add(keyNumber(0), plain(side, side, 200));
    ASSERT_NE(largest, nullptr);
    EXPECT_TRUE(holds(texels(), *largest, 200));
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(GlyphAtlasTest, HasMoreRoomForALargeViewportOnceItIsEmptied) {
    const int side = atlas->maxSamples();
    const AtlasGlyph* glyph = atlas->add(keyNumber(1), plain(9, 7, 200));
    glViewport(0, 0, 3840, 2160);
    EXPECT_EQ(atlas->maxSamples(), side);
    EXPECT_TRUE(holds(texels(), *glyph, 200)) << "what is in it stays";
    atlas->clear();
    EXPECT_EQ(atlas->maxSamples(), 2 * side);
    glyph = atlas->add(keyNumber(1), plain(2 * side, 7, 100));
    ASSERT_NE(glyph, nullptr);
    EXPECT_TRUE(holds(texels(), *glyph, 100));
    glViewport(0, 0, 640, 480);
    atlas->clear();
    EXPECT_EQ(atlas->maxSamples(), side);
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(GlyphAtlasTest, UploadsRightWhateverThePixelStoreWas) {
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 100);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 2);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 3);
    GlyphImage image = plain(5, 3, 0);
    for (std::size_t i = 0; i < image.coverage.size(); ++i) {
        image.coverage[i] = static_cast<unsigned char>(i + 1);
    }
    ASSERT_NE(atlas->add(keyNumber(1), image), nullptr);
    const std::vector<unsigned char> values = texels();
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 5; ++x) {
            EXPECT_EQ(values.begin()[y * atlas->maxSamples() + x], y * 5 + x + 1);
        }
    }
}
