#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "tools/zanto-song/Take.h"

/// Why a take earned and cost what it did.

/// What was heard in one slot of the song.
struct SlotHearing {
    double loudestDb = -std::numeric_limits<double>::infinity();
    std::array<int, Notes::noteCount> framesDown{};  ///< by note
};

/// The last slot in which the game judges `note`, in a song of `slotCount` slots.
std::size_t lastJudgedSlot(const TakenNote& note, std::size_t slotCount);

/// Fills in what else was heard while `note` was judged, and its outcome unless it was awarded. `heard` is by
/// slot, for all of the song.
void explain(TakenNote& note, const std::vector<SlotHearing>& heard, const Take& take);

/// Finds the slot that a wrong note was meant for: the last one in whose time it began, or the next one.
/// `notes` is by slot, for all of the song; the wrong note is heard since `heardSeconds`.
void explain(TakenPenalty& penalty, const std::vector<std::vector<TakenNote>>& notes, double heardSeconds);
