#pragma once

/// The loops in which a transform spends its time, written so that a compiler can do several turns of each at
/// once: no turn reads what another one writes, and no two arrays of a call overlap. Vectors change the order
/// of the turns only, so every result has the bits that one turn after the other gives.
namespace fft {

/// Some complex values as two arrays, real[count] and imag[count].
struct Complexes {
    float* real;
    float* imag;

    Complexes from(int first) const { return {real + first, imag + first}; }
};

/// `count` butterflies: with t = factor * high, high = low - t and low = low + t. In double, stored as float.
/// Each has its own factor.
void butterflies(int count, double const* factorReal, double const* factorImag, Complexes low,
                 Complexes high);

/// The same with one factor for all.
void butterflies(int count, double factorReal, double factorImag, Complexes low, Complexes high);

/// Takes `count` pairs of bins of a transform of sample pairs apart, in place, in float. `low` counts up and
/// `high`, which points at its last value, counts down: low[i] and high[-i] belong together.
void separatePairs(int count, float const* factorReal, float const* factorImag, Complexes low,
                   Complexes high);

/// data[i] times factors[i], in double, stored as float.
void multiply(int count, double const* factors, float* data);

/// Deals samples[2 * count] out to the real parts, which get the even ones, and the imaginary parts.
void dealPairs(int count, float const* samples, Complexes pairs);

/// power[i] = real^2 + imag^2 of values[i], in float.
void squareMagnitudes(int count, Complexes values, float* power);

/// The sum of values[count], in double and in no particular order: exact if no partial sum needs more than 53
/// bits, which is for the caller to know.
double sum(int count, float const* values);

}  // namespace fft
