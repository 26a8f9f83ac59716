#pragma once

#include <array>
#include <optional>
#include <string>

/// What the fields of ABC notation say, each by its text behind the colon. None for text that says nothing
/// that can be understood.

/// Semitones of the notes C D E F G A B by the key's signature: K:D gives 1 for F and C.
using AbcSignature = std::array<int, 7>;
std::optional<AbcSignature> abcSignature(const std::string& text);

/// The index of a note's letter in `AbcSignature`, "CDEFGAB"; either case. -1 for any other letter.
int abcStep(char letter);

struct AbcMetre {
    double quarters = 0.0;      ///< to the bar; 0 for none
    double beatQuarters = 1.0;  ///< to a beat
    bool isCompound = false;    ///< three eighth notes to a beat, as in 6/8
};
std::optional<AbcMetre> abcMetre(const std::string& text);

/// "1/8" in quarter notes: 0.5.
std::optional<double> abcFraction(const std::string& text);

/// Q: as quarter notes a minute; `unitQuarters` is the note length of L:, which old files count in.
std::optional<double> abcTempo(const std::string& text, double unitQuarters);

/// The value of a word such as `name="Second flute"` or `octave=-1` in a field; empty when it is not there.
std::string abcValue(const std::string& text, const std::string& name);

/// Whether a word of K: is about the clef and not the key: `bass`, `clef=alto`, `octave=-1`.
bool abcIsClef(const std::string& word);

/// By how many octaves a voice sounds away from its notes: `octave=-1`, `clef=treble-8`.
int abcOctaves(const std::string& text);

/// The order of the parts of P:, "A(AB)2" as "AABAB". None also for an order of more than ten thousand.
std::optional<std::string> abcParts(const std::string& text);
