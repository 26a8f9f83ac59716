#pragma once

/// The loops in which a transform spends its time, written so that a compiler can use vectors: no turn reads
/// what another one writes, and no two arrays of a call overlap. Vectors change only the order of the turns,
/// so every result has the same bits as without them.
namespace fft {

/// Some complex values as two arrays, real[count] and imag[count].
struct Complexes {
    float* real;
    float* imag;

    Complexes from(int first) const { return {real + first, imag + first}; }
};

/// `count` butterflies: with t = factor * high, high = low - t and low = low + t. In double, stored as float.
/// Each has its own factor.
void butterflies(int count, const double* factorReal, const double* factorImag, Complexes low,
                 Complexes high);

/// The same with one factor for all.
void butterflies(int count, double factorReal, double factorImag, Complexes low, Complexes high);

/// Takes `count` pairs of bins of a transform of sample pairs apart, in place, in float. Low bins count up
/// and high bins count down from where `highReal` and `highImag` point: low[i] and high[-i] belong together.
void separatePairs(int count, const float* factorReal, const float* factorImag, float* lowReal,
                   float* lowImag, float* highReal, float* highImag);

/// data[i] times factors[i], in double, stored as float.
void multiply(int count, const double* factors, float* data);

/// Deals samples[2 * count] out: the even ones to real[count], the odd ones to imag[count].
void dealPairs(int count, const float* samples, float* real, float* imag);

/// power[i] = real[i]^2 + imag[i]^2, in float.
void squareMagnitudes(int count, const float* real, const float* imag, float* power);

/// The sum of values[count], in double and in no particular order: exact if no partial sum needs more than 53
/// bits, which is for the caller to know.
double sum(int count, const float* values);

}  // namespace fft
