#include "platform/timage/Image.h"

#include <gtest/gtest.h>

#include <cstdlib>
#if defined(__GLIBC__) && !defined(ZANTO_SANITIZED)
#include <malloc.h>
#endif

#include "tests/support/TemporaryFolder.h"

using Image = tavi::Image<unsigned char>;

TEST(Image, StartsWithAllSamplesZero) {
    const Image image(3, 2, 4);
    EXPECT_EQ(image.width(), 3);
    EXPECT_EQ(image.height(), 2);
    EXPECT_EQ(image.channels(), 4);
    EXPECT_FALSE(image.empty());
    for (int i = 0; i < 3 * 2 * 4; ++i) {
        EXPECT_EQ(image.data()[i], 0);
    }
}

TEST(Image, IsEmptyWithAnySizeThatIsNotPositive) {
    for (const Image& image :
         {Image(0, 0, 0), Image(0, 2, 3), Image(2, 0, 3), Image(2, 2, 0), Image(-1, 2, 3)}) {
        EXPECT_TRUE(image.empty());
        EXPECT_EQ(image.width(), 0);
        EXPECT_EQ(image.height(), 0);
        EXPECT_EQ(image.channels(), 0);
    }
}

TEST(Image, KeepsSamplesOfAPixelAndPixelsOfARowSideBySide) {
    Image image(3, 2, 2);
    image.at(2, 1, 1) = 7;
    image.at(1, 0, 0) = 5;
    EXPECT_EQ(image.data()[(1 * 3 + 2) * 2 + 1], 7);
    EXPECT_EQ(image.data()[1 * 2], 5);
}

TEST(Image, CopiesItsPixels) {
    Image image(1, 1, 1);
    Image copy = image;
    copy.at(0, 0, 0) = 9;
    EXPECT_EQ(image.at(0, 0, 0), 0);
    image = copy;
    EXPECT_EQ(image.at(0, 0, 0), 9);
}

TEST(Image, ReadsBackWhatItWrote) {
    const TemporaryFolder folder;
    for (int channels = 1; channels <= 4; ++channels) {
        Image written(5, 3, channels);
        for (int i = 0; i < 5 * 3 * channels; ++i) {
            written.data()[i] = static_cast<unsigned char>(i * 37 + channels);
        }
        ASSERT_TRUE(written.write("picture.png"));
        Image image(0, 0, 0);
        ASSERT_TRUE(image.read("picture.png"));
        ASSERT_EQ(image.channels(), channels);
        for (int i = 0; i < 5 * 3 * channels; ++i) {
            EXPECT_EQ(image.data()[i], written.data()[i])
                << "sample " << i << " of " << channels << " channels";
        }
    }
}

TEST(Image, DoesNotWriteWhereItCannotOrWhatIsNoPicture) {
    const TemporaryFolder folder;
    EXPECT_FALSE(Image(2, 2, 3).write("no/such/folder/picture.png"));
    EXPECT_FALSE(Image(2, 2, 3).write("."));
    EXPECT_FALSE(Image(2, 2, 3).write(nullptr));
    EXPECT_FALSE(Image(0, 0, 0).write("picture.png"));
    EXPECT_FALSE(Image(2, 2, 5).write("picture.png"));
    EXPECT_FALSE(std::filesystem::exists("picture.png"));
}

#if defined(__GLIBC__) && !defined(ZANTO_SANITIZED)
TEST(Image, LeavesTheHeapAsItWasWhenItGoes) {
    const auto blockIsMapped = [] {
        const std::size_t mapped = mallinfo2().hblks;
        void* const block = std::malloc(1 << 20);
        const bool is = mallinfo2().hblks == mapped + 1;
        std::free(block);
        return is;
    };
    EXPECT_FALSE(Image(1280, 960, 4).empty());
    // What the C library has had back it may keep from then on.
    EXPECT_TRUE(blockIsMapped());
}
#endif
