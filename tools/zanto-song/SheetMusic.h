#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/common/Command.h"

/// One note as a file of sheet music has it. Times in quarter notes from the beginning.
struct SheetNote {
    double start;
    double length;
    int pitch;          ///< semitones, 60 is the C in the middle of a piano
    std::string place;  ///< where it stands, for people: "bar 3, beat 2"
};

/// The notes of one voice, by start.
struct SheetVoice {
    std::string name;
    std::vector<SheetNote> notes;
    std::string instrument{};  ///< empty when nothing is said
};

/// What a file of sheet music or a MIDI file says, as far as a song can use it.
struct SheetMusic {
    std::vector<SheetVoice> voices;    ///< those with notes
    double quartersPerMinute = 120.0;  ///< as first said; 120 is what MIDI takes when nothing is said
    bool lengthsAreExact = true;       ///< false for what may have been recorded from a player
    std::vector<std::string> lost;     ///< what there was beyond these, one line each
    std::vector<std::string> remarks;  ///< what the reader wondered about, one line each
};

/// What is more than this is refused, so that a damaged file takes neither hours nor all memory.
constexpr double mostQuarters = 100000.0;       ///< the length of the music: 14 hours at 120 a minute
constexpr std::size_t mostSheetNotes = 200000;  ///< repeats written out

/// The Failure for what is.
Failure tooLong();

/// Puts notes in order: by start, those that begin together from the lowest to the highest.
void sortNotes(std::vector<SheetNote>& notes);

/// A pitch as "F#4"; 60 is C4.
std::string pitchName(int pitch);

/// The instrument of a program number of General MIDI, from 0.
std::string midiInstrument(int program);

/// The readers take a file's contents. A file that cannot be read for certain throws a Failure with the
/// reason, without its name.

/// A MIDI file of format 0, 1 or 2.
SheetMusic readMidi(const std::string& contents);

/// A tune in ABC notation, version 2.1 and older habits. `tune` is the X: number of the one to take
/// from a file of several, "4", or "4.2" for the second one of that number; empty when nothing was asked for.
SheetMusic readAbc(const std::string& contents, const std::string& tune);

/// MusicXML in parts ("score-partwise"), at sounding pitch. Repeats, endings and jumps are written out.
SheetMusic readMusicXml(const std::string& contents);

/// MusicXML in a zip archive (.mxl).
SheetMusic readCompressedMusicXml(const std::string& contents);
