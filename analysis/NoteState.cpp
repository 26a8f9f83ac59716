#include "analysis/NoteState.h"

#include <iterator>
#include <set>

void NoteState::notesDown(const std::vector<Notes::NoteID>& notes, float dtSeconds) {
    const std::set<Notes::NoteID> heard(notes.begin(), notes.end());
    for (auto entry = downTimes.begin(); entry != downTimes.end();) {
        entry = heard.count(entry->first) != 0 ? std::next(entry) : downTimes.erase(entry);
    }
    for (const Notes::NoteID& note : notes) {
        downTimes[note] += dtSeconds;
    }
}

bool NoteState::isDown(const Notes::NoteID& note) const {
    return downTimes.count(note) != 0;
}

float NoteState::downCount(const Notes::NoteID& note) const {
    const auto entry = downTimes.find(note);
    return entry == downTimes.end() ? 0.0f : entry->second;
}
