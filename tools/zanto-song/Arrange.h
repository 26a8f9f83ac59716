#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/zanto-song/SheetMusic.h"
#include "tools/zanto-song/songText.h"

/// How a voice is to become a song; what is not said is chosen.
struct ArrangeWishes {
    std::optional<double> slotQuarters;  ///< quarter notes to a slot
    std::optional<int> semitones;        ///< by which to transpose
};

/// A voice as a song: naturals only, in slots.
struct Arrangement {
    double slotQuarters = 1.0;
    int semitones = 0;
    std::size_t kept = 0;           ///< notes of the voice that are in the slots
    WrittenSlots slots;             ///< up to the end of the last note
    std::vector<std::string> lost;  ///< what of the voice is not, one line each
};

/// Puts a voice into slots and into a key where its notes are naturals. The slot is the note value that all
/// notes are multiples of and that lasts closest to half a second in the music's tempo. Nothing is made up: a
/// note without a place is left out and named. Throws a Failure when no slot fits, when fewer than half of
/// the notes find a place, or when the song would last for more than `mostSlots`.
Arrangement arrange(const SheetVoice& voice, const SheetMusic& sheet, const ArrangeWishes& wishes);
