#include "tools/zanto-song/Instrument.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr double highestHarmonicHz = 15000.0;  // well below half of any usual sample rate
constexpr double vibratoHz = 5.0;
constexpr double vibratoOnsetSeconds = 0.25;
constexpr double centsPerOctave = 1200.0;

// Harmonics are given by their levels relative to each other; stored so that they add up to 1.
Instrument make(std::string name, std::vector<double> harmonics, double attack, double release, double decay,
                double inharmonicity, double vibratoCents) {
    const double sum = std::accumulate(harmonics.begin(), harmonics.end(), 0.0);
    for (double& harmonic : harmonics) {
        harmonic /= sum;
    }
    return {std::move(name), std::move(harmonics), attack, release, decay, inharmonicity, vibratoCents};
}

}  // namespace

double Instrument::envelope(double t, double noteSeconds) const {
    const double end = noteSeconds + releaseSeconds;
    if (t <= 0.0 || t >= end) {
        return 0.0;
    }
    // Raised cosines at both ends: no click, and little of the attack outside the note's own harmonics.
    const double in = 0.5 - 0.5 * std::cos(pi * std::min(t / attackSeconds, 1.0));
    const double out = 0.5 - 0.5 * std::cos(pi * std::min((end - t) / releaseSeconds, 1.0));
    const double held = decaySeconds > 0.0 ? std::exp(-t / decaySeconds) : 1.0;
    return in * out * held;
}

double Instrument::sample(double frequencyHz, double t, double noteSeconds) const {
    const double strength = envelope(t, noteSeconds);
    if (strength == 0.0) {
        return 0.0;
    }
    // The phase of a vibrato of depth d cents around f: the integral of f * (1 + d' sin(2 pi v t)).
    const double depth = std::pow(2.0, vibratoCents / centsPerOctave) - 1.0;
    const double onset = std::min(t / vibratoOnsetSeconds, 1.0);
    const double sway = depth * onset * (1.0 - std::cos(2.0 * pi * vibratoHz * t)) / (2.0 * pi * vibratoHz);
    const double cycles = frequencyHz * (t + sway);
    double sum = 0.0;
    for (std::size_t index = 0; index < harmonics.size(); ++index) {
        const double order = static_cast<double>(index + 1);
        const double ratio = order * std::sqrt(1.0 + inharmonicity * order * order);
        if (frequencyHz * ratio > highestHarmonicHz) {
            break;
        }
        // The upper harmonics of a string die away sooner.
        const double damping = decaySeconds > 0.0 ? std::exp(-t * (order - 1.0) / (2.0 * decaySeconds)) : 1.0;
        sum += harmonics[index] * damping * std::sin(2.0 * pi * cycles * ratio);
    }
    return strength * sum;
}

const std::vector<Instrument>& instruments() {
    static const std::vector<Instrument> all = {
        make("flute", {1.0, 0.35, 0.12, 0.05, 0.02}, 0.04, 0.06, 0.0, 0.0, 6.0),
        make("clarinet", {1.0, 0.05, 0.45, 0.04, 0.25, 0.03, 0.12, 0.0, 0.06}, 0.03, 0.05, 0.0, 0.0, 0.0),
        make("organ", {1.0, 0.6, 0.15, 0.3, 0.0, 0.1, 0.0, 0.15}, 0.02, 0.04, 0.0, 0.0, 0.0),
        make("piano", {1.0, 0.5, 0.25, 0.15, 0.1, 0.06, 0.03}, 0.005, 0.08, 1.2, 0.0004, 0.0),
        make("music-box", {1.0, 0.1, 0.3, 0.02, 0.08}, 0.003, 0.1, 0.6, 0.0, 0.0),
        make("sine", {1.0}, 0.02, 0.04, 0.0, 0.0, 0.0),
    };
    return all;
}

const Instrument* findInstrument(const std::string& name) {
    for (const Instrument& instrument : instruments()) {
        if (instrument.name == name) {
            return &instrument;
        }
    }
    return nullptr;
}
