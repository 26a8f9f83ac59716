#pragma once

#include <optional>
#include <string>
#include <vector>

/// An instrument whose player reads other notes than those that sound.
struct Transposition {
    std::string instrument;
    int semitones;  ///< from the written note to the sounding one
};

/// All that are known, in alphabetical order.
const std::vector<Transposition>& transpositions();

/// The semitones of the instrument of that name.
std::optional<int> transpositionOf(const std::string& instrument);

/// The MIDI number of a pitch in scientific notation: a letter, # or b if it is altered, and an octave from 0
/// to 9, such as C4 (60), F#3 or Bb5. None for anything else.
std::optional<int> parsePitch(const std::string& text);
