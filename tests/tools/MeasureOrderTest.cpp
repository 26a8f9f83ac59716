#include "tools/zanto-song/MeasureOrder.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace {

MeasureSigns with(const std::function<void(MeasureSigns&)>& change) {
    MeasureSigns signs;
    change(signs);
    return signs;
}

const MeasureSigns plain;
const MeasureSigns begins = with([](MeasureSigns& signs) { signs.repeatBegins = true; });

MeasureSigns ends(int times) {
    return with([=](MeasureSigns& signs) { signs.timesPlayed = times; });
}
MeasureSigns ending(const std::set<int>& rounds, int timesPlayed, bool isOver = true) {
    return with([=](MeasureSigns& signs) {
        signs.timesPlayed = timesPlayed;
        signs.endingBegins = rounds;
        signs.endingEnds = isOver;
    });
}

}  // namespace

TEST(MeasureOrder, RepeatsAreWrittenOutWithTheEndingsOfTheirRounds) {
    const std::vector<std::pair<std::vector<MeasureSigns>, std::vector<std::size_t>>> cases = {
        {{}, {}},
        {{plain, begins, ends(2), plain}, {0, 1, 2, 1, 2, 3}},
        {{plain, ends(3), plain}, {0, 1, 0, 1, 0, 1, 2}},
        {{plain, ends(1), plain}, {0, 1, 2}},
        // A second repeat begins where the first one ended.
        {{plain, ends(2), plain, ends(2)}, {0, 1, 0, 1, 2, 3, 2, 3}},
        {{begins, ending({1}, 2), ending({2}, 0), plain}, {0, 1, 0, 2, 3}},
        {{begins, ending({1, 2}, 2), ending({3}, 0), plain}, {0, 1, 0, 1, 0, 2, 3}},
        // An ending of two measures.
        {{plain, ending({1}, 0, false), ending({}, 2), ending({2}, 0), plain, ends(2)},
         {0, 1, 2, 0, 3, 4, 5, 4, 5}},
        // A last ending with a sign of repetition.
        {{plain, ending({1}, 2), ending({2}, 2), plain}, {0, 1, 0, 2, 3}},
    };
    for (const auto& [measures, order] : cases) {
        EXPECT_EQ(playingOrder(measures), order);
    }
}
