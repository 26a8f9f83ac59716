#pragma once

/// Spectra of float signals whose length is a power of two, and the windows to look at them through.
///
/// Shapes stand in brackets: in[n] is n floats. Outputs never overlap inputs. Transforms share one lazily
/// built set of tables without a guard, so they are called from the main thread only. A size that is no power
/// of two, or below 2, is fatal: one line on standard error and exit status 1.
///
///     WindowFunc(2, 4096, frame);              // Hamming, in place
///     PowerSpectrum(4096, frame, spectrum);    // spectrum[2048], bin k at k * sampleRate / 4096

/// True for 2, 4, 8, ...; false for 1, 0, negatives and everything between.
bool IsPowerOfTwo(int x);

/// log2 of a power of two; the index of the lowest set bit of any other number from 2. Below 2 is fatal.
int NumberOfBitsNeeded(int powerOfTwo);

/// The lowest `numBits` bits of `index` in reverse order.
int ReverseBits(int index, int numBits);

/// ReverseBits for `numBits` from 1 on; up to 16 by the tables that InitFFT builds.
int FastReverseBits(int index, int numBits);

/// Builds the bit-reversal tables for 1 to 16 bits, once for the process. Every transform calls it.
void InitFFT();

/// Complex transform: realIn[n], imagIn[n] to realOut[n], imagOut[n], n = numSamples, a null `imagIn` being
/// zeros. Forward, bin k in natural order is the sum over j of in[j] * exp(+2 pi i j k / n), not scaled: the
/// conjugate of what the other sign gives for a real signal, and of the same magnitude. Inverse turns the
/// other way and divides by n, so that one undoes the other. Twiddle factors come from a three-term
/// recurrence and butterflies are computed in double; what they store is rounded to float.
void FFT(int numSamples, bool inverseTransform, const float* realIn, const float* imagIn, float* realOut,
         float* imagOut);

/// Transform of a real signal: realIn[n] to realOut[n/2], imagOut[n/2], n = numSamples, from 4 on. Bins 0 < k
/// < n/2 as FFT gives them, not scaled; realOut[0] is bin 0 and imagOut[0] bin n/2, which both are real.
void RealFFT(int numSamples, const float* realIn, float* realOut, float* imagOut);

/// Squared magnitudes of a real signal's transform, not scaled: in[n] to out[n/2], n = numSamples, from 4 on.
/// out[0] is the sum of the powers of bins 0 and n/2.
void PowerSpectrum(int numSamples, const float* in, float* out);

/// How many windows there are, the rectangular one included: 4.
int NumWindowFuncs();

/// Multiplies data[n], n = numSamples, by a window: 0 rectangular (nothing changes), 1 triangular, 2 Hamming,
/// 3 Hann, any other nothing. Window 1 rises from 0 at data[0] to 1 at data[n/2] and falls to 2/n at the end;
/// 2 and 3 are symmetric over the whole of 0 to n-1.
void WindowFunc(int whichFunction, int numSamples, float* data);
