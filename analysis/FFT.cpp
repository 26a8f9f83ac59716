#include "analysis/FFT.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include "analysis/FFTFactors.h"
#include "analysis/FFTLoops.h"

namespace {

using fft::Complexes;
using fft::PairFactors;
using fft::StageFactors;

constexpr int largestTableBits = 16;

std::array<std::uint16_t*, largestTableBits> bitReversalTables;

void requirePowerOfTwo(int size) {
    if (!IsPowerOfTwo(size)) {
        std::fprintf(stderr, "%d is not a power of two\n", size);
        std::exit(1);
    }
}

/// Complex values that live as long as one call.
struct Temporaries {
    explicit Temporaries(int count)
        : real(new float[static_cast<std::size_t>(count)]),
          imag(new float[static_cast<std::size_t>(count)]) {}

    Complexes values() const { return {real.get(), imag.get()}; }

    std::unique_ptr<float[]> real;
    std::unique_ptr<float[]> imag;
};

/// The complex transform of `scratch`[n] in natural order, which is destroyed, to `out`[n], not scaled.
///
/// The early stages run before the values are brought into bit-reversed order, because there the butterflies
/// that share a factor stand side by side: those of block b of a stage, whose factor has the reversed bits of
/// b for its number. The late stages run after it, where side by side stand those with all the factors in
/// turn. Both kinds of row are long, which is what the loops want; which values meet, and in which stage, is
/// the same.
void transform(int numSamples, bool inverse, Complexes scratch, Complexes out) {
    InitFFT();
    int blockEnd = 1;
    int stage = 0;
    for (; blockEnd * blockEnd < numSamples; blockEnd *= 2, ++stage) {
        const StageFactors& factors = fft::stageFactors(blockEnd, inverse);
        const int run = numSamples / 2 / blockEnd;
        for (int block = 0; block < blockEnd; ++block) {
            const auto factor = static_cast<std::size_t>(ReverseBits(block, stage));
            const Complexes low = scratch.from(2 * run * block);
            fft::butterflies(run, factors.real[factor], factors.imag[factor], low, low.from(run));
        }
    }
    const int numBits = NumberOfBitsNeeded(numSamples);
    for (int i = 0; i < numSamples; ++i) {
        const int j = FastReverseBits(i, numBits);
        out.real[j] = scratch.real[i];
        out.imag[j] = scratch.imag[i];
    }
    for (; blockEnd < numSamples; blockEnd *= 2) {
        const StageFactors& factors = fft::stageFactors(blockEnd, inverse);
        for (int i = 0; i < numSamples; i += 2 * blockEnd) {
            const Complexes low = out.from(i);
            fft::butterflies(blockEnd, factors.real.data(), factors.imag.data(), low, low.from(blockEnd));
        }
    }
}

}  // namespace

bool IsPowerOfTwo(int x) {
    return x >= 2 && (x & (x - 1)) == 0;
}

int NumberOfBitsNeeded(int powerOfTwo) {
    if (powerOfTwo < 2) {
        std::fprintf(stderr, "Error: FFT called with size %d\n", powerOfTwo);
        std::exit(1);
    }
    int bits = 0;
    while ((powerOfTwo >> bits & 1) == 0) {
        ++bits;
    }
    return bits;
}

int ReverseBits(int index, int numBits) {
    int reversed = 0;
    for (int i = 0; i < numBits; ++i) {
        reversed = reversed << 1 | (index & 1);
        index >>= 1;
    }
    return reversed;
}

int FastReverseBits(int index, int numBits) {
    if (numBits > largestTableBits) {
        return ReverseBits(index, numBits);
    }
    const std::uint16_t* const table = bitReversalTables[static_cast<std::size_t>(numBits - 1)];
    return table[index];
}

void InitFFT() {
    if (bitReversalTables[0] != nullptr) {
        return;
    }
    for (int bits = 1; bits <= largestTableBits; ++bits) {
        const int entries = 1 << bits;
        auto* const table = new std::uint16_t[static_cast<std::size_t>(entries)];
        for (int i = 0; i < entries; ++i) {
            table[i] = static_cast<std::uint16_t>(ReverseBits(i, bits));
        }
        bitReversalTables[static_cast<std::size_t>(bits - 1)] = table;
    }
}

void FFT(int numSamples, bool inverseTransform, const float* realIn, const float* imagIn, float* realOut,
         float* imagOut) {
    requirePowerOfTwo(numSamples);
    const Temporaries scratch(numSamples);
    std::copy_n(realIn, numSamples, scratch.real.get());
    if (imagIn == nullptr) {
        std::fill_n(scratch.imag.get(), numSamples, 0.0f);
    } else {
        std::copy_n(imagIn, numSamples, scratch.imag.get());
    }
    transform(numSamples, inverseTransform, scratch.values(), {realOut, imagOut});
    if (inverseTransform) {
        const auto scale = static_cast<float>(numSamples);
        for (int i = 0; i < numSamples; ++i) {
            realOut[i] /= scale;
            imagOut[i] /= scale;
        }
    }
}

void RealFFT(int numSamples, const float* realIn, float* realOut, float* imagOut) {
    const int half = numSamples / 2;
    requirePowerOfTwo(half);
    const Temporaries pairs(half);
    fft::dealPairs(half, realIn, pairs.real.get(), pairs.imag.get());
    transform(half, false, pairs.values(), {realOut, imagOut});

    const PairFactors& factors = fft::pairFactors(half);
    fft::separatePairs(half / 2 - 1, factors.real.data(), factors.imag.data(), realOut + 1, imagOut + 1,
                       realOut + half - 1, imagOut + half - 1);
    const float h1r = realOut[0];
    realOut[0] = h1r + imagOut[0];
    imagOut[0] = h1r - imagOut[0];
}

void PowerSpectrum(int numSamples, const float* in, float* out) {
    const int half = numSamples / 2;
    requirePowerOfTwo(half);
    const Temporaries bins(half);
    RealFFT(numSamples, in, bins.real.get(), bins.imag.get());
    // The first bin and the last stand packed as one value, whose square is the sum of both powers.
    fft::squareMagnitudes(half, bins.real.get(), bins.imag.get(), out);
}

int NumWindowFuncs() {
    return 4;
}

void WindowFunc(int whichFunction, int numSamples, float* data) {
    if (whichFunction >= 1 && whichFunction < NumWindowFuncs()) {
        fft::multiply(numSamples, fft::windowFactors(whichFunction, numSamples).data(), data);
    }
}
