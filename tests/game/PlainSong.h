#pragma once

#include <iosfwd>
#include <vector>

#include "game/Song.h"

/// What loading and drawing a song come to, written down step by step without a thought for speed: the oracle
/// that Song is compared with. It walks every slot in every frame and makes a stream for every line.
struct PlainSong {
    std::vector<std::vector<Song::NoteMark>> slots;

    /// Reads a song; what it has to report goes to `report`.
    bool load(std::istream& in, std::ostream& report);

    /// Draws the track and fades what was hit. There are no floating numbers.
    void draw(double t);

    /// Takes over which marks were hit or added by scoring, but not how bright they are.
    void follow(std::vector<std::vector<Song::NoteMark>> const& scored);
};
