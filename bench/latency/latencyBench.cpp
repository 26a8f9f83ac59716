// From sound to decision: how long after the audio callback that brings a tone's first sample the first frame
// comes in which its note is down. All on a virtual clock, so every run gives the same figures.

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cmath>
#include <cstdio>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "analysis/SpectrumRules.h"
#include "audio/AudioInput.h"
#include "audio/RingBuffer.h"

namespace {

using rules::sampleRateHz;
using rules::windowSamples;
constexpr int blockSamples = 1024;  // what a callback brings
constexpr int delaySamples = rules::copiedSamples - windowSamples;
constexpr double frameSeconds = 0.01;
constexpr double longestWaitSeconds = 1.0;
constexpr double limitSeconds =
    static_cast<double>(blockSamples + delaySamples + windowSamples / 2) / sampleRateHz + frameSeconds;

struct Tone {
    Notes::NoteID note;
    double frequencyHz;
};
constexpr Tone tones[] = {{0, 523.25}, {1, 587.33}, {2, 659.26}, {3, 698.46},
                          {4, 783.99}, {5, 880.00}, {6, 987.77}};

/// A note as a plucked string gives it: harmonics that begin at once.
float sampleOf(const Tone& tone, double amplitude, int sample) {
    const double phase = 2.0 * std::acos(-1.0) * tone.frequencyHz * sample / sampleRateHz;
    return static_cast<float>(amplitude * (std::sin(phase) + 0.5 * std::sin(2.0 * phase)));
}

/// Seconds from the callback that brings the tone's first sample, which is number `onset` of its block, to
/// the first frame with the note down; frames come `framePhase` of a frame after callbacks began. The longest
/// wait when there is none.
double latency(const Tone& tone, double amplitude, int onset, double framePhase) {
    const auto ring = boost::make_shared<RingBuffer>(AudioInput::blocksKept * blockSamples);
    NoteEstimation estimation;
    std::vector<float> block(blockSamples, 0.0f);
    int callbacks = 0;
    for (double now = framePhase * frameSeconds; now < longestWaitSeconds; now += frameSeconds) {
        for (; callbacks * static_cast<double>(blockSamples) / sampleRateHz <= now; ++callbacks) {
            for (int i = 0; i < blockSamples; ++i) {
                const int sample = callbacks * blockSamples + i - onset;
                block[static_cast<std::size_t>(i)] = sample < 0 ? 0.0f : sampleOf(tone, amplitude, sample);
            }
            ring->append(block.data(), blockSamples);
        }
        estimation.update(ring, frameSeconds);
        if (estimation.getNoteState().isDown(tone.note)) {
            return now;
        }
    }
    return longestWaitSeconds;
}

}  // namespace

int main() {
    std::FILE* const report = stderr;
    if (std::freopen("/dev/null", "w", stdout) == nullptr) {
        return 1;
    }
    std::fprintf(report, "limit of the rule: %.1f ms\n", limitSeconds * 1000.0);
    for (const double amplitude : {0.3, 0.03, 0.003}) {
        std::vector<double> all;
        for (const Tone& tone : tones) {
            for (int onset = 0; onset < blockSamples; onset += 128) {
                for (const double phase : {0.0, 0.3, 0.6, 0.9}) {
                    all.push_back(latency(tone, amplitude, onset, phase));
                }
            }
        }
        std::sort(all.begin(), all.end());
        std::fprintf(report,
                     "amplitude %.3f: first %.1f ms, median %.1f ms, last %.1f ms, %.1f ms past the limit\n",
                     amplitude, all.front() * 1000.0, all[all.size() / 2] * 1000.0, all.back() * 1000.0,
                     (all.back() - limitSeconds) * 1000.0);
    }
}
