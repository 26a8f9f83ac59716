// Figures of other note tables, and how good any table could be.

#include <functional>

#include "bench/hearing/Csv.h"
#include "bench/hearing/Tables.h"
#include "bench/hearing/figures.h"

namespace {

constexpr double aheadSeconds = 0.08;
/// How many right frames a wrong one costs in a search.
constexpr double wrongWeights[] = {0.1, 0.3, 0.5, 1.0, 2.0, 5.0};
constexpr double trainedWrongWeight = 0.5;
constexpr int topOctave = 5;

bool isPlainTake(const Take& take) {
    return take.trial == Trial::plain && !take.touch.room;
}

/// Naturals of a half of the instruments; of all octaves if `octave` is 0.
Which naturalsOf(bool tunedOn, int octave) {
    return [=](const Heard& heard) {
        return heard.place < instrumentCount() && isNatural(heard) && isTunedOn(heard.place) == tunedOn &&
               (octave == 0 || octaveOf(heard.take.pitches.front()) == octave);
    };
}

const char* nameOfHalf(bool tunedOn) {
    return tunedOn ? "tuned" : "other";
}

void addTo(BinMapSearch& search, const Archive& archive, bool tunedOn, int octave) {
    archive.forEachPlainTake(tunedOn, [&](const Take& take, const Recording& recording) {
        if (octave == 0 || octaveOf(take.pitches.front()) == octave) {
            search.add(take, recording);
        }
    });
}

void writeCandidates(const Archive& archive, const std::vector<Candidate>& candidates,
                     const std::vector<ShippedSong>& songs, const std::string& folder) {
    Csv csv(folder + "/tables.csv",
            "table,half,right,wrong,top_right,top_wrong,sharps_wrong,awards,penalties_per_39,score");
    for (const Candidate& candidate : candidates) {
        Listener listener(candidate.text);
        const std::vector<Heard> heard = archive.takes(listener, isPlainTake);
        const std::vector<Played> played = archive.pieces(listener, {aheadSeconds}, false);
        const Hearing sharps = meanOf(heard, [](const Heard& one) {
                                   return one.place < instrumentCount() && !isNatural(one);
                               }).hearing;
        for (const bool tunedOn : {true, false}) {
            const Hearing all = meanOf(heard, naturalsOf(tunedOn, 0)).hearing;
            const Hearing top = meanOf(heard, naturalsOf(tunedOn, topOctave)).hearing;
            const SongMean earned = songMeanOf(played, songs, 0, [tunedOn](const Played& one) {
                return one.place < instrumentCount() && isTunedOn(one.place) == tunedOn;
            });
            csv.row(candidate.name, nameOfHalf(tunedOn), all.right, all.wrong, top.right, top.wrong,
                    sharps.wrong, earned.awards, earned.penaltiesPer39, earned.score);
        }
    }
    csv.close();
}

void writeBestMaps(const Archive& archive, const BinMap& shipped, const std::string& folder) {
    Csv csv(folder + "/best-maps.csv", "half,octave,wrong_weight,right,wrong");
    for (const bool tunedOn : {true, false}) {
        for (const int octave : {0, topOctave}) {
            BinMapSearch search;
            addTo(search, archive, tunedOn, octave);
            for (const double weight : wrongWeights) {
                Listener listener(tableText(search.best(shipped, weight)));
                const Hearing mean =
                    meanOf(archive.takes(listener, isPlainTake), naturalsOf(tunedOn, octave)).hearing;
                csv.row(nameOfHalf(tunedOn), octave == 0 ? "all" : "5", weight, mean.right, mean.wrong);
            }
        }
    }
    csv.close();
}

void writeBestMapsInSongs(const Archive& archive, const std::string& shippedTable,
                          const std::vector<ShippedSong>& songs, const std::string& folder) {
    BinMapSearch search;
    for (const bool tunedOn : {true, false}) {
        addTo(search, archive, tunedOn, topOctave);
    }
    Csv csv(folder + "/best-maps-songs.csv", "wrong_weight,song,organ,awards,penalties_per_39,score");
    const auto write = [&](const auto& weight, const std::string& table) {
        Listener listener(table);
        const std::vector<Played> played = archive.pieces(listener, {aheadSeconds}, false);
        for (std::size_t song = 0; song < songs.size(); ++song) {
            for (const bool withOrgan : {true, false}) {
                const SongMean mean = songMeanOf(played, songs, 0, [&](const Played& one) {
                    return one.place < instrumentCount() && one.piece.octave == topOctave &&
                           one.piece.song == song &&
                           (withOrgan || orchestra()[one.place].name != "church organ");
                });
                if (isMelody(songs[song])) {
                    csv.row(weight, songs[song].title, withOrgan, mean.awards, mean.penaltiesPer39,
                            mean.score);
                }
            }
        }
    };
    write("shipped", shippedTable);
    for (const double weight : wrongWeights) {
        write(weight, tableText(search.best(binMapOf(shippedTable), weight)));
    }
    csv.close();
}

}  // namespace

void writeTableFigures(const Archive& archive, const std::string& shippedTable,
                       const std::vector<ShippedSong>& songs, const std::string& folder) {
    const BinMap shipped = binMapOf(shippedTable);
    BinMapSearch tunedHalf;
    addTo(tunedHalf, archive, true, 0);
    std::vector<Candidate> candidates = ruledCandidates();
    candidates.push_back({"trained", tableText(tunedHalf.best(shipped, trainedWrongWeight))});
    candidates.push_back({"shipped", shippedTable});
    writeCandidates(archive, candidates, songs, folder);
    writeBestMaps(archive, shipped, folder);
    writeBestMapsInSongs(archive, shippedTable, songs, folder);
}
