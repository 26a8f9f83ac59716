#pragma once

#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "analysis/SpectrumRules.h"
#include "audio/RingBuffer.h"

/// Signals for tests: mono floats at 48000 Hz, the same on every machine and in every run.
namespace signals {

constexpr double sampleRateHz = rules::sampleRateHz;

struct Tone {
    double frequencyHz;
    double amplitude;  ///< 1 is full scale, 0 dB in a spectrum
    double phaseRadians = 0.0;
};

/// The sum of `tones`.
std::vector<float> tones(const std::vector<Tone>& tones, std::size_t count);

/// Evenly distributed over -amplitude to amplitude.
std::vector<float> noise(std::uint32_t seed, float amplitude, std::size_t count);

/// A ring buffer whose newest samples are `samples` and which is full of them.
boost::shared_ptr<const RingBuffer> ringHolding(const std::vector<float>& samples);

}  // namespace signals
