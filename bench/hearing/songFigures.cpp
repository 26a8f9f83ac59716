// Figures of songs: what a faithful player earns.

#include <cstddef>

#include "bench/hearing/Csv.h"
#include "bench/hearing/figures.h"

namespace {

/// By how much the player is ahead of the beat, in seconds. songs.csv has the first two.
const std::vector<double> timings = {0.08, 0.0, 0.16, 0.12, 0.04, -0.05, -0.1, -0.15, -0.25};
constexpr std::size_t timingsOfEverySong = 2;

bool isDetached(const Played& played) {
    return played.piece.gapSeconds > 0.0;
}

void writeSongs(const std::string& ear, const std::vector<Played>& all, const std::vector<ShippedSong>& songs,
                Csv& csv) {
    for (const Played& played : all) {
        const ShippedSong& song = songs[played.piece.song];
        const char* half = played.place >= instrumentCount() ? "voice"
                           : isTunedOn(played.place)         ? "tuned"
                                                             : "other";
        for (std::size_t timing = 0; timing < timingsOfEverySong && !isDetached(played); ++timing) {
            const Outcome& outcome = played.outcomes[timing];
            csv.row(ear, song.title, isMelody(song), song.notes, song.bestScore,
                    orchestra()[played.place].name, half, played.piece.octave, timings[timing],
                    outcome.awards, outcome.penalties, outcome.score);
        }
    }
}

void writeTiming(const std::string& ear, const std::vector<Played>& all,
                 const std::vector<ShippedSong>& songs, Csv& csv) {
    for (const int octave : {3, 4, 5}) {
        for (const bool detached : {false, true}) {
            for (std::size_t timing = 0; timing < timings.size(); ++timing) {
                const SongMean mean = songMeanOf(all, songs, timing, [&](const Played& played) {
                    const bool isPlayedBothWays = played.piece.song % detachedSongStep == 0;
                    return played.place < instrumentCount() && isPlayedBothWays &&
                           isDetached(played) == detached && played.piece.octave == octave;
                });
                csv.row(ear, octave, detached, timings[timing], mean.performances, mean.awards,
                        mean.penaltiesPer39, mean.score);
            }
        }
    }
}

}  // namespace

void writeSongFigures(const Archive& archive, const std::string& shippedTable,
                      const std::vector<ShippedSong>& songs, const std::string& folder) {
    Csv every(folder + "/songs.csv",
              "ear,song,melody,notes,best_score,player,half,octave,ahead_s,awards,penalties,score");
    Csv byTiming(folder + "/timing.csv",
                 "ear,octave,detached,ahead_s,performances,awards,penalties_per_39,score");
    for (GameEar& ear : gameEars(shippedTable)) {
        const std::vector<Played> all = archive.pieces(ear.listener, timings, true);
        writeSongs(ear.name, all, songs, every);
        writeTiming(ear.name, all, songs, byTiming);
    }
    every.close();
    byTiming.close();
}
