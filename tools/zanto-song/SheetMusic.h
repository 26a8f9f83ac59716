#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

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
};

/// What a file of sheet music or a MIDI file says, as far as a song can use it.
struct SheetMusic {
    std::vector<SheetVoice> voices;    ///< those with notes
    double quartersPerMinute = 120.0;  ///< as first said; 120 is what MIDI takes when nothing is said
    bool lengthsAreExact = true;       ///< false for what may have been recorded from a player
    std::vector<std::string> lost;     ///< what there was beyond these, one line each
    std::vector<std::string> remarks;  ///< what the program that read the file had to say
};

/// What is more than this is refused, so that a damaged file takes neither hours nor all memory.
constexpr double mostQuarters = 100000.0;       ///< the length of the music: 14 hours at 120 a minute
constexpr std::size_t mostSheetNotes = 200000;  ///< repeats written out

/// The readers. A file that cannot be read for certain throws a Failure with the reason, without its name.

/// A MIDI file of format 0, 1 or 2, given by its contents.
SheetMusic readMidi(const std::string& contents);

/// A tune in ABC notation, read by the program abc2midi. `tune` is the X: number of the one to take from a
/// file of several.
SheetMusic readAbc(const std::string& path, std::optional<int> tune);

/// MusicXML, uncompressed, in parts ("score-partwise"), given by its contents. Repeats and their endings are
/// written out.
SheetMusic readMusicXml(const std::string& contents);
