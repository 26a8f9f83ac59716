#include "tools/zanto-song/Instrument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

constexpr int sampleRate = 48000;

// The strength of `frequencyHz` in a second of the instrument's sound, 1 for a full-scale sine.
double strengthAt(const Instrument& instrument, double playedHz, double frequencyHz) {
    constexpr double pi = 3.14159265358979323846;
    double real = 0.0;
    double imaginary = 0.0;
    for (int index = 0; index < sampleRate; ++index) {
        const double t = static_cast<double>(index) / sampleRate;
        const double sample = instrument.sample(playedHz, t, 1.0);
        real += sample * std::cos(2.0 * pi * frequencyHz * t);
        imaginary += sample * std::sin(2.0 * pi * frequencyHz * t);
    }
    return 2.0 * std::hypot(real, imaginary) / sampleRate;
}

}  // namespace

TEST(Instrument, StaysWithinFullScaleAndWithinItsNoteWithoutAClickAndIsStrongestAtItsPitch) {
    for (const Instrument& instrument : instruments()) {
        SCOPED_TRACE(instrument.name);
        EXPECT_EQ(findInstrument(instrument.name), &instrument);
        const double end = 0.7 + instrument.releaseSeconds;
        for (int index = -100; index < sampleRate; ++index) {
            const double t = static_cast<double>(index) / sampleRate;
            const double level = std::abs(instrument.sample(523.25, t, 0.7));
            const bool isAtAnEnd = std::min(std::abs(t), std::abs(t - end)) < 8.0 / sampleRate;
            ASSERT_LE(level, t < 0.0 || t > end ? 0.0 : (isAtAnEnd ? 0.02 : 1.0)) << t;
        }
        const double fundamental = strengthAt(instrument, 523.25, 523.25);
        EXPECT_GT(fundamental, 0.15);
        EXPECT_LT(strengthAt(instrument, 523.25, 554.37), fundamental / 10.0);
        EXPECT_LT(strengthAt(instrument, 523.25, 493.88), fundamental / 10.0);
        EXPECT_LT(strengthAt(instrument, 523.25, 1046.5), fundamental);
    }
    EXPECT_EQ(findInstrument("kazoo"), nullptr);
}
