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

/// The recordings of the whole orchestra, read once and replayed with any note table.
class Archive {
public:
    /// Throws std::runtime_error if one is missing.
    Archive(const std::string& recordingsFolder, const std::vector<ShippedSong>& songs);

    std::vector<Heard> takes(Listener& listener, const std::function<bool(const Take&)>& which) const;
    std::vector<Played> pieces(Listener& listener, const std::vector<double>& aheadSeconds,
                               const std::function<bool(const Piece&)>& which) const;
    std::vector<FalseNotes> quietRooms(Listener& listener) const;

    /// Calls `each` for every dry take of a single natural, from C3 up, that an instrument of the given half
    /// plays.
    void forEachPlainTake(bool tunedOn, const std::function<void(const Take&, const Recording&)>& each) const;

private:
    const std::vector<ShippedSong>& songs;
    std::vector<std::vector<Recording>> takeRecordings;   ///< by place
    std::vector<std::vector<Recording>> pieceRecordings;  ///< by place
    std::vector<Recording> quietRecordings;
};

struct Ear {
    std::string name;  ///< as in the figures
    Listener listener;
};

/// The game's plain one, with a note table, its fine one, and the peer.
std::vector<Ear> allEars(const std::string& tableText);

/// What some performances earned, against what they could.
struct SongMean {
    std::size_t performances = 0;
    double awards = 0.0;          ///< share of the notes, 0 to 1
    double penaltiesPer39 = 0.0;  ///< for every 39 changes of note; a song of n notes has n - 1
    double penalties = 0.0;       ///< for each performance
    double score = 0.0;           ///< share of the best possible, 0 to 1
};

SongMean songMeanOf(const std::vector<Played>& all, const std::vector<ShippedSong>& songs, std::size_t timing,
                    const std::function<bool(const Played&)>& which);

/// Whether no two notes of the song begin together.
bool isMelody(const ShippedSong& song);

/// The part of the orchestra that a player belongs to: "tuned" or "other", "voice", "sung"
/// or "second", the other soundfont.
const char* partOf(std::size_t place);

/// The plain ear's note table begins there.
constexpr int lowestTableOctave = 3;
