// Figures of songs: what a faithful player earns.

#include <cstddef>
#include <map>
#include <string>
#include <tuple>

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

/// The two manners that songs.csv and players.csv tell of: ahead of the beat and detached, and on the beat
/// and legato.
std::size_t mannerTiming(const Played& played) {
    return isDetached(played) ? aheadTiming : beatTiming;
}

/// A row for each value of `key`, which gives a tuple of the row's first columns behind the ear.
template <typename Key>
void writeMeans(const std::string& ear, const std::vector<Played>& all, const std::vector<ShippedSong>& songs,
                const Key& key, Csv& csv) {
    std::map<decltype(key(all.front())), std::vector<Played>> groups;
    for (const Played& played : all) {
        groups[key(played)].push_back(played);
    }
    for (const auto& [columns, group] : groups) {
        const SongMean mean =
            songMeanOf(group, songs, mannerTiming(group.front()), [](const Played&) { return true; });
        std::apply(
            [&, &played = group.front()](const auto&... column) {
                csv.row(ear, column..., partOf(played.place), played.piece.octave,
                        isDetached(played) ? "ahead" : "beat", mean.performances, mean.awards,
                        mean.penaltiesPer39, mean.score);
            },
            std::get<0>(columns));
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
    const std::string means = ",half,octave,manner,performances,awards,penalties_per_39,score";
    Csv bySong(folder + "/songs.csv", "ear,song,melody" + means);
    Csv byPlayer(folder + "/players.csv", "ear,player" + means);
    Csv byTiming(folder + "/timing.csv",
                 "ear,octave,detached,ahead_s,performances,awards,penalties_per_39,score");
    for (Ear& ear : allEars(shippedTable)) {
        const std::vector<Played> all =
            archive.pieces(ear.listener, timings, [](const Piece&) { return true; });
        const auto rest = [](const Played& played) {
            return std::make_tuple(std::string(partOf(played.place)), played.piece.octave,
                                   isDetached(played));
        };
        writeMeans(
            ear.name, all, songs,
            [&](const Played& played) {
                const ShippedSong& song = songs[played.piece.song];
                return std::make_tuple(std::make_tuple(song.title, isMelody(song)), rest(played));
            },
            bySong);
        writeMeans(
            ear.name, all, songs,
            [&](const Played& played) {
                return std::make_tuple(std::make_tuple(orchestra()[played.place].name), rest(played));
            },
            byPlayer);
        writeTiming(ear.name, all, songs, byTiming);
    }
    bySong.close();
    byPlayer.close();
    byTiming.close();
}
