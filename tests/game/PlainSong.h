#pragma once

#include <iosfwd>
#include <vector>

#include "game/Song.h"

/// What loading, scoring and drawing a song come to, written down step by step without a thought for speed:
/// the oracle that Song is compared with. It walks every slot in every frame and makes a stream for every
/// line.
struct PlainSong {
    std::vector<std::vector<Song::NoteMark>> slots;
    float score = 0.0f;

    /// Reads a song; what it has to report goes to `report`.
    bool load(std::istream& in, std::ostream& report);

    /// Draws the track and fades what was hit. There are no floating numbers.
    void draw(double t);

    /// Judges the notes held at song time `t`.
    void updateScore(double t, const NoteState& state);

    bool complete(double t) const;
};
