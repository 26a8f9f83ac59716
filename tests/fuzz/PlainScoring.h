#pragma once

#include <vector>

#include "analysis/NoteState.h"
#include "game/Song.h"

/// The rules of scoring written down step by step, without a thought for speed or for who else needs what:
/// the oracle that Song::updateScore is compared with.
struct PlainScoring {
    std::vector<std::vector<Song::NoteMark>> slots;
    float score = 0.0f;

    /// One step at song time `t`.
    void update(double t, NoteState const& state);
    bool complete(double t) const;
};
