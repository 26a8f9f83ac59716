#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/tools/CommandFixture.h"

namespace {

namespace fs = std::filesystem;

const std::string data = ZANTO_DATA_FOLDER;

std::vector<std::string> shelf() {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(data + "/Songs")) {
        if (entry.path().filename() != "listing.txt") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string nameOf(const testing::TestParamInfo<std::string>& info) {
    return info.param;
}

class ShippedSongsScore : public CommandFixture, public testing::WithParamInterface<std::string> {
protected:
    ShippedSongsScore() : CommandFixture(performCommand) {}
};

}  // namespace

TEST_P(ShippedSongsScore, IsTheBestPossibleForTheSoundThatIsRendered) {
    const std::string song = data + "/Songs/" + GetParam() + ".txt";
    ASSERT_EQ(renderCommand.run({song, "-o", "take.wav"}), 0);
    const Outcome outcome = run({song, "take.wav", "--data", data, "--csv"});
    EXPECT_EQ(outcome.status, 0);
    // Every line but the heading is a note that was awarded: none missed, and no penalty.
    const auto lines = std::count(outcome.out.begin(), outcome.out.end(), '\n');
    std::size_t awarded = 0;
    for (std::size_t at = 0; (at = outcome.out.find(",awarded\n", at)) != std::string::npos; ++at) {
        ++awarded;
    }
    EXPECT_GT(awarded, 0u);
    EXPECT_EQ(awarded + 1, static_cast<std::size_t>(lines)) << outcome.out;
}

INSTANTIATE_TEST_SUITE_P(, ShippedSongsScore, testing::ValuesIn(shelf()), nameOf);
