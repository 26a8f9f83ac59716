#include "platform/wt/PackedPicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <utility>

namespace {

std::size_t samples(const tavi::Image<unsigned char>& picture) {
    return static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height()) *
           static_cast<std::size_t>(picture.channels());
}

void expectSame(const tavi::Image<unsigned char>& one, const tavi::Image<unsigned char>& other) {
    ASSERT_EQ(one.width(), other.width());
    ASSERT_EQ(one.height(), other.height());
    ASSERT_EQ(one.channels(), other.channels());
    EXPECT_TRUE(std::equal(one.data(), one.data() + samples(one), other.data()));
}

TEST(PackedPictureTest, EveryPictureComesBackAsItWas) {
    std::mt19937 random(7);
    for (int channels = 1; channels <= 4; ++channels) {
        for (const auto& [width, height] :
             {std::pair(1, 1), std::pair(1, 9), std::pair(9, 1), std::pair(61, 47)}) {
            tavi::Image<unsigned char> picture(width, height, channels);
            // Noise, which takes more room packed than it takes unpacked.
            std::generate_n(picture.data(), samples(picture),
                            [&] { return static_cast<unsigned char>(random()); });
            const wt::PackedPicture packed(picture);
            EXPECT_FALSE(packed.empty());
            expectSame(packed.unpacked(), picture);
        }
    }
}

TEST(PackedPictureTest, SlopeTakesLittleRoom) {
    constexpr int side = 256;
    tavi::Image<unsigned char> picture(side, side, 3);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            for (int channel = 0; channel < 3; ++channel) {
                picture.at(x, y, channel) = static_cast<unsigned char>(x + y / 3 + 40 * channel);
            }
        }
    }
    const wt::PackedPicture packed(picture);
    EXPECT_LT(packed.size(), samples(picture) / 50);
    expectSame(packed.unpacked(), picture);
}

TEST(PackedPictureTest, TheTitlePictureTakesLessThanAQuarter) {
    tavi::Image<unsigned char> picture(0, 0, 0);
    ASSERT_TRUE(picture.read("Images/title.png"));
    EXPECT_LT(wt::PackedPicture(picture).size(), samples(picture) / 4);
}

TEST(PackedPictureTest, NoPictureStaysNone) {
    EXPECT_TRUE(wt::PackedPicture().empty());
    EXPECT_TRUE(wt::PackedPicture().unpacked().empty());
    const wt::PackedPicture packed{tavi::Image<unsigned char>(0, 0, 0)};
    EXPECT_TRUE(packed.empty());
    EXPECT_TRUE(packed.unpacked().empty());
}

}  // namespace
