#pragma once

#include <map>
#include <vector>

#include "analysis/Notes.h"

/// Which notes are sounding now, and for how long each has been held without a break.
///
/// Fed by its owner NoteEstimation once per update, read by scoring and drawing on the same thread:
///
///     state.notesDown({0, 4}, 0.02f);               // C and G sound
///     if (state.isDown(0)) held = state.downCount(0);   // 0.02 s: a new note counts from its first step
class NoteState {
public:
    /// Takes the notes heard in this step of `dtSeconds`. Every note that is not in `notes` is released and
    /// its time forgotten; each one in it gains `dtSeconds`, twice if it is listed twice.
    void notesDown(const std::vector<Notes::NoteID>& notes, float dtSeconds);

    bool isDown(const Notes::NoteID& note) const;

    /// The seconds for which `note` has been held, 0 when it is not down.
    float downCount(const Notes::NoteID& note) const;

private:
    /// Seconds held, by note. A note is down exactly when it has an entry.
    std::map<Notes::NoteID, float> downTimes;
};
