// Figures of songs: what a faithful player earns.

#include <cstddef>
#include <string>

#include "bench/hearing/Csv.h"
#include "bench/hearing/figures.h"

namespace {

/// By how much the player is ahead of the beat, in seconds.
const std::vector<double> timings = {0.08, 0.0, 0.16, 0.12, 0.04, -0.05, -0.1, -0.15, -0.25};
constexpr std::size_t aheadTiming = 0;
constexpr std::size_t beatTiming = 1;

bool isDetached(const Played& played) {
    return played.piece.gapSeconds > 0.0;
}

/// 0.08 s ahead and detached, or on the beat and legato.
std::size_t mannerTiming(const Played& played) {
    return isDetached(played) ? aheadTiming : beatTiming;
}

void writePerformances(const std::string& ear, const std::vector<Played>& all,
                       const std::vector<ShippedSong>& songs, Csv& csv) {
    for (const Played& played : all) {
        const ShippedSong& song = songs[played.piece.song];
        const SongMean earned =
            songMeanOf({played}, songs, mannerTiming(played), [](const Played&) { return true; });
        csv.row(ear, song.title, isMelody(song), orchestra()[played.place].name, partOf(played.place),
                played.piece.octave, isDetached(played) ? "ahead" : "beat",
                played.piece.touch.room ? "room" : "dry", earned.awards, earned.penaltiesPer39, earned.score);
    }
}

void writeTiming(const std::string& ear, const std::vector<Played>& all,
                 const std::vector<ShippedSong>& songs, Csv& csv) {
    for (const int octave : {2, 3, 4, 5}) {
        for (const bool detached : {false, true}) {
            for (std::size_t timing = 0; timing < timings.size(); ++timing) {
                const SongMean mean = songMeanOf(all, songs, timing, [&](const Played& played) {
                    return played.place < instrumentCount() && isDetached(played) == detached &&
                           played.piece.octave == octave;
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
    Csv performances(folder + "/songs.csv",
                     "ear,song,melody,player,half,octave,manner,room,awards,penalties_per_39,score");
    Csv byTiming(folder + "/timing.csv",
                 "ear,octave,detached,ahead_s,performances,awards,penalties_per_39,score");
    for (Ear& ear : allEars(shippedTable)) {
        const std::vector<Played> all =
            archive.pieces(ear.listener, timings, [](const Piece&) { return true; });
        writePerformances(ear.name, all, songs, performances);
        writeTiming(ear.name, all, songs, byTiming);
    }
    performances.close();
    byTiming.close();
}
