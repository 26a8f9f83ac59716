#pragma once

#include <vector>

/// The factors of the transforms and windows in FFT.h. Each set is computed when it is first needed and kept;
/// main thread only. A set depends only on the arguments here, so keeping it changes no bit of any result.
namespace fft {

/// The twiddle factors of one stage of the complex transform.
struct StageFactors {
    std::vector<double> real;  ///< [blockEnd]
    std::vector<double> imag;  ///< [blockEnd]
};

/// The stage that joins blocks of `blockEnd` points, a power of two from 1 on, into blocks of twice as many.
/// Factor n is exp(+i pi n / blockEnd), conjugate if `inverse`, as a three-term recurrence in double gives
/// it: each from the two before, with four sines and cosines to begin with.
const StageFactors& stageFactors(int blockEnd, bool inverse);

/// The factors that take a transform of `half` pairs of samples apart into the bins of the single samples.
struct PairFactors {
    std::vector<float> real;  ///< [max(half / 2 - 1, 0)]
    std::vector<float> imag;  ///< as many
};

/// Factor n is exp(+i pi (n + 1) / half), as a recurrence in float gives it. `half` is a power of two from 2
/// on.
const PairFactors& pairFactors(int half);

/// What window 1, 2 or 3 multiplies each of `count` samples by.
const std::vector<double>& windowFactors(int window, int count);

}  // namespace fft
