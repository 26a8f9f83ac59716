#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "tools/zanto-song/SheetMusic.h"

/// "pitch@start+length" of each note, in hundredths of a quarter note.
inline std::vector<std::string> notesOf(const SheetVoice& voice) {
    std::vector<std::string> notes;
    for (const SheetNote& note : voice.notes) {
        notes.push_back(std::to_string(note.pitch) + "@" + std::to_string(std::lround(note.start * 100)) +
                        "+" + std::to_string(std::lround(note.length * 100)));
    }
    return notes;
}
