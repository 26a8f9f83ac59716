#include "tests/support/SignalGenerators.h"

#include <cmath>
#include <random>

namespace signals {

std::vector<float> tones(const std::vector<Tone>& tones, std::size_t count) {
    const double pi = std::acos(-1.0);
    std::vector<float> samples(count);
    for (std::size_t i = 0; i < count; ++i) {
        const double seconds = static_cast<double>(i) / sampleRateHz;
        double sample = 0.0;
        for (const Tone& tone : tones) {
            sample += tone.amplitude * std::sin(2.0 * pi * tone.frequencyHz * seconds + tone.phaseRadians);
        }
        samples[i] = static_cast<float>(sample);
    }
    return samples;
}

std::vector<float> noise(std::uint32_t seed, float amplitude, std::size_t count) {
    // The generator's sequence is fixed by the language, its distributions are not.
    std::mt19937 generator(seed);
    std::vector<float> samples(count);
    for (float& sample : samples) {
        sample = amplitude * static_cast<float>(static_cast<double>(generator()) / 2147483648.0 - 1.0);
    }
    return samples;
}

boost::shared_ptr<const RingBuffer> ringHolding(const std::vector<float>& samples) {
    const boost::shared_ptr<RingBuffer> ring(new RingBuffer(static_cast<unsigned int>(samples.size())));
    ring->append(samples.data(), static_cast<int>(samples.size()));
    return ring;
}

}  // namespace signals
