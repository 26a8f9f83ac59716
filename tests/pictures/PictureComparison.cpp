#include "tests/pictures/PictureComparison.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace pictures {

namespace {

constexpr int colourChannels = 3;

int channelDifference(const Picture& a, const Picture& b, int x, int y) {
    int largest = 0;
    for (int channel = 0; channel < colourChannels; ++channel) {
        largest = std::max(largest, std::abs(a.at(x, y, channel) - b.at(x, y, channel)));
    }
    return largest;
}

bool sameSize(const Picture& a, const Picture& b) {
    return a.width() == b.width() && a.height() == b.height() && a.channels() == b.channels();
}

}  // namespace

Picture shrunk(const Picture& picture, int factor) {
    Picture small(picture.width() / factor, picture.height() / factor, colourChannels);
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            for (int channel = 0; channel < colourChannels; ++channel) {
                int sum = 0;
                for (int dy = 0; dy < factor; ++dy) {
                    for (int dx = 0; dx < factor; ++dx) {
                        sum += picture.at(x * factor + dx, y * factor + dy, channel);
                    }
                }
                const int pixels = factor * factor;
                small.at(x, y, channel) = static_cast<unsigned char>((sum + pixels / 2) / pixels);
            }
        }
    }
    return small;
}

double difference(const Picture& drawn, const Picture& expected) {
    if (!sameSize(drawn, expected)) {
        return 1.0;
    }
    int different = 0;
    for (int y = 0; y < drawn.height(); ++y) {
        for (int x = 0; x < drawn.width(); ++x) {
            different += channelDifference(drawn, expected, x, y) > channelTolerance ? 1 : 0;
        }
    }
    return static_cast<double>(different) / (static_cast<double>(drawn.width()) * drawn.height());
}

testing::AssertionResult matches(const Picture& drawn, const std::string& name) {
    const std::filesystem::path committed = std::filesystem::path(ZANTO_EXPECTED_PICTURES) / (name + ".png");
    if (std::getenv("ZANTO_RENEW_PICTURES") != nullptr) {
        return drawn.write(committed.c_str())
                   ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << "cannot write " << committed.string();
    }
    Picture expected(0, 0, 0);
    const bool known = expected.read(committed.c_str());
    const double share = difference(drawn, expected);
    if (known && share <= differentShare) {
        return testing::AssertionSuccess();
    }
    const std::filesystem::path folder = ZANTO_PICTURE_RESULTS;
    std::filesystem::create_directories(folder);
    drawn.write((folder / (name + ".drawn.png")).c_str());
    expected.write((folder / (name + ".expected.png")).c_str());
    return testing::AssertionFailure()
           << name << (known ? "" : " has no committed picture;") << " " << 100.0 * share
           << " % of its pixels differ; look into " << folder.string();
}

}  // namespace pictures
