#include "analysis/NoteEstimation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/analysis/NoteEstimationFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Pair;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int a = 5;

/// The seven notes at the centres of bins 20 to 80, C at 234.375 Hz to B at 937.5 Hz.
const char* const everyTenthBin =
    "C 1 234.375\nD 1 351.5625\nE 1 468.75\nF 1 585.9375\nG 1 703.125\nA 1 820.3125\nB 1 937.5\n";

/// Levels by bin above a floor, and what the estimation says of them: each strong peak with its level, then
/// the loudest one.
struct Example {
    const char* name;
    std::vector<std::pair<std::size_t, double>> levelsDb;
    const char* said;
    std::vector<int> notes;
    const char* thresholdDb = "-65";
    double floorDb = -200.0;
};

class Peaks : public NoteEstimationTest, public testing::WithParamInterface<Example> {};

TEST_P(Peaks, BecomeTheseNotes) {
    setenv("ZANTO_MIN_DECIBEL", GetParam().thresholdDb, 1);
    start(everyTenthBin);
    EXPECT_EQ(updateNotes(levels(GetParam().levelsDb, GetParam().floorDb)), GetParam().said);
    EXPECT_EQ(notesDown(), GetParam().notes);
}

const double aboveThreshold = std::nextafter(-65.0, 0.0);

// Neighbours and numbers that are none are compared with the plain rule by fuzz.spectrum.
const Example examples[] = {
    {"AtTheThresholdIsNone", {{40, -65.0}}, "", {}},
    {"AboveTheThresholdIsOne", {{40, aboveThreshold}}, "469 -65.0  468.750000\n", {2}},
    {"InBin10IsTheLowest", {{10, -20.0}}, "117 -20.0  117.187500\n", {}},
    {"InBin2046IsTheHighest", {{2046, -20.0}}, "23977 -20.0  23976.562500\n", {}},
    {"FirstAbove1000HertzIsTheLast",
     {{85, -22.0}, {90, -20.0}, {100, -1.0}},
     "996 -22.0  1055 -20.0  1054.687500\n",
     {}},
    {"BehindTheLastOneMakesNoneWeak",
     {{40, -60.0}, {86, -60.0}, {100, 0.0}},
     "469 -60.0  1008 -60.0  468.750000\n",
     {2}},
    // Of the loudest one's 80 dB above -100 dB, 76 are not enough.
    {"FarBelowTheLoudestIsWeak",
     {{20, -24.0}, {40, -20.0}, {60, -23.99}},
     "469 -20.0  703 -24.0  468.750000\n",
     {2, 4}},
    {"EqualToTheLoudestIsNotTheLoudest",
     {{40, -20.0}, {60, -20.0}},
     "469 -20.0  703 -20.0  468.750000\n",
     {2, 4}},
    // The loudest level so far is kept as a float, and the next one is compared with that in double.
    {"EqualToALoudestThatWasRoundedUpIsNotTheLoudest",
     {{40, -20.3}, {60, -20.3}},
     "469 -20.3  703 -20.3  468.750000\n",
     {2, 4}},
    {"EqualToALoudestThatWasRoundedDownIsTheLoudest",
     {{40, -20.1}, {60, -20.1}},
     "469 -20.1  703 -20.1  703.125000\n",
     {2, 4}},
    // Strong only if the levels are counted from -100 dB in float: in double the sums are a little different.
    {"StrengthIsASumInFloat",
     {{40, static_cast<double>(-35.9399986f)}, {60, static_cast<double>(-39.1430016f)}},
     "469 -35.9  703 -39.1  468.750000\n",
     {2, 4}},
    // Strong only if 95 % of the loudest is a double: as a float it equals the weaker one.
    {"StrengthIsComparedInDouble",
     {{40, static_cast<double>(-59.9899979f)}, {60, static_cast<double>(-61.9904976f)}},
     "469 -60.0  703 -62.0  468.750000\n",
     {2, 4}},
    {"AtMinus100DecibelsIsWeak", {{40, -100.0}, {60, -120.0}}, "468.750000\n", {}, "-150"},
    {"AtMinus120DecibelsIsWeakAsTheLoudestToo", {{40, -120.0}}, "468.750000\n", {}, "-150"},
    {"BelowEveryMaximumIsNotTheLoudest", {{40, -20000.0}}, "", {}, "-100000", -30000.0},
    {"BeyondAFloatMakesTheOthersWeak", {{40, 1e300}, {60, -20.0}}, "468.750000\n", {}, "-65", -1e300},
    {"AtInfinityIsWeakItself", {{40, infinity}}, "468.750000\n", {}},
};

INSTANTIATE_TEST_SUITE_P(, Peaks, testing::ValuesIn(examples),
                         [](const auto& example) { return std::string(example.param.name); });

}  // namespace

TEST_F(NoteEstimationTest, StartsWithItsDefaultThresholdAndNothingHeard) {
    EXPECT_EQ(start(everyTenthBin), "NoteEstimation minDecibel is -65.000000\n");
    EXPECT_EQ(estimation->getMinDecibel(), -65.0f);
    EXPECT_THAT(notesDown(), IsEmpty());
    EXPECT_THAT(estimation->getCandidatePeaks(), IsEmpty());
    EXPECT_THAT(estimation->getPowerSpectrum(), IsEmpty());
}

TEST_F(NoteEstimationTest, ThresholdIsReadAsFarAsItIsANumber) {
    for (const auto& [text, said] :
         {std::pair("loud", "0.000000"), std::pair("-72.5dB", "-72.500000"), std::pair("", "0.000000"),
          std::pair("-1e300", "-inf"), std::pair("1e300", "inf"),
          std::pair("0x1.fffffep127", "340282346638528859811704183484516925440.000000"),
          std::pair("-0x1.fffffep127", "-340282346638528859811704183484516925440.000000")}) {
        setenv("ZANTO_MIN_DECIBEL", text, 1);
        EXPECT_EQ(start(""), "NoteEstimation minDecibel is " + std::string(said) + "\n") << text;
    }
}

TEST_F(NoteEstimationTest, MissingNoteTableHearsPeaksAndNoNotes) {
    CaptureStdout();
    estimation.emplace();
    EXPECT_EQ(GetCapturedStdout(), "NoteEstimation minDecibel is -65.000000\n");
    EXPECT_EQ(updateNotes(levels({{40, -20.0}})), "469 -20.0  468.750000\n");
    EXPECT_THAT(notesDown(), IsEmpty());
}

TEST_F(NoteEstimationTest, ConcertPitchIsHeardInTheBinsAroundIt) {
    start("A 2 433.6 445.3");
    const std::string said = update(signals::tones({{440.0, 0.1}}, 6144), 0.25);
    // 0.45 bins from the middle of the nearer one, which costs 1.4 dB.
    EXPECT_EQ(said, "445 -21.4  445.312500\n");
    EXPECT_THAT(estimation->getCandidatePeaks(), Contains(Pair(FloatNear(-21.4f, 0.05f), 445.3125f)));
    EXPECT_THAT(notesDown(), ElementsAre(a));
    EXPECT_EQ(estimation->getNoteState().downCount(a), 0.25f);
}

TEST_F(NoteEstimationTest, ListensOnWhenNobodyReadsItsOutput) {
    start(everyTenthBin);
    std::fflush(stdout);
    const int kept = dup(STDOUT_FILENO);
    ASSERT_GE(kept, 0);
    close(STDOUT_FILENO);
    // More lines than a buffer holds, so that writing is tried and fails.
    for (int step = 0; step < 2000; ++step) {
        estimation->updateNotes(levels({{20, -20.0}, {40, -20.0}, {60, -20.0}}), 0.25);
    }
    std::fflush(stdout);
    dup2(kept, STDOUT_FILENO);
    close(kept);
    std::clearerr(stdout);
    EXPECT_THAT(notesDown(), ElementsAre(0, 2, 4));
    EXPECT_EQ(estimation->getNoteState().downCount(2), 500.0f);
}
