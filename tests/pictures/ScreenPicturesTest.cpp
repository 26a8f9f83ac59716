#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>

#include "tests/pictures/PictureComparison.h"
#include "tests/pictures/ScreenFixture.h"

namespace {

using Size = std::pair<int, int>;  // pixels

constexpr int widestKept = 1280;  // pixels; wider screens are averaged down to this or less

using Case = std::tuple<std::string, Size>;

class ScreenPictures : public ScreenFixture, public testing::WithParamInterface<Case> {
protected:
    ScreenPictures() : ScreenFixture(std::get<1>(GetParam()).first, std::get<1>(GetParam()).second) {}

public:
    static std::string nameOf(const Case& parameters, char joint) {
        const auto& [screen, size] = parameters;
        std::string name = screen + "-" + std::to_string(size.first) + "x" + std::to_string(size.second);
        for (char& letter : name) {
            letter = letter == '-' ? joint : letter;
        }
        return name;
    }
    static const std::vector<std::string>& names() { return screens(); }
};

TEST_P(ScreenPictures, LooksAsCommitted) {
    const auto& [screen, size] = GetParam();
    show(screen);
    const int factor = (size.first + widestKept - 1) / widestKept;
    EXPECT_TRUE(pictures::matches(pictures::shrunk(gl->read(), factor), nameOf(GetParam(), '-')));
}

INSTANTIATE_TEST_SUITE_P(AtEverySize, ScreenPictures,
                         testing::Combine(testing::ValuesIn(ScreenPictures::names()),
                                          testing::Values(Size(640, 480), Size(1280, 720), Size(1920, 1080),
                                                          Size(3840, 2160), Size(2560, 1080),
                                                          Size(480, 640))),
                         [](const auto& instance) { return ScreenPictures::nameOf(instance.param, '_'); });

TEST(PictureComparison, FindsAMisplacedWidgetAndOverlooksSmallDifferencesOfShade) {
    pictures::Picture expected(100, 100, 3);
    pictures::Picture drawn(100, 100, 3);
    for (int i = 0; i < 10; ++i) {
        expected.at(20 + i, 50, 1) = 255;
        drawn.at(25 + i, 50, 1) = 255;
    }
    pictures::Picture shaded = expected;
    shaded.at(5, 5, 0) = pictures::channelTolerance;
    EXPECT_DOUBLE_EQ(pictures::difference(shaded, expected), 0.0);
    shaded.at(5, 5, 0) = pictures::channelTolerance + 1;
    EXPECT_DOUBLE_EQ(pictures::difference(shaded, expected), 1.0 / 10000.0);
    EXPECT_DOUBLE_EQ(pictures::difference(drawn, expected), 10.0 / 10000.0);
    EXPECT_DOUBLE_EQ(pictures::difference(drawn, pictures::Picture(99, 100, 3)), 1.0);
}

}  // namespace
