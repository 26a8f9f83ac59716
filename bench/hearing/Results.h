#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "bench/hearing/Judge.h"
#include "bench/hearing/SongRun.h"

/// One performance and what it earned, for each of the timings.
struct Played {
    std::size_t place;  ///< in the orchestra
    Piece piece;
    std::vector<Outcome> outcomes;
};

/// The recordings of the whole orchestra, read once and replayed with as many note tables as one likes.
class Archive {
public:
    /// Throws std::runtime_error if one is missing.
    Archive(std::string const& recordingsFolder, std::vector<ShippedSong> const& songs);

    std::vector<Heard> takes(Listener& listener, std::function<bool(Take const&)> const& which) const;
    std::vector<Played> pieces(Listener& listener, std::vector<double> const& aheadSeconds,
                               bool withDetached) const;
    std::vector<FalseNotes> quietRooms(Listener& listener) const;

    /// Calls `each` for every dry take of a single natural that an instrument of the given half plays.
    void forEachPlainTake(bool tunedOn, std::function<void(Take const&, Recording const&)> const& each) const;

private:
    std::vector<ShippedSong> const& songs;
    std::vector<std::vector<Recording>> takeRecordings;   ///< by place
    std::vector<std::vector<Recording>> pieceRecordings;  ///< by place
    std::vector<Recording> quietRecordings;
};

/// What some performances earned, against what they could.
struct SongMean {
    std::size_t performances = 0;
    double awards = 0.0;          ///< share of the notes, 0 to 1
    double penaltiesPer39 = 0.0;  ///< for every 39 note changes, a song of n notes having n - 1
    double penalties = 0.0;       ///< for each performance
    double score = 0.0;           ///< share of the best possible, 0 to 1
};

SongMean songMeanOf(std::vector<Played> const& all, std::vector<ShippedSong> const& songs, std::size_t timing,
                    std::function<bool(Played const&)> const& which);

/// Whether no two notes of the song begin together.
bool isMelody(ShippedSong const& song);
