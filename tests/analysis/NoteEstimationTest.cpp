#include "analysis/NoteEstimation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/analysis/PlainFFT.h"
#include "tests/support/SignalGenerators.h"
#include "tests/support/TemporaryFolder.h"

using testing::Contains;
using testing::ElementsAre;
using testing::FloatNear;
using testing::IsEmpty;
using testing::Pair;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStdout;

namespace {

constexpr std::size_t bins = 2048;
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int a = 5;

/// The seven notes at the centres of bins 20 to 80, C at 234.375 Hz to B at 937.5 Hz.
char const* const everyTenthBin =
    "C 1 234.375\nD 1 351.5625\nE 1 468.75\nF 1 585.9375\nG 1 703.125\nA 1 820.3125\nB 1 937.5\n";

/// A spectrum of `floorDb` with some bins above it.
std::vector<double> levels(std::vector<std::pair<std::size_t, double>> const& peaks,
                           double floorDb = -200.0) {
    std::vector<double> result(bins, floorDb);
    for (auto const& [bin, levelDb] : peaks) {
        result[bin] = levelDb;
    }
    return result;
}

/// A sine in the middle of a bin.
signals::Tone binTone(int bin, double amplitude) {
    return {bin * 11.71875, amplitude};
}

class NoteEstimationTest : public testing::Test {
protected:
    void SetUp() override { unsetenv("ZANTO_MIN_DECIBEL"); }
    void TearDown() override { unsetenv("ZANTO_MIN_DECIBEL"); }

    /// Makes the estimation anew with this note table, and gives what it says.
    std::string start(std::string const& table) {
        folder.write("notes.txt", table);
        CaptureStdout();
        estimation.emplace();
        return GetCapturedStdout();
    }

    /// Gives what the update says.
    std::string update(std::vector<float> const& samples, double dtSeconds = 0.02) {
        CaptureStdout();
        estimation->update(signals::ringHolding(samples), dtSeconds);
        return GetCapturedStdout();
    }

    std::string updateNotes(std::vector<double> const& levelsDb, double dtSeconds = 0.02) {
        CaptureStdout();
        estimation->updateNotes(levelsDb, dtSeconds);
        return GetCapturedStdout();
    }

    std::vector<int> notesDown() const {
        std::vector<int> down;
        for (int note = -1; note <= 7; ++note) {
            if (estimation->getNoteState().isDown(note)) {
                down.push_back(note);
            }
        }
        return down;
    }

    TemporaryFolder folder;
    std::optional<NoteEstimation> estimation;
};

}  // namespace

TEST_F(NoteEstimationTest, StartsWithItsDefaultThresholdAndNothingHeard) {
    EXPECT_EQ(start(everyTenthBin), "NoteEstimation minDecibel is -65.000000\n");
    EXPECT_EQ(estimation->getMinDecibel(), -65.0f);
    EXPECT_THAT(notesDown(), IsEmpty());
    EXPECT_THAT(estimation->getCandidatePeaks(), IsEmpty());
    EXPECT_THAT(estimation->getPowerSpectrum(), IsEmpty());
}

TEST_F(NoteEstimationTest, ThresholdComesFromTheEnvironment) {
    setenv("ZANTO_MIN_DECIBEL", "-80", 1);
    EXPECT_EQ(start(everyTenthBin), "NoteEstimation minDecibel is -80.000000\n");
    EXPECT_EQ(estimation->getMinDecibel(), -80.0f);
    updateNotes(levels({{40, -79.5}, {60, -80.0}}));
    EXPECT_THAT(estimation->getCandidatePeaks(), ElementsAre(Pair(-79.5f, 468.75f)));
}

TEST_F(NoteEstimationTest, ThresholdIsReadAsFarAsItIsANumber) {
    setenv("ZANTO_MIN_DECIBEL", "loud", 1);
    EXPECT_EQ(start(""), "NoteEstimation minDecibel is 0.000000\n");
    setenv("ZANTO_MIN_DECIBEL", "-72.5dB", 1);
    EXPECT_EQ(start(""), "NoteEstimation minDecibel is -72.500000\n");
    setenv("ZANTO_MIN_DECIBEL", "", 1);
    EXPECT_EQ(start(""), "NoteEstimation minDecibel is 0.000000\n");
    setenv("ZANTO_MIN_DECIBEL", "-1e300", 1);
    EXPECT_EQ(start(""), "NoteEstimation minDecibel is -inf\n");
    setenv("ZANTO_MIN_DECIBEL", "1e300", 1);
    EXPECT_EQ(start(""), "NoteEstimation minDecibel is inf\n");
}

TEST_F(NoteEstimationTest, ThresholdMayBeAsLargeAsAFloatGets) {
    setenv("ZANTO_MIN_DECIBEL", "0x1.fffffep127", 1);
    start("");
    EXPECT_EQ(estimation->getMinDecibel(), std::numeric_limits<float>::max());
    setenv("ZANTO_MIN_DECIBEL", "-0x1.fffffep127", 1);
    start("");
    EXPECT_EQ(estimation->getMinDecibel(), std::numeric_limits<float>::lowest());
}

TEST_F(NoteEstimationTest, MissingNoteTableHearsPeaksAndNoNotes) {
    CaptureStdout();
    estimation.emplace();
    EXPECT_EQ(GetCapturedStdout(), "NoteEstimation minDecibel is -65.000000\n");
    EXPECT_EQ(updateNotes(levels({{40, -20.0}})), "469 -20.0  468.750000\n");
    EXPECT_THAT(notesDown(), IsEmpty());
}

TEST_F(NoteEstimationTest, BinsAreACertainNumberOfHertzApart) {
    start("");
    for (int bin = 0; bin < 2048; ++bin) {
        ASSERT_EQ(estimation->indexToFrequency(bin), static_cast<float>(bin * 11.71875));
    }
    EXPECT_EQ(estimation->indexToFrequency(10), 117.1875f);
    EXPECT_EQ(estimation->indexToFrequency(85), 996.09375f);
    EXPECT_EQ(estimation->indexToFrequency(86), 1007.8125f);
}

TEST_F(NoteEstimationTest, WindowIsNormalisedByTheSquareOfItsSum) {
    start("");
    std::vector<float> window(4096, 1.0f);
    plain::WindowFunc(2, 4096, window.data());
    double sum = 0.0;
    for (float const factor : window) {
        sum += factor;
    }
    EXPECT_EQ(estimation->initializeWindow(), 4.0 / (sum * sum));
}

TEST_F(NoteEstimationTest, SilenceIsMinusInfinityEverywhereAndReleasesEveryNote) {
    start(everyTenthBin);
    updateNotes(levels({{20, -10.0}, {40, -10.0}}));
    ASSERT_THAT(notesDown(), ElementsAre(0, 2));
    EXPECT_EQ(update(std::vector<float>(6144, 0.0f)), "");
    EXPECT_EQ(estimation->getPowerSpectrum(), std::vector<double>(bins, -infinity));
    EXPECT_THAT(estimation->getCandidatePeaks(), IsEmpty());
    EXPECT_THAT(notesDown(), IsEmpty());
}

TEST_F(NoteEstimationTest, ConcertPitchIsHeardInTheBinsAroundIt) {
    start("A 2 433.6 445.3");
    std::string const said = update(signals::tones({{440.0, 0.1}}, 6144), 0.25);
    // 0.45 bins from the middle of the nearer one, which costs 1.4 dB.
    EXPECT_EQ(said, "445 -21.4  445.312500\n");
    EXPECT_THAT(estimation->getCandidatePeaks(), Contains(Pair(FloatNear(-21.4f, 0.05f), 445.3125f)));
    EXPECT_THAT(notesDown(), ElementsAre(a));
    EXPECT_EQ(estimation->getNoteState().downCount(a), 0.25f);
}

TEST_F(NoteEstimationTest, FullScaleSineIsZeroDecibels) {
    start("");
    for (int const bin : {20, 64, 85}) {
        update(signals::tones({binTone(bin, 1.0)}, 6144));
        EXPECT_NEAR(estimation->getPowerSpectrum()[static_cast<std::size_t>(bin)], 0.0, 0.001) << bin;
        update(signals::tones({binTone(bin, 0.01)}, 6144));
        EXPECT_NEAR(estimation->getPowerSpectrum()[static_cast<std::size_t>(bin)], -40.0, 0.001) << bin;
    }
}

TEST_F(NoteEstimationTest, SpectrumHasTheBitsOfThePlainSteps) {
    start("");
    std::vector<float> const samples = signals::noise(31, 0.5f, 6144);
    update(samples);
    std::vector<float> window(4096, 1.0f);
    plain::WindowFunc(2, 4096, window.data());
    double sum = 0.0;
    for (float const factor : window) {
        sum += factor;
    }
    double const norm = 4.0 / (sum * sum);
    std::vector<float> frame(samples.begin(), samples.begin() + 4096);
    plain::WindowFunc(2, 4096, frame.data());
    std::vector<float> power(bins);
    plain::PowerSpectrum(4096, frame.data(), power.data());
    for (std::size_t bin = 0; bin < bins; ++bin) {
        double const expected = 10.0 * std::log10(static_cast<double>(power[bin]) * norm / 1);
        ASSERT_EQ(estimation->getPowerSpectrum()[bin], expected) << "bin " << bin;
    }
}

TEST_F(NoteEstimationTest, AnalysedBlockEnds2048SamplesBeforeTheNewest) {
    start(everyTenthBin);
    std::vector<float> samples = signals::tones({binTone(40, 0.5)}, 4096);
    std::vector<float> const newest = signals::tones({binTone(60, 0.5)}, 2048);
    samples.insert(samples.end(), newest.begin(), newest.end());
    update(samples);
    EXPECT_THAT(notesDown(), ElementsAre(2));
    EXPECT_LT(estimation->getPowerSpectrum()[60], -60.0);
}

TEST_F(NoteEstimationTest, TwoTonesAreTwoNotes) {
    start(everyTenthBin);
    std::string const said = update(signals::tones({binTone(20, 0.16), binTone(50, 0.2)}, 6144));
    EXPECT_EQ(said, "234 -15.9  586 -14.0  585.937500\n");
    EXPECT_THAT(notesDown(), ElementsAre(0, 3));
}

TEST_F(NoteEstimationTest, HeldNoteGainsEachStep) {
    start(everyTenthBin);
    for (int step = 1; step <= 4; ++step) {
        updateNotes(levels({{40, -20.0}}), 0.25);
        EXPECT_EQ(estimation->getNoteState().downCount(2), 0.25f * static_cast<float>(step));
    }
}

TEST_F(NoteEstimationTest, TwoPeaksOfOneNoteCountTwice) {
    start("E 2 468.75 703.125");
    updateNotes(levels({{40, -20.0}, {60, -20.0}}), 0.25);
    EXPECT_THAT(notesDown(), ElementsAre(2));
    EXPECT_EQ(estimation->getNoteState().downCount(2), 0.5f);
}

TEST_F(NoteEstimationTest, BinThatEqualsANeighbourIsNoPeak) {
    start(everyTenthBin);
    EXPECT_EQ(updateNotes(levels({{40, -20.0}, {41, -20.0}})), "");
    EXPECT_THAT(estimation->getCandidatePeaks(), IsEmpty());
    EXPECT_EQ(updateNotes(levels({{40, -20.0}, {41, std::nextafter(-20.0, -30.0)}})),
              "469 -20.0  468.750000\n");
}

TEST_F(NoteEstimationTest, PeakMustExceedTheThreshold) {
    start(everyTenthBin);
    EXPECT_EQ(updateNotes(levels({{40, -65.0}})), "");
    EXPECT_EQ(updateNotes(levels({{40, std::nextafter(-65.0, 0.0)}})), "469 -65.0  468.750000\n");
}

TEST_F(NoteEstimationTest, LowestBinLookedAtIsTheTenth) {
    start("");
    EXPECT_EQ(updateNotes(levels({{9, -20.0}})), "");
    EXPECT_EQ(updateNotes(levels({{10, -20.0}})), "117 -20.0  117.187500\n");
}

TEST_F(NoteEstimationTest, ScanEndsWithTheFirstPeakAboveAThousandHertz) {
    start("");
    EXPECT_EQ(updateNotes(levels({{85, -22.0}, {90, -20.0}, {100, -1.0}})),
              "996 -22.0  1055 -20.0  1054.687500\n");
    EXPECT_THAT(estimation->getCandidatePeaks(),
                ElementsAre(Pair(-22.0f, 996.09375f), Pair(-20.0f, 1054.6875f)));
}

TEST_F(NoteEstimationTest, LoudPeakBehindTheLastOneDoesNotMakeTheOthersWeak) {
    start(everyTenthBin);
    updateNotes(levels({{40, -60.0}, {86, -60.0}, {100, 0.0}}));
    EXPECT_THAT(notesDown(), ElementsAre(2));
}

TEST_F(NoteEstimationTest, HighestBinLookedAtIsTheLastButOne) {
    start("");
    EXPECT_EQ(updateNotes(levels({{2046, -20.0}})), "23977 -20.0  23976.562500\n");
    EXPECT_EQ(updateNotes(levels({{2047, -20.0}})), "");
}

TEST_F(NoteEstimationTest, PeaksFarBelowTheLoudestAreCandidatesAndNoNotes) {
    start(everyTenthBin);
    // Of the loudest one's 80 dB above -100 dB, 76 are not enough.
    EXPECT_EQ(updateNotes(levels({{20, -24.0}, {40, -20.0}, {60, -23.99}})),
              "469 -20.0  703 -24.0  468.750000\n");
    EXPECT_THAT(estimation->getCandidatePeaks(),
                ElementsAre(Pair(-24.0f, 234.375f), Pair(-20.0f, 468.75f), Pair(-23.99f, 703.125f)));
    EXPECT_THAT(notesDown(), ElementsAre(2, 4));
}

TEST_F(NoteEstimationTest, OfEqualPeaksTheFirstIsTheLoudest) {
    start("");
    EXPECT_EQ(updateNotes(levels({{40, -20.0}, {60, -20.0}})), "469 -20.0  703 -20.0  468.750000\n");
}

TEST_F(NoteEstimationTest, BelowMinusHundredDecibelsNothingIsStrongEnough) {
    setenv("ZANTO_MIN_DECIBEL", "-150", 1);
    start(everyTenthBin);
    EXPECT_EQ(updateNotes(levels({{40, -100.0}, {60, -120.0}})), "468.750000\n");
    EXPECT_THAT(estimation->getCandidatePeaks(), testing::SizeIs(2));
    EXPECT_THAT(notesDown(), IsEmpty());
}

TEST_F(NoteEstimationTest, PeakBelowEveryMaximumHasNoFrequencyToSay) {
    setenv("ZANTO_MIN_DECIBEL", "-100000", 1);
    start(everyTenthBin);
    EXPECT_EQ(updateNotes(levels({{40, -20000.0}}, -30000.0)), "");
    EXPECT_THAT(estimation->getCandidatePeaks(), ElementsAre(Pair(-20000.0f, 468.75f)));
}

TEST_F(NoteEstimationTest, NotesWithoutAnIdAreLeftOut) {
    start("X 1 468.75 G 1 703.125");
    EXPECT_EQ(updateNotes(levels({{40, -20.0}, {60, -20.0}})), "469 -20.0  703 -20.0  468.750000\n");
    EXPECT_THAT(notesDown(), ElementsAre(4));
}

TEST_F(NoteEstimationTest, PeaksOfTheLastUpdateReplaceTheOnesBefore) {
    start("");
    updateNotes(levels({{40, -20.0}, {60, -20.0}}));
    updateNotes(levels({{50, -20.0}}));
    EXPECT_THAT(estimation->getCandidatePeaks(), ElementsAre(Pair(-20.0f, 585.9375f)));
    updateNotes(levels({}));
    EXPECT_THAT(estimation->getCandidatePeaks(), IsEmpty());
}

TEST_F(NoteEstimationTest, AnyValueMayStandInASpectrum) {
    start(everyTenthBin);
    EXPECT_EQ(updateNotes(std::vector<double>(bins, notANumber)), "");
    EXPECT_EQ(updateNotes(std::vector<double>(bins, infinity)), "");
    EXPECT_EQ(updateNotes(std::vector<double>(bins, -infinity)), "");
    EXPECT_EQ(updateNotes(levels({{39, notANumber}, {40, -20.0}, {60, -20.0}})), "703 -20.0  703.125000\n");
    EXPECT_EQ(updateNotes(levels({{40, 1e300}, {60, -20.0}}, -1e300)), "468.750000\n");
    EXPECT_THAT(estimation->getCandidatePeaks(),
                ElementsAre(Pair(std::numeric_limits<float>::infinity(), 468.75f), Pair(-20.0f, 703.125f)));
    EXPECT_EQ(updateNotes(levels({{40, infinity}})), "468.750000\n");
}

TEST_F(NoteEstimationTest, AnyStepMayBeAdded) {
    start(everyTenthBin);
    updateNotes(levels({{40, -20.0}}), 1e300);
    EXPECT_EQ(estimation->getNoteState().downCount(2), std::numeric_limits<float>::infinity());
    updateNotes(levels({{20, -20.0}}), notANumber);
    EXPECT_TRUE(std::isnan(estimation->getNoteState().downCount(0)));
    updateNotes(levels({{60, -20.0}}), -0.5);
    EXPECT_EQ(estimation->getNoteState().downCount(4), -0.5f);
}

TEST_F(NoteEstimationTest, ListensOnWhenNobodyReadsItsOutput) {
    start(everyTenthBin);
    std::fflush(stdout);
    int const kept = dup(STDOUT_FILENO);
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
