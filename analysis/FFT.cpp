#include "analysis/FFT.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr int largestTableBits = 16;

std::array<int*, largestTableBits> bitReversalTables;

void requirePowerOfTwo(int size) {
    if (!IsPowerOfTwo(size)) {
        std::fprintf(stderr, "%d is not a power of two\n", size);
        std::exit(1);
    }
}

std::unique_ptr<float[]> temporary(int size) {
    return std::unique_ptr<float[]>(new float[static_cast<std::size_t>(size)]);
}

/// Transforms the even samples as real parts and the odd ones as imaginary parts: realIn[2 * half] to
/// realOut[half], imagOut[half].
void transformPairs(int half, float const* realIn, float* realOut, float* imagOut) {
    requirePowerOfTwo(half);
    std::unique_ptr<float[]> const real = temporary(half);
    std::unique_ptr<float[]> const imag = temporary(half);
    for (int i = 0; i < half; ++i) {
        real[i] = realIn[2 * i];
        imag[i] = realIn[2 * i + 1];
    }
    FFT(half, false, real.get(), imag.get(), realOut, imagOut);
}

/// Takes a transform of pairs apart into the bins of the real signal, without bins 0 and half / 2. Calls
/// take(i, real, imag) with one bin after the other, i and then half - i.
template <typename Take>
void separatePairs(int half, float const* real, float const* imag, Take take) {
    auto const theta = static_cast<float>(pi / half);
    auto const wtemp = static_cast<float>(std::sin(0.5 * theta));
    float const wpr = -2.0f * wtemp * wtemp;
    auto const wpi = static_cast<float>(std::sin(double{theta}));
    float wr = 1.0f + wpr;
    float wi = wpi;
    for (int i = 1; i < half / 2; ++i) {
        int const i3 = half - i;
        float const h1r = 0.5f * (real[i] + real[i3]);
        float const h1i = 0.5f * (imag[i] - imag[i3]);
        float const h2r = 0.5f * (imag[i] + imag[i3]);
        float const h2i = -0.5f * (real[i] - real[i3]);
        take(i, h1r + wr * h2r - wi * h2i, h1i + wr * h2i + wi * h2r);
        take(i3, h1r - wr * h2r + wi * h2i, -h1i + wr * h2i + wi * h2r);
        float const oldWr = wr;
        wr = oldWr * wpr - wi * wpi + oldWr;
        wi = wi * wpr + oldWr * wpi + wi;
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
    return numBits <= largestTableBits ? bitReversalTables[static_cast<std::size_t>(numBits - 1)][index]
                                       : ReverseBits(index, numBits);
}

void InitFFT() {
    for (int bits = 1; bits <= largestTableBits; ++bits) {
        int const entries = 1 << bits;
        int* const table = new int[static_cast<std::size_t>(entries)];
        for (int i = 0; i < entries; ++i) {
            table[i] = ReverseBits(i, bits);
        }
        bitReversalTables[static_cast<std::size_t>(bits - 1)] = table;
    }
}

void FFT(int numSamples, bool inverseTransform, float const* realIn, float const* imagIn, float* realOut,
         float* imagOut) {
    requirePowerOfTwo(numSamples);
    if (bitReversalTables[0] == nullptr) {
        InitFFT();
    }
    int const numBits = NumberOfBitsNeeded(numSamples);
    for (int i = 0; i < numSamples; ++i) {
        int const j = FastReverseBits(i, numBits);
        realOut[j] = realIn[i];
        imagOut[j] = imagIn == nullptr ? 0.0f : imagIn[i];
    }

    double const angleNumerator = inverseTransform ? -2.0 * pi : 2.0 * pi;
    for (int blockEnd = 1; blockEnd < numSamples; blockEnd *= 2) {
        int const blockSize = 2 * blockEnd;
        double const deltaAngle = angleNumerator / blockSize;
        double const sm2 = std::sin(-2.0 * deltaAngle);
        double const sm1 = std::sin(-deltaAngle);
        double const cm2 = std::cos(-2.0 * deltaAngle);
        double const cm1 = std::cos(-deltaAngle);
        double const w = 2.0 * cm1;
        for (int i = 0; i < numSamples; i += blockSize) {
            double ar2 = cm2;
            double ar1 = cm1;
            double ai2 = sm2;
            double ai1 = sm1;
            for (int j = i; j < i + blockEnd; ++j) {
                int const k = j + blockEnd;
                double const ar0 = w * ar1 - ar2;
                ar2 = ar1;
                ar1 = ar0;
                double const ai0 = w * ai1 - ai2;
                ai2 = ai1;
                ai1 = ai0;
                double const tr = ar0 * realOut[k] - ai0 * imagOut[k];
                double const ti = ar0 * imagOut[k] + ai0 * realOut[k];
                realOut[k] = static_cast<float>(realOut[j] - tr);
                imagOut[k] = static_cast<float>(imagOut[j] - ti);
                realOut[j] = static_cast<float>(realOut[j] + tr);
                imagOut[j] = static_cast<float>(imagOut[j] + ti);
            }
        }
    }

    if (inverseTransform) {
        auto const scale = static_cast<float>(numSamples);
        for (int i = 0; i < numSamples; ++i) {
            realOut[i] /= scale;
            imagOut[i] /= scale;
        }
    }
}

void RealFFT(int numSamples, float const* realIn, float* realOut, float* imagOut) {
    int const half = numSamples / 2;
    transformPairs(half, realIn, realOut, imagOut);
    separatePairs(half, realOut, imagOut, [realOut, imagOut](int bin, float real, float imag) {
        realOut[bin] = real;
        imagOut[bin] = imag;
    });
    float const h1r = realOut[0];
    realOut[0] = h1r + imagOut[0];
    imagOut[0] = h1r - imagOut[0];
}

void PowerSpectrum(int numSamples, float const* in, float* out) {
    int const half = numSamples / 2;
    requirePowerOfTwo(half);
    std::unique_ptr<float[]> const real = temporary(half);
    std::unique_ptr<float[]> const imag = temporary(half);
    transformPairs(half, in, real.get(), imag.get());
    separatePairs(half, real.get(), imag.get(),
                  [out](int bin, float rt, float it) { out[bin] = rt * rt + it * it; });
    float const sum = real[0] + imag[0];
    float const difference = real[0] - imag[0];
    out[0] = sum * sum + difference * difference;
    out[half / 2] = real[half / 2] * real[half / 2] + imag[half / 2] * imag[half / 2];
}

int NumWindowFuncs() {
    return 4;
}

void WindowFunc(int whichFunction, int numSamples, float* data) {
    auto const multiply = [data](int i, double factor) { data[i] = static_cast<float>(data[i] * factor); };
    int const half = numSamples / 2;
    switch (whichFunction) {
        case 1:
            for (int i = 0; i < half; ++i) {
                float const ratio = static_cast<float>(i) / static_cast<float>(half);
                multiply(i, ratio);
                multiply(half + i, 1.0 - ratio);
            }
            break;
        case 2:
            for (int i = 0; i < numSamples; ++i) {
                multiply(i, 0.54 - 0.46 * std::cos(2.0 * pi * i / (numSamples - 1)));
            }
            break;
        case 3:
            for (int i = 0; i < numSamples; ++i) {
                multiply(i, 0.50 - 0.50 * std::cos(2.0 * pi * i / (numSamples - 1)));
            }
            break;
        default:
            break;
    }
}
