#include "analysis/FFTFactors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "analysis/FFT.h"

namespace fft {

namespace {

constexpr double pi = 3.14159265358979323846;
/// One more than the bits of the largest power of two that an int holds.
constexpr std::size_t powersOfTwo = 31;

StageFactors computeStage(int blockEnd, bool inverse) {
    const double angleNumerator = inverse ? -2.0 * pi : 2.0 * pi;
    const double deltaAngle = angleNumerator / (2.0 * blockEnd);
    const double w = 2.0 * std::cos(-deltaAngle);
    double ar2 = std::cos(-2.0 * deltaAngle);
    double ar1 = std::cos(-deltaAngle);
    double ai2 = std::sin(-2.0 * deltaAngle);
    double ai1 = std::sin(-deltaAngle);
    StageFactors factors;
    for (int n = 0; n < blockEnd; ++n) {
        const double ar0 = w * ar1 - ar2;
        ar2 = ar1;
        ar1 = ar0;
        const double ai0 = w * ai1 - ai2;
        ai2 = ai1;
        ai1 = ai0;
        factors.real.push_back(ar0);
        factors.imag.push_back(ai0);
    }
    return factors;
}

PairFactors computePairs(int half) {
    const auto theta = static_cast<float>(pi / half);
    const auto wtemp = static_cast<float>(std::sin(0.5 * theta));
    const auto wpr = static_cast<float>(-2.0 * wtemp * wtemp);
    const auto wpi = static_cast<float>(std::sin(double{theta}));
    auto wr = static_cast<float>(1.0 + wpr);
    float wi = wpi;
    PairFactors factors;
    for (int i = 1; i < half / 2; ++i) {
        factors.real.push_back(wr);
        factors.imag.push_back(wi);
        const float oldWr = wr;
        wr = oldWr * wpr - wi * wpi + oldWr;
        wi = wi * wpr + oldWr * wpi + wi;
    }
    return factors;
}

double windowFactor(int window, int i, int count) {
    if (window == 1) {
        const int half = count / 2;
        const auto ratio = [half](int step) { return static_cast<float>(step) / static_cast<float>(half); };
        // An odd count has a last sample that belongs to neither half.
        return i < half ? ratio(i) : (i < 2 * half ? 1.0 - ratio(i - half) : 1.0);
    }
    const double cosine = std::cos(2.0 * pi * i / (count - 1));
    return window == 2 ? 0.54 - 0.46 * cosine : 0.50 - 0.50 * cosine;
}

}  // namespace

const StageFactors& stageFactors(int blockEnd, bool inverse) {
    static std::array<std::array<StageFactors, powersOfTwo>, 2> stages;
    StageFactors& stage =
        stages[inverse ? 1 : 0][static_cast<std::size_t>(NumberOfBitsNeeded(2 * blockEnd) - 1)];
    if (stage.real.empty()) {
        stage = computeStage(blockEnd, inverse);
    }
    return stage;
}

const PairFactors& pairFactors(int half) {
    static std::array<PairFactors, powersOfTwo> sizes;
    PairFactors& factors = sizes[static_cast<std::size_t>(NumberOfBitsNeeded(half))];
    if (factors.real.empty()) {
        factors = computePairs(half);
    }
    return factors;
}

const std::vector<double>& windowFactors(int window, int count) {
    static std::array<std::vector<double>, 3> windows;
    std::vector<double>& factors = windows[static_cast<std::size_t>(window - 1)];
    const auto size = static_cast<std::size_t>(std::max(count, 0));
    // One length for each window: a game has only one.
    if (factors.size() != size) {
        factors.clear();
        for (int i = 0; i < count; ++i) {
            factors.push_back(windowFactor(window, i, count));
        }
    }
    return factors;
}

}  // namespace fft
