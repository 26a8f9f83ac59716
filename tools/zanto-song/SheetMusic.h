#pragma once

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

/// The three readers: none when the file cannot be read for certain, with the reason in `problem`.

/// A MIDI file, read by the program mftext of the package abcmidi.
std::optional<SheetMusic> readMidi(std::string const& path, std::string& problem);

/// A tune in ABC notation, read by abc2midi of the same package. `tune` is the X: number of the one to take
/// from a file of several.
std::optional<SheetMusic> readAbc(std::string const& path, std::optional<int> tune, std::string& problem);

/// MusicXML, uncompressed, in parts ("score-partwise"). Repeats and their endings are written out.
std::optional<SheetMusic> readMusicXml(std::string const& path, std::string& problem);
