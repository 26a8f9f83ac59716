#include "analysis/NoteState.h"

#include <iterator>
#include <set>

void NoteState::notesDown(std::vector<Notes::NoteID> const& notes, float dtSeconds) {
    std::set<Notes::NoteID> const heard(notes.begin(), notes.end());
    for (auto entry = downTimes.begin(); entry != downTimes.end();) {
        entry = heard.count(entry->first) != 0 ? std::next(entry) : downTimes.erase(entry);
    }
    for (Notes::NoteID const& note : notes) {
        downTimes[note] += dtSeconds;
    }
}

bool NoteState::isDown(Notes::NoteID const& note) const {
    return downTimes.count(note) != 0;
}

float NoteState::downCount(Notes::NoteID const& note) const {
    auto const entry = downTimes.find(note);
    return entry == downTimes.end() ? 0.0f : entry->second;
}
