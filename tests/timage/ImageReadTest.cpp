// The kinds of PNG file that there are, each made by hand and read back.

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/timage/Image.h"
#include "tests/support/PngBytes.h"
#include "tests/support/TemporaryFolder.h"

using testing::ElementsAre;
using testing::ElementsAreArray;
using Image = tavi::Image<unsigned char>;

namespace {

std::string bytes(const std::vector<int>& values) {
    std::string text;
    for (const int value : values) {
        text += static_cast<char>(value);
    }
    return text;
}

std::vector<int> samples(const Image& image) {
    return {image.data(), image.data() + image.width() * image.height() * image.channels()};
}

class ImageRead : public testing::Test {
protected:
    // `between` are the chunks before the image data.
    void read(const PngHeader& header, const std::string& between, const std::vector<std::string>& rows) {
        folder.write("picture.png", pngStart(header) + between + pngRows(rows) + pngEnd());
        ASSERT_TRUE(image.read("picture.png"));
    }

    void expectRow(const PngHeader& header, const std::string& between, const std::vector<int>& row,
                   const std::vector<int>& expected) {
        read(header, between, {bytes(row)});
        EXPECT_EQ(image.width(), static_cast<int>(header.width));
        EXPECT_THAT(samples(image), ElementsAreArray(expected));
    }

    const TemporaryFolder folder;
    Image image{0, 0, 0};
};

}  // namespace

TEST_F(ImageRead, ColourHasThreeChannelsTopRowFirst) {
    read({2, 2, 8, pngColour}, "", {bytes({1, 2, 3, 4, 5, 6}), bytes({7, 8, 9, 10, 11, 12})});
    EXPECT_EQ(image.width(), 2);
    EXPECT_EQ(image.height(), 2);
    EXPECT_EQ(image.channels(), 3);
    EXPECT_THAT(samples(image), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12));
}

TEST_F(ImageRead, GreyAndAlphaKeepTheirSamplesNotMultiplied) {
    expectRow({2, 1, 8, pngColourAlpha}, "", {200, 100, 50, 10, 1, 2, 3, 0}, {200, 100, 50, 10, 1, 2, 3, 0});
    expectRow({3, 1, 8, pngGrey}, "", {0, 128, 255}, {0, 128, 255});
    expectRow({2, 1, 8, pngGreyAlpha}, "", {10, 20, 30, 40}, {10, 20, 30, 40});
    expectRow({1, 1, 8, pngGrey}, pngChunk("zaNo", "a chunk that nobody knows"), {5}, {5});
}

TEST_F(ImageRead, FewBitsSpreadOverTheWholeRangeAndSixteenKeepTheirUpperEight) {
    expectRow({8, 1, 1, pngGrey}, "", {0xA0}, {255, 0, 255, 0, 0, 0, 0, 0});
    expectRow({4, 1, 2, pngGrey}, "", {0x1B}, {0, 85, 170, 255});
    expectRow({2, 1, 4, pngGrey}, "", {0x3C}, {51, 204});
    expectRow({1, 1, 16, pngColour}, "", {0x12, 0x12, 0x80, 0x80, 0xFF, 0xFF}, {0x12, 0x80, 0xFF});
    expectRow({1, 1, 16, pngGreyAlpha}, "", {0x40, 0x40, 0xC0, 0xC0}, {0x40, 0xC0});
}

TEST_F(ImageRead, PaletteBecomesColourAndWhatIsTransparentAlpha) {
    const std::string palette = pngChunk("PLTE", bytes({1, 2, 3, 40, 50, 60, 255, 0, 0}));
    expectRow({4, 1, 2, pngPalette}, palette, {0x18}, {1, 2, 3, 40, 50, 60, 255, 0, 0, 1, 2, 3});
    expectRow({2, 1, 8, pngPalette}, palette + pngChunk("tRNS", bytes({99})), {1, 0},
              {40, 50, 60, 255, 1, 2, 3, 99});
    expectRow({2, 1, 8, pngColour}, pngChunk("tRNS", bytes({0, 9, 0, 8, 0, 7})), {9, 8, 7, 9, 8, 6},
              {9, 8, 7, 0, 9, 8, 6, 255});
    expectRow({2, 1, 8, pngGrey}, pngChunk("tRNS", bytes({0, 77})), {77, 78}, {77, 0, 78, 255});
}

TEST_F(ImageRead, LinearLightIsTurnedIntoDisplayValues) {
    // (55 / 255) to the power of 1 / 2.2 is 0.498 of full scale.
    expectRow({3, 1, 8, pngGrey}, pngChunk("gAMA", bytes({0x00, 0x01, 0x86, 0xA0})), {0, 55, 255},
              {0, 127, 255});
}

TEST_F(ImageRead, InterlacedRowsFallIntoPlace) {
    // Adam7 of a 3 by 3 picture: the passes hold the pixels below, and passes 2 and 3 are empty.
    read({3, 3, 8, pngGrey, 1}, "",
         {
             bytes({0}),           // pass 1: (0, 0)
             bytes({2}),           // pass 4: (2, 0)
             bytes({20, 22}),      // pass 5: (0, 2) (2, 2)
             bytes({1}),           // pass 6: (1, 0)
             bytes({21}),          //         (1, 2)
             bytes({10, 11, 12}),  // pass 7: the second row
         });
    EXPECT_THAT(samples(image), ElementsAre(0, 1, 2, 10, 11, 12, 20, 21, 22));
}

TEST_F(ImageRead, TakesTheLongestSide) {
    std::vector<std::string> rows{std::string(32768, '\x21')};
    read({32768, 1, 8, pngGrey}, "", rows);
    EXPECT_EQ(image.width(), 32768);
    EXPECT_THAT(samples(image), ElementsAreArray(std::vector<int>(32768, 0x21)));
}
