#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "tests/analysis/FineEarFixture.h"
#include "tests/support/SignalGenerators.h"

namespace {

class FineEarNoiseTest : public FineEarFixture {
protected:
    /// The longest time for which one note is heard without a break.
    double longestHeld(const std::vector<float>& sound) {
        std::map<int, double> held;
        double longest = 0.0;
        listen(sound, [&](double, const std::vector<Notes::NoteID>& notes) {
            for (int note = c; note <= b; ++note) {
                const bool isHeard = std::find(notes.begin(), notes.end(), note) != notes.end();
                held[note] = isHeard ? held[note] + blockSeconds : 0.0;
                longest = std::max(longest, held[note]);
            }
        });
        return longest;
    }
};

TEST_F(FineEarNoiseTest, NoiseIsHeldForNoTime) {
    for (const float amplitude : {0.003f, 0.03f, 0.3f, 1.0f}) {
        EXPECT_LT(longestHeld(signals::noise(7, amplitude, 192000)), 0.1) << amplitude;
    }
}

TEST_F(FineEarNoiseTest, MainsHumIsNoNote) {
    std::vector<signals::Tone> hum;
    for (int partial = 1; partial <= 12; ++partial) {
        hum.push_back({50.0 * partial, 0.1 / partial});
    }
    EXPECT_LT(longestHeld(signals::tones(hum, 96000)), 0.1);
}

TEST_F(FineEarNoiseTest, ClicksAreHeldForNoTime) {
    std::vector<float> clicks(96000);
    for (std::size_t i = 1000; i < clicks.size(); i += 7919) {
        clicks[i] = 1.0f;
    }
    EXPECT_LT(longestHeld(clicks), 0.1);
}

TEST_F(FineEarNoiseTest, SpeechGlidesAndIsHeldForNoTime) {
    // A voice whose pitch falls by a fifth in half a second, again and again.
    std::vector<float> sound(144000);
    double phase = 0.0;
    for (std::size_t i = 0; i < sound.size(); ++i) {
        const double share = static_cast<double>(i % 24000) / 24000.0;
        phase += 180.0 * std::exp2(-7.0 * share / 12.0) / signals::sampleRateHz;
        double sample = 0.0;
        for (int partial = 1; partial <= 15; ++partial) {
            sample += std::sin(2.0 * 3.14159265358979323846 * partial * phase) / partial;
        }
        sound[i] = static_cast<float>(0.1 * sample);
    }
    EXPECT_LT(longestHeld(sound), 0.15);
}

}  // namespace
