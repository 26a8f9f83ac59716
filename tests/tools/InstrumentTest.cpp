#include "tools/zanto-song/Instrument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

constexpr int sampleRate = 48000;

class EveryInstrument : public testing::TestWithParam<Instrument> {};

std::string nameOf(testing::TestParamInfo<Instrument> const& info) {
    std::string name = info.param.name;
    name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
    return name;
}

// The strength of `frequencyHz` in a second of the instrument's sound, 1 for a full-scale sine.
double strengthAt(Instrument const& instrument, double playedHz, double frequencyHz) {
    constexpr double pi = 3.14159265358979323846;
    double real = 0.0;
    double imaginary = 0.0;
    for (int index = 0; index < sampleRate; ++index) {
        double const t = static_cast<double>(index) / sampleRate;
        double const sample = instrument.sample(playedHz, t, 1.0);
        real += sample * std::cos(2.0 * pi * frequencyHz * t);
        imaginary += sample * std::sin(2.0 * pi * frequencyHz * t);
    }
    return 2.0 * std::hypot(real, imaginary) / sampleRate;
}

}  // namespace

TEST_P(EveryInstrument, isFoundByItsName) {
    ASSERT_NE(findInstrument(GetParam().name), nullptr);
    EXPECT_EQ(findInstrument(GetParam().name)->name, GetParam().name);
}

TEST_P(EveryInstrument, staysWithinFullScale) {
    for (int index = 0; index < sampleRate; ++index) {
        ASSERT_LE(std::abs(GetParam().sample(523.25, static_cast<double>(index) / sampleRate, 0.7)), 1.0);
    }
}

TEST_P(EveryInstrument, isSilentBeforeTheNoteAndAfterItsRelease) {
    EXPECT_EQ(GetParam().sample(523.25, -0.001, 0.5), 0.0);
    EXPECT_EQ(GetParam().sample(523.25, 0.5 + GetParam().releaseSeconds, 0.5), 0.0);
}

TEST_P(EveryInstrument, beginsAndEndsWithoutAClick) {
    double const end = 0.5 + GetParam().releaseSeconds;
    for (int index = 0; index < 8; ++index) {
        double const offset = static_cast<double>(index) / sampleRate;
        EXPECT_LT(std::abs(GetParam().sample(523.25, offset, 0.5)), 0.02);
        EXPECT_LT(std::abs(GetParam().sample(523.25, end - offset, 0.5)), 0.02);
    }
}

TEST_P(EveryInstrument, isStrongestAtThePitchItPlays) {
    double const fundamental = strengthAt(GetParam(), 523.25, 523.25);
    EXPECT_GT(fundamental, 0.15);
    EXPECT_LT(strengthAt(GetParam(), 523.25, 554.37), fundamental / 10.0);
    EXPECT_LT(strengthAt(GetParam(), 523.25, 493.88), fundamental / 10.0);
    EXPECT_LT(strengthAt(GetParam(), 523.25, 1046.5), fundamental);
}

INSTANTIATE_TEST_SUITE_P(Instruments, EveryInstrument, testing::ValuesIn(instruments()), nameOf);

TEST(Instrument, unknownNamesGiveNone) {
    EXPECT_EQ(findInstrument("kazoo"), nullptr);
    EXPECT_EQ(findInstrument(""), nullptr);
}
