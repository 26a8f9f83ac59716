#pragma once

#include <cmath>
#include <vector>

/// The transforms and windows written down step by step with nothing in between: no table, nothing kept from
/// one call to the next, one statement for one value. What the fast ones give must be the same to the last
/// bit, for every input that meets no infinity.
namespace plain {

constexpr double pi = 3.14159265358979323846;

inline int reversed(int index, int bits) {
    int result = 0;
    for (int bit = 0; bit < bits; ++bit) {
        if ((index & (1 << bit)) != 0) {
            result |= 1 << (bits - 1 - bit);
        }
    }
    return result;
}

/// realIn[n], imagIn[n] to realOut[n], imagOut[n]; n is a power of two from 2 on.
inline void FFT(int n, bool inverse, const float* realIn, const float* imagIn, float* realOut,
                float* imagOut) {
    int bits = 0;
    while (1 << bits < n) {
        ++bits;
    }
    for (int i = 0; i < n; ++i) {
        realOut[reversed(i, bits)] = realIn[i];
        imagOut[reversed(i, bits)] = imagIn == nullptr ? 0.0f : imagIn[i];
    }
    const double angleNumerator = inverse ? -2.0 * pi : 2.0 * pi;
    for (int blockSize = 2; blockSize <= n; blockSize *= 2) {
        const int blockEnd = blockSize / 2;
        const double deltaAngle = angleNumerator / blockSize;
        const double w = 2.0 * std::cos(-deltaAngle);
        for (int i = 0; i < n; i += blockSize) {
            double ar2 = std::cos(-2.0 * deltaAngle);
            double ar1 = std::cos(-deltaAngle);
            double ai2 = std::sin(-2.0 * deltaAngle);
            double ai1 = std::sin(-deltaAngle);
            for (int step = 0; step < blockEnd; ++step) {
                const int j = i + step;
                const int k = j + blockEnd;
                const double ar0 = w * ar1 - ar2;
                ar2 = ar1;
                ar1 = ar0;
                const double ai0 = w * ai1 - ai2;
                ai2 = ai1;
                ai1 = ai0;
                const double tr = ar0 * realOut[k] - ai0 * imagOut[k];
                const double ti = ar0 * imagOut[k] + ai0 * realOut[k];
                realOut[k] = static_cast<float>(realOut[j] - tr);
                imagOut[k] = static_cast<float>(imagOut[j] - ti);
                realOut[j] = static_cast<float>(realOut[j] + tr);
                imagOut[j] = static_cast<float>(imagOut[j] + ti);
            }
        }
    }
    if (inverse) {
        for (int i = 0; i < n; ++i) {
            realOut[i] = realOut[i] / static_cast<float>(n);
            imagOut[i] = imagOut[i] / static_cast<float>(n);
        }
    }
}

/// realIn[n] to realOut[n / 2], imagOut[n / 2].
inline void RealFFT(int n, const float* realIn, float* realOut, float* imagOut) {
    const int half = n / 2;
    const auto theta = static_cast<float>(pi / half);
    std::vector<float> even;
    std::vector<float> odd;
    for (int i = 0; i < half; ++i) {
        even.push_back(realIn[2 * i]);
        odd.push_back(realIn[2 * i + 1]);
    }
    FFT(half, false, even.data(), odd.data(), realOut, imagOut);
    const auto wtemp = static_cast<float>(std::sin(0.5 * theta));
    const auto wpr = static_cast<float>(-2.0 * wtemp * wtemp);
    const auto wpi = static_cast<float>(std::sin(static_cast<double>(theta)));
    auto wr = static_cast<float>(1.0 + wpr);
    float wi = wpi;
    for (int i = 1; i <= half / 2 - 1; ++i) {
        const int i3 = half - i;
        const auto h1r = static_cast<float>(0.5 * (realOut[i] + realOut[i3]));
        const auto h1i = static_cast<float>(0.5 * (imagOut[i] - imagOut[i3]));
        const auto h2r = static_cast<float>(0.5 * (imagOut[i] + imagOut[i3]));
        const auto h2i = static_cast<float>(-0.5 * (realOut[i] - realOut[i3]));
        realOut[i] = h1r + wr * h2r - wi * h2i;
        imagOut[i] = h1i + wr * h2i + wi * h2r;
        realOut[i3] = h1r - wr * h2r + wi * h2i;
        imagOut[i3] = -h1i + wr * h2i + wi * h2r;
        const float oldWr = wr;
        wr = wr * wpr - wi * wpi + wr;
        wi = wi * wpr + oldWr * wpi + wi;
    }
    const float h1r = realOut[0];
    realOut[0] = h1r + imagOut[0];
    imagOut[0] = h1r - imagOut[0];
}

/// in[n] to out[n / 2]. Each bin is the square of what RealFFT gives for it.
inline void PowerSpectrum(int n, const float* in, float* out) {
    const int half = n / 2;
    std::vector<float> real(static_cast<std::size_t>(half));
    std::vector<float> imag(real.size());
    RealFFT(n, in, real.data(), imag.data());
    for (int i = 0; i < half; ++i) {
        const auto bin = static_cast<std::size_t>(i);
        out[i] = real[bin] * real[bin] + imag[bin] * imag[bin];
    }
}

/// Multiplies data[n] by window 1, 2 or 3.
inline void WindowFunc(int which, int n, float* data) {
    for (int i = 0; i < n; ++i) {
        const double cosine = std::cos(2.0 * pi * i / (n - 1));
        double factor = 1.0;
        if (which == 1 && i < n / 2) {
            factor = static_cast<float>(i) / static_cast<float>(n / 2);
        } else if (which == 1 && i < n / 2 * 2) {
            factor = 1.0 - static_cast<float>(i - n / 2) / static_cast<float>(n / 2);
        } else if (which == 2) {
            factor = 0.54 - 0.46 * cosine;
        } else if (which == 3) {
            factor = 0.50 - 0.50 * cosine;
        }
        data[i] = static_cast<float>(data[i] * factor);
    }
}

}  // namespace plain
