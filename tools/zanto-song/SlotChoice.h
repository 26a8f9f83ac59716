#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/zanto-song/SheetMusic.h"

/// A slot that was chosen for a voice.
struct SlotChoice {
    double quarters;      ///< quarter notes to a slot
    std::size_t misfits;  ///< notes that do not begin, or where lengths are exact not end, on a slot
};

/// Whether a time in quarter notes is that of a slot's beginning. Players and programs begin notes a little
/// beside the beat.
bool fitsSlots(double quarters, double slotQuarters);

/// The number of the slot's beginning that is nearest to a time.
double nearestSlot(double quarters, double slotQuarters);

/// The slot that all notes fit and that lasts closest to half a second in the music's tempo. None when they
/// fit none.
std::optional<SlotChoice> fittingSlot(const SheetVoice& voice, const SheetMusic& sheet);

/// The slot for a voice of which a few notes, at most a quarter, may be moved: a sixth of the notes weighs as
/// much as a tempo that is doubled or halved. None when there is no such slot.
std::optional<SlotChoice> roundingSlot(const SheetVoice& voice, const SheetMusic& sheet);

/// The fewest notes that stand in the way of any slot.
std::size_t fewestMisfits(const SheetVoice& voice, const SheetMusic& sheet);

/// A note value as "1/8" or "3/8", and back from any such name with numbers up to 64.
std::string slotName(double quarters);
std::optional<double> slotOfName(const std::string& name);

/// The slot in which each note of a voice begins; none for a note that finds none of its own. Notes that fit
/// have theirs. Another one goes to the nearest slot in which nothing begins, of the two beside it.
std::vector<std::optional<double>> slotsOfNotes(const SheetVoice& voice, double slotQuarters);
