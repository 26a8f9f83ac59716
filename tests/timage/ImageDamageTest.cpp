// Files that are no picture, or not any more: read says so, quietly, and leaves the picture empty.

#include <string>

#include <gtest/gtest.h>

#include "platform/timage/Image.h"
#include "tests/support/PngBytes.h"
#include "tests/support/TemporaryFolder.h"

using Image = tavi::Image<unsigned char>;

namespace {

const PngHeader smallHeader = {4, 3, 8, pngColour};

std::string imageData() {
    std::string row;
    for (int i = 0; i < 12; ++i) {
        row += static_cast<char>(i * 21);
    }
    return pngRows({row, row, row});
}

std::string smallPicture() {
    return pngStart(smallHeader) + imageData() + pngEnd();
}

class ImageDamage : public testing::Test {
protected:
    void SetUp() override {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
    }
    void TearDown() override {
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }
    void expectRefused(const char* path) {
        Image image(2, 2, 3);
        EXPECT_FALSE(image.read(path));
        EXPECT_TRUE(image.empty());
        EXPECT_EQ(image.width(), 0);
        EXPECT_EQ(image.height(), 0);
        EXPECT_EQ(image.channels(), 0);
    }
    void expectContentRefused(const std::string& content) {
        folder.write("picture.png", content);
        expectRefused("picture.png");
    }

    const TemporaryFolder folder;
};

}  // namespace

TEST_F(ImageDamage, WhatIsNoPictureFile) {
    expectRefused("nothing.png");
    expectRefused(nullptr);
    expectRefused(".");
    expectContentRefused("");
    expectContentRefused("GIF89a and more, long enough to be looked at twice\n");
    expectContentRefused(std::string(100000, '\0'));
}

TEST_F(ImageDamage, CutOffAnywhereBeforeTheEndOfTheImageData) {
    const std::string whole = smallPicture();
    for (std::size_t length = 0; length < whole.size() - pngEnd().size(); ++length) {
        SCOPED_TRACE(length);
        expectContentRefused(whole.substr(0, length));
    }
    folder.write("picture.png", whole);
    EXPECT_TRUE(Image(0, 0, 0).read("picture.png"));
}

TEST_F(ImageDamage, PictureThatLacksAPart) {
    std::string wrongCheckSum = smallPicture();
    wrongCheckSum[wrongCheckSum.size() - pngEnd().size() - 1] ^= 1;
    expectContentRefused(wrongCheckSum);
    expectContentRefused(pngStart({4, 4, 8, pngColour}) + imageData() + pngEnd());
    expectContentRefused(pngStart(smallHeader) + pngEnd());
    expectContentRefused(pngStart({4, 1, 8, pngPalette}) + pngRows({std::string(4, '\0')}) + pngEnd());
    expectContentRefused(pngStart({0, 3, 8, pngColour}) + imageData() + pngEnd());
    expectContentRefused(pngStart({4, 0, 8, pngColour}) + imageData() + pngEnd());
}

TEST_F(ImageDamage, HugeDeclaredSize) {
    expectContentRefused(pngStart({32769, 1, 8, pngGrey}) + pngRows({std::string(32769, 'x')}) + pngEnd());
    for (const auto& size : {std::pair<std::uint32_t, std::uint32_t>(32768, 32768),
                             {8193, 8192},
                             {0x7FFFFFFF, 1},
                             {1, 0x7FFFFFFF},
                             {0x7FFFFFFF, 0x7FFFFFFF},
                             {0xFFFFFFFF, 0xFFFFFFFF}}) {
        expectContentRefused(pngStart({size.first, size.second, 16, pngColourAlpha}) + imageData() +
                             pngEnd());
    }
}
