#include "platform/wt/Resample.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using Picture = tavi::Image<unsigned char>;

Picture ramp(int width) {
    Picture picture(width, 1, 1);
    for (int x = 0; x < width; ++x) {
        picture.at(x, 0, 0) = static_cast<unsigned char>(x * 255 / (width - 1));
    }
    return picture;
}

TEST(Resample, KeepsAPictureOfTheSameSize) {
    const Picture picture = ramp(40);
    const Picture same = wt::resampled(picture, 40, 1);
    EXPECT_TRUE(std::equal(picture.data(), picture.data() + 40, same.data()));
}

TEST(Resample, KeepsEachChannelsLevelAtEverySize) {
    Picture picture(13, 7, 3);
    for (int i = 0; i < 13 * 7; ++i) {
        picture.data()[3 * i] = 10;
        picture.data()[3 * i + 1] = 128;
        picture.data()[3 * i + 2] = 250;
    }
    for (const auto& [width, height] :
         {std::pair(1, 1), std::pair(5, 20), std::pair(26, 3), std::pair(100, 77)}) {
        const Picture result = wt::resampled(picture, width, height);
        ASSERT_EQ(result.width(), width);
        ASSERT_EQ(result.height(), height);
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                ASSERT_EQ(result.at(x, y, 0), 10);
                ASSERT_EQ(result.at(x, y, 1), 128);
                ASSERT_EQ(result.at(x, y, 2), 250);
            }
        }
    }
}

TEST(Resample, CountsEveryPixelOfAFinePatternThatShrinks) {
    Picture picture(400, 400, 1);
    for (int y = 0; y < 400; ++y) {
        for (int x = 0; x < 400; ++x) {
            picture.at(x, y, 0) = (x + y) % 2 == 0 ? 255 : 0;
        }
    }
    const Picture small = wt::resampled(picture, 90, 130);
    for (int i = 0; i < 90 * 130; ++i) {
        ASSERT_NEAR(small.data()[i], 128, 3);
    }
}

TEST(Resample, GrowsWithoutSteps) {
    const Picture grown = wt::resampled(ramp(9), 90, 1);
    for (int x = 1; x < 90; ++x) {
        ASSERT_GE(grown.at(x, 0, 0), grown.at(x - 1, 0, 0));
        ASSERT_LE(grown.at(x, 0, 0) - grown.at(x - 1, 0, 0), 5);
    }
    EXPECT_EQ(grown.at(0, 0, 0), 0);
    EXPECT_EQ(grown.at(89, 0, 0), 255);
}

}  // namespace
