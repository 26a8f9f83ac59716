#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/zanto-song/SheetMusic.h"
#include "tools/zanto-song/songText.h"

/// How to turn a voice into a song. Empty fields are chosen automatically.
struct ArrangeWishes {
    std::optional<double> slotQuarters;  ///< quarter notes to a slot
    std::optional<int> semitones;        ///< by which to transpose
    bool mayRound = false;               ///< whether a few notes may be moved so that slots fit the others
};

/// Something that could not be kept.
struct Loss {
    std::string text;  ///< with its place
    std::string kind;  ///< the same words for all of its kind
};

/// A voice as a song: naturals only, in slots.
struct Arrangement {
    double slotQuarters = 1.0;
    int semitones = 0;
    std::size_t kept = 0;    ///< notes of the voice that are in the slots
    WrittenSlots slots;      ///< up to the end of the last note
    std::vector<Loss> lost;  ///< what of the voice is not
};

/// Puts a voice into slots and into a key where its notes are naturals. The slot is that of `fittingSlot`, or
/// of `roundingSlot` if notes may be moved. Nothing is made up: a note without a place is left out and named,
/// and so is one that was moved. Throws a Failure when no slot fits, when fewer than half of the notes find a
/// place, or when the song would last for more than `mostSlots`.
Arrangement arrange(const SheetVoice& voice, const SheetMusic& sheet, const ArrangeWishes& wishes);
