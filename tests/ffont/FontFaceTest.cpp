#include "platform/ffont/FontFace.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"

using testing::Ge;

namespace {

const int manySamples = 2048;

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

double total(const GlyphImage& image) {
    double sum = 0.0;
    for (const unsigned char sample : image.coverage) {
        sum += sample / 255.0;
    }
    return sum;
}

}  // namespace

TEST(FontFace, TellsWhyAFileCannotBeRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(reasonFor("missing.ttf"), "No such file or directory");
    EXPECT_EQ(reasonFor("."), "Is a directory");
    folder.write("empty.ttf", "");
    EXPECT_NE(reasonFor("empty.ttf"), "");
    folder.write("text.ttf", "this is no font\n");
    EXPECT_NE(reasonFor("text.ttf"), "");
}

TEST(FontFace, RefusesAFileLargerThanAnyFont) {
    const TemporaryFolder folder;
    folder.write("large.ttf", "");
    std::filesystem::resize_file("large.ttf", (std::uintmax_t(64) << 20) + 1);
    EXPECT_EQ(reasonFor("large.ttf"), "larger than a font");
}

// The figures of the file's own tables, in 2048ths.
TEST(FontFace, MeasuresInEms) {
    const auto face = openVera();
    EXPECT_DOUBLE_EQ(face->ascender(), 1901.0 / 2048);
    EXPECT_DOUBLE_EQ(face->descender(), -483.0 / 2048);
    EXPECT_DOUBLE_EQ(face->lineHeight(), 2384.0 / 2048);
    EXPECT_DOUBLE_EQ(face->advance(face->glyphOf(U'A')), 1401.0 / 2048);
    EXPECT_DOUBLE_EQ(face->advance(face->glyphOf(U'0')), 1303.0 / 2048);
}

TEST(FontFace, KernsPairs) {
    const auto face = openVera();
    EXPECT_DOUBLE_EQ(face->kerning(face->glyphOf(U'A'), face->glyphOf(U'V')), -131.0 / 2048);
    EXPECT_EQ(face->kerning(face->glyphOf(U'H'), face->glyphOf(U'H')), 0.0);
}

TEST(FontFace, HasGlyphZeroForWhatItLacks) {
    const auto face = openVera();
    EXPECT_EQ(face->glyphOf(U'\u4E2D'), 0u);
    EXPECT_NE(face->glyphOf(U'\u00E9'), 0u);
    EXPECT_GT(total(face->rasterise(keyOf(*face, U'\u4E2D', 32), manySamples)), 30.0);
}

TEST(FontFace, SurvivesGlyphsThatAreNotThere) {
    const auto face = openVera();
    EXPECT_EQ(face->advance(1000000), 0.0);
    EXPECT_EQ(face->kerning(1000000, 5), 0.0);
    GlyphKey key = keyOf(*face, U'A', 32);
    key.glyph = 1000000;
    EXPECT_TRUE(face->rasterise(key, manySamples).coverage.empty());
}

TEST(FontFace, PictureHasTheGlyphsSizeAndPlace) {
    const auto face = openVera();
    // The outline of H: 201 to 1339 across, 0 to 1493 up, in 2048ths.
    const GlyphImage image = face->rasterise(keyOf(*face, U'H', 256), manySamples);
    const int border = 1;
    EXPECT_EQ(image.pixelsPerSample, 1);
    EXPECT_EQ(image.leftPx, 25 - border);
    EXPECT_EQ(image.topPx, 187 + border);
    EXPECT_EQ(image.width, 168 - 25 + 2 * border);
    EXPECT_EQ(image.height, 187 + 2 * border);
}

TEST(FontFace, PictureHasAnEmptyBorder) {
    const auto face = openVera();
    for (const char32_t character : {U'H', U'j', U'%', U'\u00C5'}) {
        const GlyphImage image = face->rasterise(keyOf(*face, character, 20), manySamples);
        const auto at = [&](int x, int y) { return image.coverage.begin()[y * image.width + x]; };
        for (int x = 0; x < image.width; ++x) {
            EXPECT_EQ(at(x, 0) + at(x, image.height - 1), 0);
        }
        for (int y = 0; y < image.height; ++y) {
            EXPECT_EQ(at(0, y) + at(image.width - 1, y), 0);
        }
    }
}

TEST(FontFace, WidthAndHeightOfTheEmAreSeparate) {
    const auto face = openVera();
    GlyphKey key = keyOf(*face, U'H', 100);
    const GlyphImage even = face->rasterise(key, manySamples);
    key.emWidthSteps *= 2;
    const GlyphImage wide = face->rasterise(key, manySamples);
    EXPECT_NEAR(wide.width - 2, 2 * (even.width - 2), 2);
    EXPECT_EQ(wide.height, even.height);
}

TEST(FontFace, PhasesMoveTheOutlineByQuartersOfAPixel) {
    const auto face = openVera();
    GlyphKey key = keyOf(*face, U'l', 40);
    const auto centre = [](const GlyphImage& image) {
        double x = 0.0;
        double y = 0.0;
        for (int i = 0; i < image.width * image.height; ++i) {
            const double ink = image.coverage[static_cast<std::size_t>(i)] / 255.0 / total(image);
            const int row = i / image.width;
            x += ink * (image.leftPx + i % image.width + 0.5);
            y += ink * (image.topPx - row - 0.5);
        }
        return std::make_pair(x, y);
    };
    const auto origin = centre(face->rasterise(key, manySamples));
    for (int phase = 0; phase < GlyphKey::phases; ++phase) {
        key.phaseX = phase;
        key.phaseY = GlyphKey::phases - 1 - phase;
        const auto moved = centre(face->rasterise(key, manySamples));
        // A grey pixel's ink counts at its middle, up to an eighth of a pixel off, in a stem of 3.6 pixels.
        const double error = 2 * 0.125 / 3.6;
        EXPECT_NEAR(moved.first - origin.first, phase * 0.25, error);
        EXPECT_NEAR(moved.second - origin.second, (GlyphKey::phases - 1 - phase) * 0.25, error);
    }
}

TEST(FontFace, HintingMovesTheTopOfSmallLettersOntoAPixelRow) {
    const auto face = openVera();
    const auto partialRows = [&](bool hinted) {
        GlyphKey key = keyOf(*face, U'x', 13);
        key.hinted = hinted;
        const GlyphImage image = face->rasterise(key, manySamples);
        const auto row = image.coverage.begin() + image.width;
        return *std::max_element(row, row + image.width);
    };
    // x is 1120 / 2048 em high: 7.1 pixels, so that unhinted its top row is a shadow.
    EXPECT_LT(partialRows(false), 60);
    EXPECT_THAT(partialRows(true), Ge(150));
}

TEST(FontFace, PictureThatWouldBeTooLargeIsMadeSmaller) {
    const auto face = openVera();
    const GlyphKey key = keyOf(*face, U'M', 1000);
    const GlyphImage whole = face->rasterise(key, manySamples);
    const GlyphImage reduced = face->rasterise(key, 256);
    EXPECT_EQ(whole.pixelsPerSample, 1);
    EXPECT_EQ(reduced.pixelsPerSample, 4);
    EXPECT_LE(reduced.width, 256);
    EXPECT_LE(reduced.height, 256);
    EXPECT_NEAR(reduced.leftPx, whole.leftPx, 8);
    EXPECT_NEAR(reduced.topPx, whole.topPx, 8);
    EXPECT_NEAR(total(reduced) * 16, total(whole), 0.01 * total(whole));
}

TEST(FontFace, DamagedFilesAreRefusedOrReadButNeverHarmful) {
    std::stringstream whole;
    whole << std::ifstream("Fonts/Vera.ttf", std::ios::binary).rdbuf();
    ASSERT_EQ(whole.str().size(), 65932u);
    const TemporaryFolder folder;
    std::mt19937 random(20240611);
    int opened = 0;
    for (int round = 0; round < 300; ++round) {
        std::string content = whole.str();
        if (round % 3 == 0) {
            content.resize(random() % content.size());
        }
        for (unsigned int i = 0; i < 1 + random() % 40; ++i) {
            // The first kilobytes hold the directory and the headers, where damage goes deepest.
            const std::size_t reach = i % 2 == 0 ? 2048 : content.size();
            content[random() % std::max<std::size_t>(1, std::min(reach, content.size()))] =
                static_cast<char>(random());
        }
        folder.write("damaged.ttf", content);
        std::string reason;
        const auto face = FontFace::open("damaged.ttf", reason);
        EXPECT_EQ(face == nullptr, !reason.empty());
        if (!face) {
            continue;
        }
        ++opened;
        for (const char32_t character : {U'A', U'V', U'g', U'\u00E9', U'%'}) {
            GlyphKey key = keyOf(*face, character, 24);
            for (const bool hinted : {false, true}) {
                key.hinted = hinted;
                const GlyphImage image = face->rasterise(key, 512);
                EXPECT_LE(image.width, 512);
                EXPECT_LE(image.height, 512);
                EXPECT_EQ(static_cast<int>(image.coverage.size()), image.width * image.height);
            }
            EXPECT_TRUE(std::isfinite(face->advance(key.glyph) + face->kerning(key.glyph, 5)));
        }
        EXPECT_TRUE(std::isfinite(face->ascender() + face->descender() + face->lineHeight()));
    }
    EXPECT_GT(opened, 30);
}
