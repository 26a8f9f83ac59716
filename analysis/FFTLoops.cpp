#include "analysis/FFTLoops.h"

#include <array>
#include <cstddef>
#include <numeric>

// Each loop is compiled for the baseline and for AVX2, and the loader picks one. That takes GCC and the GNU C
// library; sanitizers do not work with it.
#if defined(__x86_64__) && defined(__GLIBC__) && defined(__GNUC__) && !defined(__clang__) && \
    defined(__OPTIMIZE__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
#define ZANTO_CLONED __attribute__((target_clones("avx2", "default")))
#else
#define ZANTO_CLONED
#endif

// `__restrict` takes effect on parameters only, so every array is one.

namespace fft {

namespace {

template <bool oneFactor>
[[gnu::always_inline]] inline void butterflyLoop(int count, const double* __restrict factorReal,
                                                 const double* __restrict factorImag,
                                                 float* __restrict lowReal, float* __restrict lowImag,
                                                 float* __restrict highReal, float* __restrict highImag) {
    for (int i = 0; i < count; ++i) {
        const double ar = factorReal[oneFactor ? 0 : i];
        const double ai = factorImag[oneFactor ? 0 : i];
        const double tr = ar * highReal[i] - ai * highImag[i];
        const double ti = ar * highImag[i] + ai * highReal[i];
        const double real = lowReal[i];
        const double imag = lowImag[i];
        highReal[i] = static_cast<float>(real - tr);
        highImag[i] = static_cast<float>(imag - ti);
        lowReal[i] = static_cast<float>(real + tr);
        lowImag[i] = static_cast<float>(imag + ti);
    }
}

}  // namespace

ZANTO_CLONED void butterflies(int count, const double* factorReal, const double* factorImag, Complexes low,
                              Complexes high) {
    butterflyLoop<false>(count, factorReal, factorImag, low.real, low.imag, high.real, high.imag);
}

ZANTO_CLONED void butterflies(int count, double factorReal, double factorImag, Complexes low,
                              Complexes high) {
    butterflyLoop<true>(count, &factorReal, &factorImag, low.real, low.imag, high.real, high.imag);
}

ZANTO_CLONED void separatePairs(int count, const float* __restrict factorReal,
                                const float* __restrict factorImag, float* __restrict lowReal,
                                float* __restrict lowImag, float* __restrict highReal,
                                float* __restrict highImag) {
    for (int i = 0; i < count; ++i) {
        const float wr = factorReal[i];
        const float wi = factorImag[i];
        const float h1r = 0.5f * (lowReal[i] + highReal[-i]);
        const float h1i = 0.5f * (lowImag[i] - highImag[-i]);
        const float h2r = 0.5f * (lowImag[i] + highImag[-i]);
        const float h2i = -0.5f * (lowReal[i] - highReal[-i]);
        lowReal[i] = h1r + wr * h2r - wi * h2i;
        lowImag[i] = h1i + wr * h2i + wi * h2r;
        highReal[-i] = h1r - wr * h2r + wi * h2i;
        highImag[-i] = -h1i + wr * h2i + wi * h2r;
    }
}

ZANTO_CLONED void multiply(int count, const double* __restrict factors, float* __restrict data) {
    for (int i = 0; i < count; ++i) {
        data[i] = static_cast<float>(data[i] * factors[i]);
    }
}

ZANTO_CLONED void dealPairs(int count, const float* __restrict samples, float* __restrict real,
                            float* __restrict imag) {
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        real[i] = samples[2 * i];
        imag[i] = samples[2 * i + 1];
    }
}

ZANTO_CLONED void squareMagnitudes(int count, const float* __restrict real, const float* __restrict imag,
                                   float* __restrict power) {
    for (int i = 0; i < count; ++i) {
        power[i] = real[i] * real[i] + imag[i] * imag[i];
    }
}

ZANTO_CLONED double sum(int count, const float* values) {
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
