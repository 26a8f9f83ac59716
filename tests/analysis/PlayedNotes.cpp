#include "tests/analysis/PlayedNotes.h"

#include <algorithm>
#include <cmath>

#include "tests/support/SignalGenerators.h"

double pitchHz(double pitch) {
    return 440.0 * std::exp2((pitch - 69.0) / 12.0);
}

std::vector<float> played(const std::vector<Player>& players, double seconds) {
    std::vector<float> sound(static_cast<std::size_t>(seconds * signals::sampleRateHz));
    for (const Player& player : players) {
        const double fundamental = 2.0 * 3.14159265358979323846 * pitchHz(player.pitch);
        double weakness[10];
        for (int partial = 0; partial < 10; ++partial) {
            weakness[partial] = std::pow(player.firstPartial + partial, player.slope);
        }
        for (std::size_t i = 0; i < sound.size(); ++i) {
            const double t = static_cast<double>(i) / signals::sampleRateHz;
            if (t < player.startSeconds) {
                continue;
            }
            const double fadeDb =
                (t - player.startSeconds) * player.fadeDbPerSecond +
                (t > player.endSeconds ? (t - player.endSeconds) * player.endDbPerSecond : 0.0);
            if (fadeDb > 120.0) {
                break;
            }
            const double level = player.amplitude * std::min(1.0, (t - player.startSeconds) / 0.01) *
                                 std::pow(10.0, -fadeDb / 20.0);
            double sample = 0.0;
            for (int partial = 0; partial < 10; ++partial) {
                sample += std::sin(fundamental * (player.firstPartial + partial) * t) / weakness[partial];
            }
            sound[i] += static_cast<float>(level * sample);
        }
    }
    return sound;
}
