// Figures of other note tables, and how good any table could be.

#include <functional>

#include "bench/hearing/Csv.h"
#include "bench/hearing/Tables.h"
#include "bench/hearing/figures.h"

namespace {

constexpr double aheadSeconds = 0.08;
/// How many right frames a wrong one costs in the search.
constexpr double trainedWrongWeight = 0.5;
constexpr int topOctave = 5;

bool isPlainTake(const Take& take) {
    return take.trial == Trial::plain && !take.touch.room &&
           octaveOf(take.pitches.front()) >= lowestTableOctave;
}

bool isPlainPiece(const Piece& piece) {
    return piece.gapSeconds <= 0.0 && piece.octave >= lowestTableOctave;
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

void writeCandidates(const Archive& archive, const std::vector<Candidate>& candidates,
                     const std::vector<ShippedSong>& songs, const std::string& folder) {
    Csv csv(folder + "/tables.csv",
            "table,half,right,wrong,top_right,top_wrong,sharps_wrong,awards,penalties_per_39,score");
    for (const Candidate& candidate : candidates) {
        Listener listener(candidate.text);
        const std::vector<Heard> heard = archive.takes(listener, isPlainTake);
        const std::vector<Played> played = archive.pieces(listener, {aheadSeconds}, isPlainPiece);
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

}  // namespace

void writeTableFigures(const Archive& archive, const std::string& shippedTable,
                       const std::vector<ShippedSong>& songs, const std::string& folder) {
    const BinMap shipped = binMapOf(shippedTable);
    BinMapSearch tunedHalf;
    archive.forEachPlainTake(
        true, [&](const Take& take, const Recording& recording) { tunedHalf.add(take, recording); });
    std::vector<Candidate> candidates = ruledCandidates();
    candidates.push_back({"trained", tableText(tunedHalf.best(shipped, trainedWrongWeight))});
    candidates.push_back({"shipped", shippedTable});
    writeCandidates(archive, candidates, songs, folder);
}
