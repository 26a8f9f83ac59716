#include "tools/zanto-song/TakeCauses.h"

#include <algorithm>

#include "game/Rules.h"

namespace {

constexpr double hearingDelaySeconds = 0.1;  // by which the analysis trails the sound

}  // namespace

std::size_t lastJudgedSlot(const TakenNote& note, std::size_t slotCount) {
    const auto more = static_cast<std::size_t>(std::clamp(note.length - 1, 0, rules::lookBackSlots));
    return std::min(note.slot + more, slotCount - 1);
}

void explain(TakenNote& note, const std::vector<SlotHearing>& heard, const Take& take) {
    std::array<int, Notes::noteCount> framesDown{};
    note.loudestDb = -std::numeric_limits<double>::infinity();
    for (std::size_t slot = note.slot; slot <= lastJudgedSlot(note, heard.size()); ++slot) {
        note.loudestDb = std::max(note.loudestDb, heard[slot].loudestDb);
        for (std::size_t other = 0; other < framesDown.size(); ++other) {
            framesDown.at(other) += heard[slot].framesDown.at(other);
        }
    }
    for (int other = 0; other < Notes::noteCount; ++other) {
        if (other != note.note && framesDown.at(static_cast<std::size_t>(other)) > 0) {
            note.others.emplace_back(other);
        }
    }
    std::stable_sort(
        note.others.begin(), note.others.end(), [&](const Notes::NoteID& a, const Notes::NoteID& b) {
            return framesDown.at(static_cast<std::size_t>(a)) > framesDown.at(static_cast<std::size_t>(b));
        });
    if (note.outcome == TakenNote::Outcome::awarded) {
        return;
    }
    if (note.heardSeconds) {
        note.outcome = TakenNote::Outcome::tooShort;
    } else if (!note.others.empty()) {
        note.outcome = TakenNote::Outcome::otherNotes;
    } else if (note.dueSeconds >= take.recordedSeconds) {
        note.outcome = TakenNote::Outcome::recordingOver;
    } else if (note.loudestDb > take.minDecibel) {
        note.outcome = TakenNote::Outcome::noNote;
    } else {
        note.outcome = TakenNote::Outcome::tooSoft;
    }
}

void explain(TakenPenalty& penalty, const std::vector<std::vector<TakenNote>>& notes, double heardSeconds) {
    const auto isIt = [&](const TakenNote& note) { return note.note == penalty.note; };
    const double began = heardSeconds - hearingDelaySeconds;
    for (std::size_t slot = penalty.slot; slot-- > 0;) {
        const auto note = std::find_if(notes[slot].begin(), notes[slot].end(), isIt);
        if (note != notes[slot].end()) {
            const double ended = note->dueSeconds + note->length * rules::secondsPerSlot;
            if (began < ended) {
                penalty.cause = TakenPenalty::Cause::heldOver;
                penalty.causeSlot = slot;
                return;
            }
            break;
        }
    }
    const std::size_t next = penalty.slot + 1;
    const bool isNext = next < notes.size() && std::any_of(notes[next].begin(), notes[next].end(), isIt);
    penalty.cause = isNext ? TakenPenalty::Cause::early : TakenPenalty::Cause::notAskedFor;
    penalty.causeSlot = next;
}
