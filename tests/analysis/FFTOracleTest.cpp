// An oracle that shares no code with what it judges: the same steps written down plainly, which must agree to
// the last bit.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "analysis/FFT.h"
#include "tests/analysis/PlainFFT.h"
#include "tests/support/SignalGenerators.h"

namespace {

constexpr int largestSize = 131072;  // of 17 bits, one more than the tables have

/// As bits, so that 0 differs from -0.
std::vector<std::uint32_t> bits(const std::vector<float>& values) {
    std::vector<std::uint32_t> result(values.size());
    std::memcpy(result.data(), values.data(), values.size() * sizeof(float));
    return result;
}

std::vector<float> scaled(std::vector<float> signal, float factor) {
    for (float& sample : signal) {
        sample *= factor;
    }
    return signal;
}

std::vector<float> withNegativeZeros(std::vector<float> signal) {
    for (std::size_t i = 0; i < signal.size(); ++i) {
        signal[i] = i % 3 == 0 ? -0.0f : (i % 3 == 1 ? 0.0f : signal[i]);
    }
    return signal;
}

std::map<std::string, std::vector<float>> testSignals(std::size_t count) {
    const std::vector<float> noise = signals::noise(17, 1.0f, count);
    const std::vector<float> chord = signals::tones({{261.63, 0.3}, {329.63, 0.3}, {392.0, 0.3}}, count);
    if (count > 4096) {
        // The long ones differ from the others in their number of stages only.
        return {{"noise", noise}, {"chord", chord}, {"holes of either zero", withNegativeZeros(noise)}};
    }
    std::vector<float> impulse(count, 0.0f);
    impulse[count / 2] = -1.0f;
    return {{"noise", noise},
            {"other noise", signals::noise(18, 1.0f, count)},
            {"quiet noise", scaled(noise, 1e-20f)},
            {"noise below the normal floats", scaled(noise, 1e-39f)},
            {"loud noise", scaled(noise, 1e30f)},
            {"tone", signals::tones({{440.0, 0.5}}, count)},
            {"chord", chord},
            {"silence", std::vector<float>(count, 0.0f)},
            {"negative silence", std::vector<float>(count, -0.0f)},
            {"holes of either zero", withNegativeZeros(noise)},
            {"constant", std::vector<float>(count, 0.7f)},
            {"impulse", impulse}};
}

struct Bins {
    explicit Bins(std::size_t count) : real(count, -99.0f), imag(count, -99.0f) {}
    std::vector<float> real;
    std::vector<float> imag;
};

}  // namespace

TEST(FFTOracle, ComplexTransformHasTheBitsOfThePlainOne) {
    for (int size = 2; size <= largestSize; size *= 2) {
        const auto count = static_cast<std::size_t>(size);
        const std::vector<float> other = signals::noise(19, 1.0f, count);
        for (const auto& [name, signal] : testSignals(count)) {
            for (const float* const imagIn : {other.data(), static_cast<const float*>(nullptr)}) {
                for (const bool inverse : {false, true}) {
                    Bins fast(count);
                    Bins exact(count);
                    FFT(size, inverse, signal.data(), imagIn, fast.real.data(), fast.imag.data());
                    plain::FFT(size, inverse, signal.data(), imagIn, exact.real.data(), exact.imag.data());
                    ASSERT_EQ(bits(fast.real), bits(exact.real)) << name << ", " << size << " samples";
                    ASSERT_EQ(bits(fast.imag), bits(exact.imag)) << name << ", " << size << " samples";
                }
            }
        }
    }
}

TEST(FFTOracle, RealTransformAndPowerSpectrumHaveTheBitsOfThePlainOnes) {
    // From the largest to the smallest: what was transformed before changes nothing.
    for (int size = largestSize; size >= 4; size /= 2) {
        const auto count = static_cast<std::size_t>(size);
        for (const auto& [name, signal] : testSignals(count)) {
            Bins fast(count / 2);
            Bins exact(count / 2);
            RealFFT(size, signal.data(), fast.real.data(), fast.imag.data());
            plain::RealFFT(size, signal.data(), exact.real.data(), exact.imag.data());
            ASSERT_EQ(bits(fast.real), bits(exact.real)) << name << ", " << size << " samples";
            ASSERT_EQ(bits(fast.imag), bits(exact.imag)) << name << ", " << size << " samples";
            PowerSpectrum(size, signal.data(), fast.real.data());
            plain::PowerSpectrum(size, signal.data(), exact.real.data());
            ASSERT_EQ(bits(fast.real), bits(exact.real)) << name << ", " << size << " samples";
        }
    }
}

TEST(FFTOracle, WindowsHaveTheBitsOfThePlainOnes) {
    for (const int size : {2, 3, 7, 64, 1000, 4095, 4096, 65536}) {
        const auto count = static_cast<std::size_t>(size);
        for (const auto& [name, signal] : testSignals(count)) {
            for (const int which : {1, 2, 3}) {
                std::vector<float> fast = signal;
                std::vector<float> exact = signal;
                WindowFunc(which, size, fast.data());
                plain::WindowFunc(which, size, exact.data());
                ASSERT_EQ(bits(fast), bits(exact))
                    << name << " in window " << which << ", " << size << " samples";
            }
        }
    }
}
