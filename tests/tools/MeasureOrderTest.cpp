#include "tools/zanto-song/MeasureOrder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace {

using testing::ElementsAre;

MeasureSigns plain() {
    return {};
}
MeasureSigns begins() {
    MeasureSigns signs;
    signs.repeatBegins = true;
    return signs;
}
MeasureSigns ends(int times = 2) {
    MeasureSigns signs;
    signs.timesPlayed = times;
    return signs;
}
MeasureSigns ending(std::vector<int> const& rounds, bool repeats) {
    MeasureSigns signs;
    signs.endingBegins.insert(rounds.begin(), rounds.end());
    signs.endingEnds = true;
    signs.timesPlayed = repeats ? 2 : 0;
    return signs;
}

}  // namespace

TEST(MeasureOrder, withoutSignsItIsTheWrittenOrder) {
    EXPECT_THAT(*playingOrder({plain(), plain(), plain()}), ElementsAre(0, 1, 2));
    EXPECT_TRUE(playingOrder({})->empty());
}

TEST(MeasureOrder, aRepeatGoesBackToItsBeginningOrTheFirstMeasure) {
    EXPECT_THAT(*playingOrder({plain(), begins(), ends(), plain()}), ElementsAre(0, 1, 2, 1, 2, 3));
    EXPECT_THAT(*playingOrder({plain(), ends(), plain()}), ElementsAre(0, 1, 0, 1, 2));
}

TEST(MeasureOrder, aSecondRepeatBeginsWhereTheFirstOneEnded) {
    EXPECT_THAT(*playingOrder({plain(), ends(), plain(), ends()}), ElementsAre(0, 1, 0, 1, 2, 3, 2, 3));
}

TEST(MeasureOrder, aRepeatMayBePlayedMoreThanTwice) {
    EXPECT_THAT(*playingOrder({plain(), ends(3), plain()}), ElementsAre(0, 1, 0, 1, 0, 1, 2));
    EXPECT_THAT(*playingOrder({plain(), ends(1), plain()}), ElementsAre(0, 1, 2));
}

TEST(MeasureOrder, endingsArePlayedInTheirRounds) {
    EXPECT_THAT(*playingOrder({begins(), ending({1}, true), ending({2}, false), plain()}),
                ElementsAre(0, 1, 0, 2, 3));
    EXPECT_THAT(*playingOrder({begins(), ending({1, 2}, true), ending({3}, false), plain()}),
                ElementsAre(0, 1, 0, 1, 0, 2, 3));
}

TEST(MeasureOrder, anEndingMaySpanSeveralMeasures) {
    MeasureSigns first;
    first.endingBegins = {1};
    MeasureSigns last = ends();
    last.endingEnds = true;
    EXPECT_THAT(*playingOrder({plain(), first, last, ending({2}, false), plain(), ends()}),
                ElementsAre(0, 1, 2, 0, 3, 4, 5, 4, 5));
}

TEST(MeasureOrder, aLastEndingWithARepeatSignEndsTheRepeat) {
    EXPECT_THAT(*playingOrder({plain(), ending({1}, true), ending({2}, true), plain()}),
                ElementsAre(0, 1, 0, 2, 3));
}

TEST(MeasureOrder, repeatsWithoutAnEndAreRefused) {
    EXPECT_FALSE(playingOrder({plain(), ends(1000000)}));
}
