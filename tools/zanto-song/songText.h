#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/Notes.h"

class Song;

/// How many slots a song has up to the end of its last note. A line feed at the end of a file makes one more.
std::size_t slotsWithNotes(const Song& song);

/// The longest note that the game can judge, in slots.
constexpr int longestLength = 5;

/// A note of a song that is being written.
struct WrittenNote {
    Notes::NoteID note;
    int length;  ///< slots, 1 to `longestLength`
};

/// The notes that begin in each slot.
using WrittenSlots = std::vector<std::vector<WrittenNote>>;

/// Makes the slots end with the last note that sounds.
void endWithLastNote(WrittenSlots& slots);

/// The song file's contents. If the last slot is a note's beginning, an empty one follows it.
std::string songText(const WrittenSlots& slots);
