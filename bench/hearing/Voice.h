#pragma once

#include <vector>

#include "bench/hearing/Synth.h"

/// A sung vowel, 'a' "ah", 'e' "eh", 'i' "ee", 'o' "oh" or 'u' "oo", mono at 48000 Hz: harmonics that fall by
/// 12 dB an octave, through the vowel's three formants, with the vibrato of a singer. `touch.room` is not
/// looked at.
std::vector<float> sing(char vowel, const std::vector<NoteEvent>& notes, const Touch& touch, double seconds);

/// `seconds` of white noise with a root mean square of 1, always the same.
std::vector<float> whiteNoise(double seconds);

/// `seconds` of mains hum with a root mean square of 1: 50 Hz and its first eleven harmonics, each weaker
/// than the one below.
std::vector<float> mainsHum(double seconds);

/// Root mean square of a whole sound.
double rootMeanSquare(const std::vector<float>& sound);

/// Adds `addition` times `factor` to `sound`, as far as both go.
void mix(std::vector<float>& sound, const std::vector<float>& addition, double factor);
