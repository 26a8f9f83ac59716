#include "analysis/FFTLoops.h"

#include <array>
#include <cstddef>
#include <numeric>

// Each loop stands in the program twice, for the vectors that every machine of its kind has and for longer
// ones, and the system decides which is used when it loads the program. Sanitizers cannot be loaded that way.
#ifdef ZANTO_LONG_VECTORS
#define ZANTO_CLONED __attribute__((target_clones("avx2", "default")))
#else
#define ZANTO_CLONED
#endif

namespace fft {

namespace {

/// The pointers are parameters, and of this one kind, because there the compiler believes that they do not
/// overlap.
template <bool oneFactor>
[[gnu::always_inline]] inline void butterflyLoop(int count, double const* __restrict factorReal,
                                                 double const* __restrict factorImag,
                                                 float* __restrict lowReal, float* __restrict lowImag,
                                                 float* __restrict highReal, float* __restrict highImag) {
    for (int i = 0; i < count; ++i) {
        double const ar = factorReal[oneFactor ? 0 : i];
        double const ai = factorImag[oneFactor ? 0 : i];
        double const tr = ar * highReal[i] - ai * highImag[i];
        double const ti = ar * highImag[i] + ai * highReal[i];
        double const real = lowReal[i];
        double const imag = lowImag[i];
        highReal[i] = static_cast<float>(real - tr);
        highImag[i] = static_cast<float>(imag - ti);
        lowReal[i] = static_cast<float>(real + tr);
        lowImag[i] = static_cast<float>(imag + ti);
    }
}

[[gnu::always_inline]] inline void separatePairsLoop(int count, float const* __restrict factorReal,
                                                     float const* __restrict factorImag,
                                                     float* __restrict lowReal, float* __restrict lowImag,
                                                     float* __restrict highReal, float* __restrict highImag) {
    for (int i = 0; i < count; ++i) {
        float const wr = factorReal[i];
        float const wi = factorImag[i];
        float const h1r = 0.5f * (lowReal[i] + highReal[-i]);
        float const h1i = 0.5f * (lowImag[i] - highImag[-i]);
        float const h2r = 0.5f * (lowImag[i] + highImag[-i]);
        float const h2i = -0.5f * (lowReal[i] - highReal[-i]);
        lowReal[i] = h1r + wr * h2r - wi * h2i;
        lowImag[i] = h1i + wr * h2i + wi * h2r;
        highReal[-i] = h1r - wr * h2r + wi * h2i;
        highImag[-i] = -h1i + wr * h2i + wi * h2r;
    }
}

[[gnu::always_inline]] inline void dealPairsLoop(int count, float const* __restrict samples,
                                                 float* __restrict real, float* __restrict imag) {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        real[i] = samples[2 * i];
        imag[i] = samples[2 * i + 1];
    }
}

[[gnu::always_inline]] inline void squareMagnitudesLoop(int count, float const* __restrict real,
                                                        float const* __restrict imag,
                                                        float* __restrict power) {
    for (int i = 0; i < count; ++i) {
        power[i] = real[i] * real[i] + imag[i] * imag[i];
    }
}

}  // namespace

ZANTO_CLONED void butterflies(int count, double const* factorReal, double const* factorImag, Complexes low,
                              Complexes high) {
    butterflyLoop<false>(count, factorReal, factorImag, low.real, low.imag, high.real, high.imag);
}

ZANTO_CLONED void butterflies(int count, double factorReal, double factorImag, Complexes low,
                              Complexes high) {
    butterflyLoop<true>(count, &factorReal, &factorImag, low.real, low.imag, high.real, high.imag);
}

ZANTO_CLONED void separatePairs(int count, float const* factorReal, float const* factorImag, Complexes low,
                                Complexes high) {
    separatePairsLoop(count, factorReal, factorImag, low.real, low.imag, high.real, high.imag);
}

ZANTO_CLONED void multiply(int count, double const* __restrict factors, float* __restrict data) {
    for (int i = 0; i < count; ++i) {
        data[i] = static_cast<float>(data[i] * factors[i]);
    }
}

ZANTO_CLONED void dealPairs(int count, float const* samples, Complexes pairs) {
    dealPairsLoop(count, samples, pairs.real, pairs.imag);
}

ZANTO_CLONED void squareMagnitudes(int count, Complexes values, float* power) {
    squareMagnitudesLoop(count, values.real, values.imag, power);
}

ZANTO_CLONED double sum(int count, float const* values) {
    constexpr int lanes = 8;
    std::array<double, lanes> sums{};
    int i = 0;
    for (; i + lanes <= count; i += lanes) {
        for (int lane = 0; lane < lanes; ++lane) {
            sums[static_cast<std::size_t>(lane)] += values[i + lane];
        }
    }
    return std::accumulate(values + i, values + count, std::accumulate(sums.begin(), sums.end(), 0.0));
}

}  // namespace fft
