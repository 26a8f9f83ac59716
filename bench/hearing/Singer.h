#pragma once

#include <vector>

#include "bench/hearing/Synth.h"

/// A human voice, recorded and stretched to each note by the speech synthesiser festival: "la", "leh", "lee",
/// "law" or "loo" for the vowel 'a', 'e', 'i', 'o' or 'u', mono at 48000 Hz, without vibrato. Of `touch` only
/// the velocity counts. From C2 to B4 the pitch is the one that is asked for, within 20 cents; above 500 Hz
/// festival fails.
///
/// Throws std::runtime_error unless festival and its voice kal_diphone sing every note.
std::vector<float> singWords(char vowel, const std::vector<NoteEvent>& notes, const Touch& touch,
                             double seconds);
