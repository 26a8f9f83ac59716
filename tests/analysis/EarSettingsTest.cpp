#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include "tests/analysis/NoteEstimationFixture.h"

using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

constexpr int a = 5;

class EarSettingsTest : public NoteEstimationTest {
protected:
    std::vector<int> heardIn(const std::vector<signals::Tone>& tones) {
        const std::vector<float> sound = signals::tones(tones, 6144);
        update(sound);
        update(sound);
        return notesDown();
    }
};

TEST_F(EarSettingsTest, EarComesFromTheEnvironment) {
    // A4 lies between two bins, and no table is there: only the fine ear can hear it.
    for (const char* const name : {"", "plain", "fine"}) {
        setenv("ZANTO_EAR", name, 1);
        CaptureStderr();
        start("");
        EXPECT_EQ(GetCapturedStderr(), "") << name;
        EXPECT_EQ(heardIn({{440.0, 0.1}, {880.0, 0.05}}),
                  name == std::string("fine") ? std::vector<int>{a} : std::vector<int>())
            << name;
    }
}

TEST_F(EarSettingsTest, EarThatDoesNotExistIsToldAndThePlainOneListens) {
    setenv("ZANTO_EAR", "Fine", 1);
    setenv("ZANTO_A4", "nonsense", 1);
    CaptureStderr();
    start("A 1 433.6");
    EXPECT_EQ(GetCapturedStderr(), "ZANTO_EAR: \"Fine\" is not one of plain fine. plain is used.\n");
    EXPECT_THAT(heardIn({binTone(37, 0.1)}), ElementsAre(a));
}

TEST_F(EarSettingsTest, FineEarIsTunedByTheEnvironment) {
    setenv("ZANTO_EAR", "fine", 1);
    setenv("ZANTO_A4", "380", 1);
    setenv("ZANTO_TRANSPOSE", "-2", 1);
    CaptureStderr();
    start("");
    EXPECT_EQ(GetCapturedStderr(), "");
    EXPECT_THAT(heardIn({{380.0 / std::exp2(1.0 / 6.0), 0.1}}), ElementsAre(a));
}

TEST_F(EarSettingsTest, TuningThatIsOutOfRangeOrNoNumberIsToldAndNotTaken) {
    setenv("ZANTO_EAR", "fine", 1);
    for (const auto& [name, value, said] : std::vector<std::tuple<const char*, const char*, const char*>>{
             {"ZANTO_A4", "379.9", "a number from 380 to 480. 440 is used."},
             {"ZANTO_A4", "480.1", "a number from 380 to 480. 440 is used."},
             {"ZANTO_A4", "nan", "a number from 380 to 480. 440 is used."},
             {"ZANTO_A4", "440 Hz", "a number from 380 to 480. 440 is used."},
             {"ZANTO_TRANSPOSE", "25", "a whole number from -24 to 24. 0 is used."},
             {"ZANTO_TRANSPOSE", "0.5", "a whole number from -24 to 24. 0 is used."}}) {
        setenv(name, value, 1);
        CaptureStderr();
        start("");
        EXPECT_EQ(GetCapturedStderr(), std::string(name) + ": \"" + value + "\" is not " + said + "\n");
        unsetenv(name);
        EXPECT_THAT(heardIn({{440.0, 0.1}}), ElementsAre(a));
    }
}

TEST_F(EarSettingsTest, SpectrumPeaksAndLinesMeanTheSameWithTheFineEar) {
    const std::vector<double> spectrum = levels({{20, -20.0}, {40, -21.0}, {60, -50.0}});
    start("");
    const std::string plainLine = updateNotes(spectrum);
    const auto plainPeaks = estimation->getCandidatePeaks();
    setenv("ZANTO_EAR", "fine", 1);
    start("");
    EXPECT_EQ(updateNotes(spectrum), plainLine);
    EXPECT_EQ(estimation->getCandidatePeaks(), plainPeaks);
    update(signals::tones({binTone(20, 1.0)}, 6144));
    EXPECT_NEAR(estimation->getPowerSpectrum()[20], 0.0, 0.001);
}

TEST_F(EarSettingsTest, FineEarAnalysesTheNewestSamples) {
    setenv("ZANTO_EAR", "fine", 1);
    start("");
    std::vector<float> samples(2048);
    const std::vector<float> newest = signals::tones({binTone(60, 1.0)}, 4096);
    samples.insert(samples.end(), newest.begin(), newest.end());
    update(samples);
    EXPECT_NEAR(estimation->getPowerSpectrum()[60], 0.0, 0.001);
}

TEST_F(EarSettingsTest, FineEarHearsNothingBelowTheThreshold) {
    setenv("ZANTO_EAR", "fine", 1);
    setenv("ZANTO_MIN_DECIBEL", "-15", 1);
    start("");
    for (const double amplitude : {0.1, 0.3}) {
        EXPECT_EQ(heardIn({{440.0, amplitude}}), amplitude > 0.2 ? std::vector<int>{a} : std::vector<int>())
            << amplitude;
    }
}

TEST_F(EarSettingsTest, AnySamplesLeaveTheFineEarWhole) {
    setenv("ZANTO_EAR", "fine", 1);
    start("");
    const auto any = std::numeric_limits<float>::infinity();
    for (const float value :
         {0.0f, any, -any, std::numeric_limits<float>::quiet_NaN(), 3e38f, 1e-45f, 1.0f}) {
        std::vector<float> sound(6144);
        for (std::size_t i = 0; i < sound.size(); ++i) {
            sound[i] = i / 53 % 2 == 0 ? value : -value;
        }
        update(sound);
        update(sound);
    }
    for (int frame = 0; frame < 50; ++frame) {
        heardIn({{440.0, 0.1}});
    }
    EXPECT_THAT(notesDown(), ElementsAre(a));
}

}  // namespace
