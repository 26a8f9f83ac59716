#include "tools/zanto-song/MeasureOrder.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/tools/Outcome.h"

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
// A measure with the texts that `addSign` knows.
MeasureSigns saying(const std::vector<std::string>& texts, MeasureSigns signs = {}) {
    for (const std::string& text : texts) {
        EXPECT_TRUE(addSign(text, signs)) << text;
    }
    return signs;
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
    EXPECT_EQ(failureOf([] { playingOrder({plain, ends(1000000)}); }), "its repeats never come to an end");
}

TEST(MeasureOrder, JumpsAreFollowedOnceAndWithoutRepeats) {
    const std::vector<std::pair<std::vector<MeasureSigns>, std::vector<std::size_t>>> cases = {
        {{plain, saying({"Fine"}), plain, saying({"D.C. al Fine"})}, {0, 1, 2, 3, 0, 1}},
        {{plain, saying({"D. C."}), plain}, {0, 1, 0, 1, 2}},
        {{plain, saying({"segno"}), saying({"fine"}), saying({"dal Segno"})}, {0, 1, 2, 3, 1, 2}},
        {{plain, saying({"To Coda"}), saying({"D.C. al Coda"}), saying({"Coda"}), ends(2)},
         {0, 1, 2, 0, 1, 3, 4, 3, 4}},
        // Of two signs of the coda the first one says where to leave.
        {{plain, plain, saying({"coda", "dacapo"}), saying({"coda"})}, {0, 1, 2, 0, 1, 3}},
        // The last endings, in the repeat of a repeat.
        {{begins, ending({1}, 2), ending({2}, 0), saying({"Fine"}, ends(2)), saying({"da capo"})},
         {0, 1, 0, 2, 3, 3, 4, 0, 2, 3}},
        // A jump at the end of a repeat comes after its last round.
        {{plain, saying({"D.C."}, ends(2)), plain}, {0, 1, 0, 1, 0, 1, 2}},
    };
    for (const auto& [measures, order] : cases) {
        EXPECT_EQ(playingOrder(measures), order);
    }
    const auto noSegno = [] { playingOrder({plain, saying({"D.S."})}); };
    EXPECT_EQ(failureOf(noSegno), "it says \"dal segno\", and there is no segno before it");
    const auto noCoda = [] { playingOrder({plain, saying({"al coda"}), saying({"D.C."})}); };
    EXPECT_EQ(failureOf(noCoda), "it says \"to coda\", and there is no coda behind it");
    MeasureSigns signs;
    for (const char* const text : {"", "Dsus4", "D", "Csus", "finely", "d.c. tomorrow"}) {
        EXPECT_FALSE(addSign(text, signs)) << text;
    }
}
