#include "tools/zanto-song/Melody.h"

#include <algorithm>

namespace {

constexpr double together = 0.05;  // quarter notes: a chord as it is played

// Whether `note` begins below `sounding`. Notes of one voice overlap a little where they are played without
// a gap.
bool isBelow(const SheetNote& note, const SheetNote& sounding) {
    const double overlap = sounding.start + sounding.length - note.start;
    return note.pitch < sounding.pitch && overlap > together && overlap > note.length / 2.0;
}

}  // namespace

SheetVoice melodyOf(const SheetVoice& voice) {
    SheetVoice melody{voice.name, {}, voice.instrument};
    std::vector<SheetNote>& notes = melody.notes;
    for (const SheetNote& note : voice.notes) {
        if (!notes.empty() && note.start - notes.back().start <= together) {
            if (note.pitch > notes.back().pitch) {
                notes.back() = note;
            }
        } else if (notes.empty() || !isBelow(note, notes.back())) {
            if (!notes.empty()) {
                notes.back().length = std::min(notes.back().length, note.start - notes.back().start);
            }
            notes.push_back(note);
        }
    }
    return melody;
}
