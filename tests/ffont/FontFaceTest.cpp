#include "platform/ffont/FontFace.h"

#include <algorithm>
#include <numeric>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"

namespace {

std::unique_ptr<FontFace> openVera() {
    std::string reason;
    std::unique_ptr<FontFace> face = FontFace::open("Fonts/Vera.ttf", reason);
    EXPECT_TRUE(face) << reason;
    return face;
}

std::string reasonFor(const std::string& path) {
    std::string reason;
    EXPECT_FALSE(FontFace::open(path, reason));
    return reason;
}

GlyphKey keyOf(const FontFace& face, char32_t character, int emPx) {
    GlyphKey key;
    key.glyph = face.glyphOf(character);
    key.emWidthSteps = emPx * GlyphKey::stepsPerPixel;
    key.emHeightSteps = key.emWidthSteps;
    return key;
}

GlyphImage rasterised(const FontFace& face, const GlyphKey& key) {
    const int manySamples = 2048;
    return face.rasterise(key, manySamples);
}

double total(const GlyphImage& image) {
    return std::accumulate(image.coverage.begin(), image.coverage.end(), 0.0) / 255.0;
}

}  // namespace

TEST(FontFace, TellsWhyAFileCannotBeRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(reasonFor("missing.ttf"), "No such file or directory");
    EXPECT_EQ(reasonFor("."), "Is a directory");
    folder.write("empty.ttf", "");
    EXPECT_NE(reasonFor("empty.ttf"), "");
    folder.write("large.ttf", "");
    std::filesystem::resize_file("large.ttf", (std::uintmax_t(64) << 20) + 1);
    EXPECT_EQ(reasonFor("large.ttf"), "larger than a font");
}

TEST(FontFace, HasGlyphZeroForWhatItLacksAndNothingForGlyphsThatAreNotThere) {
    const auto face = openVera();
    EXPECT_EQ(face->glyphOf(U'\u4E2D'), 0u);
    EXPECT_NE(face->glyphOf(U'\u00E9'), 0u);
    EXPECT_GT(total(rasterised(*face, keyOf(*face, U'\u4E2D', 32))), 30.0);
    EXPECT_EQ(face->advance(1000000), 0.0);
    EXPECT_EQ(face->kerning(1000000, 5), 0.0);
    GlyphKey key = keyOf(*face, U'A', 32);
    key.glyph = 1000000;
    EXPECT_TRUE(rasterised(*face, key).coverage.empty());
}

TEST(FontFace, EveryFieldOfAGlyphKeyCounts) {
    const GlyphKey key{1, 2, 3, 1, 2, false};
    EXPECT_TRUE(key == GlyphKey(key));
    for (const GlyphKey& other :
         {GlyphKey{0, 2, 3, 1, 2, false}, GlyphKey{1, 0, 3, 1, 2, false}, GlyphKey{1, 2, 0, 1, 2, false},
          GlyphKey{1, 2, 3, 0, 2, false}, GlyphKey{1, 2, 3, 1, 0, false}, GlyphKey{1, 2, 3, 1, 2, true}}) {
        EXPECT_FALSE(key == other);
    }
}

TEST(FontFace, PictureHasTheGlyphsSizeAndPlace) {
    const auto face = openVera();
    // The outline of H: 201 to 1339 across, 0 to 1493 up, in 2048ths.
    const GlyphImage image = rasterised(*face, keyOf(*face, U'H', 256));
    const int border = 1;
    EXPECT_EQ(image.pixelsPerSample, 1);
    EXPECT_EQ(image.leftPx, 25 - border);
    EXPECT_EQ(image.topPx, 187 + border);
    EXPECT_EQ(image.width, 168 - 25 + 2 * border);
    EXPECT_EQ(image.height, 187 + 2 * border);
}

TEST(FontFace, PictureThatWouldBeTooLargeIsMadeSmaller) {
    const auto face = openVera();
    const GlyphKey key = keyOf(*face, U'M', 1000);
    const GlyphImage whole = rasterised(*face, key);
    const GlyphImage reduced = face->rasterise(key, 256);
    EXPECT_EQ(whole.pixelsPerSample, 1);
    EXPECT_EQ(reduced.pixelsPerSample, 4);
    EXPECT_LE(reduced.width, 256);
    EXPECT_LE(reduced.height, 256);
    EXPECT_NEAR(reduced.leftPx, whole.leftPx, 8);
    EXPECT_NEAR(reduced.topPx, whole.topPx, 8);
    EXPECT_NEAR(total(reduced) * 16, total(whole), 0.01 * total(whole));
}
