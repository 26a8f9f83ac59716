// What the page says about the note tables that were tried, and how good any table could be.

#include <cstddef>
#include <cstdio>
#include <functional>
#include <utility>

#include "bench/hearing/Page.h"
#include "bench/hearing/Tables.h"

namespace {

using Rows = std::vector<std::vector<std::string>>;

constexpr double aheadSeconds = 0.08;
constexpr double searchedWrongWeights[] = {0.1, 0.3, 0.5, 1.0, 2.0, 5.0};
constexpr double trainedWrongWeight = 0.5;
constexpr int topOctave = 5;

bool isReference(Heard const& heard) {
    return heard.place < instrumentCount() && isDry(heard) && isNatural(heard);
}

Which referenceOf(bool tunedOn, int octave) {
    return [=](Heard const& heard) {
        return isReference(heard) && isTunedOn(heard.place) == tunedOn &&
               (octave == 0 || octaveOf(heard.take.pitches.front()) == octave);
    };
}

std::string decimals(double value, char const* format) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string songCell(SongMean const& mean) {
    return percent(mean.awards) + " / " + decimals(mean.penaltiesPer39, "%.1f") + " / " + percent(mean.score);
}

bool isPlainTake(Take const& take) {
    return take.trial == Trial::plain && !take.touch.room;
}

std::vector<std::string> candidateRow(Archive const& archive, Candidate const& candidate,
                                      std::vector<ShippedSong> const& songs) {
    Listener listener(candidate.text);
    std::vector<Heard> const heard = archive.takes(listener, isPlainTake);
    std::vector<Played> const played = archive.pieces(listener, {aheadSeconds}, false);
    std::vector<std::string> row = {candidate.what};
    for (bool const tunedOn : {true, false}) {
        row.push_back(rightWrong(meanOf(heard, referenceOf(tunedOn, 0))));
        row.push_back(rightWrong(meanOf(heard, referenceOf(tunedOn, topOctave))));
    }
    row.push_back(percent(meanOf(heard, [](Heard const& one) {
                              return one.place < instrumentCount() && !isNatural(one);
                          }).hearing.wrong));
    for (bool const tunedOn : {true, false}) {
        row.push_back(songCell(songMeanOf(played, songs, 0, [tunedOn](Played const& one) {
            return one.place < instrumentCount() && isTunedOn(one.place) == tunedOn;
        })));
    }
    return row;
}

BinMapSearch searchOver(Archive const& archive, bool tunedOn, int octave) {
    BinMapSearch search;
    archive.forEachPlainTake(tunedOn, [&](Take const& take, Recording const& recording) {
        if (octave == 0 || octaveOf(take.pitches.front()) == octave) {
            search.add(take, recording);
        }
    });
    return search;
}

/// The best maps for exactly the notes they are judged on, from "right at any price" to "nothing wrong".
std::string bestMaps(Archive const& archive, BinMap const& shipped, bool tunedOn) {
    Rows rows;
    for (double const weight : searchedWrongWeights) {
        std::vector<std::string> row = {decimals(weight, "%.1f")};
        for (int const octave : {0, topOctave}) {
            Listener listener(tableText(searchOver(archive, tunedOn, octave).best(shipped, weight)));
            row.push_back(
                rightWrong(meanOf(archive.takes(listener, isPlainTake), referenceOf(tunedOn, octave))));
        }
        rows.push_back(row);
    }
    return markdownTable({"a wrong frame costs as much as so many right ones give", "C3 to B5", "C5 to B5"},
                         rows);
}

/// A table, and what the top octave of the songs earned with it.
struct Trained {
    std::string name;
    std::vector<Played> played;
};

/// The shipped table and the best maps for the notes of the top octave, all instruments together.
std::vector<Trained> trainedForTheTop(Archive const& archive, std::string const& shippedTable) {
    BinMapSearch search;
    for (bool const tunedOn : {true, false}) {
        archive.forEachPlainTake(tunedOn, [&](Take const& take, Recording const& recording) {
            if (octaveOf(take.pitches.front()) == topOctave) {
                search.add(take, recording);
            }
        });
    }
    std::vector<Trained> tables;
    auto const add = [&](std::string const& name, std::string const& text) {
        Listener listener(text);
        tables.push_back({name, archive.pieces(listener, {aheadSeconds}, false)});
    };
    add("the shipped table", shippedTable);
    for (double const weight : searchedWrongWeights) {
        add("best map, wrong frames at " + decimals(weight, "%.1f"),
            tableText(search.best(binMapOf(shippedTable), weight)));
    }
    return tables;
}

SongMean topOctaveMean(Trained const& table, std::vector<ShippedSong> const& songs, bool withOrgan,
                       std::function<bool(std::size_t song)> const& counts) {
    return songMeanOf(table.played, songs, 0, [&](Played const& one) {
        return one.place < instrumentCount() && one.piece.octave == topOctave && counts(one.piece.song) &&
               (withOrgan || orchestra()[one.place].name != "church organ");
    });
}

std::string bestMapsInSongs(std::vector<Trained> const& tables, std::vector<ShippedSong> const& songs) {
    Rows rows;
    for (Trained const& table : tables) {
        std::vector<std::string> row = {table.name};
        for (bool const withOrgan : {true, false}) {
            row.push_back(songCell(topOctaveMean(table, songs, withOrgan,
                                                 [&](std::size_t song) { return isMelody(songs[song]); })));
        }
        rows.push_back(row);
    }
    return markdownTable({"", "all instruments", "all but the church organ"}, rows);
}

/// Awards and penalties of every melody with every table; bold where both are what we set out to reach.
std::string bestMapsInEachSong(std::vector<Trained> const& tables, std::vector<ShippedSong> const& songs) {
    constexpr double awardsToReach = 0.95;
    constexpr double penaltiesToReach = 2.0;
    auto const cell = [&](Trained const& table, std::size_t which, bool withOrgan) {
        SongMean const mean =
            topOctaveMean(table, songs, withOrgan, [which](std::size_t song) { return song == which; });
        std::string const text = percent(mean.awards) + " / " + decimals(mean.penaltiesPer39, "%.1f");
        bool const reached = mean.awards >= awardsToReach && mean.penaltiesPer39 <= penaltiesToReach;
        return reached ? "**" + text + "**" : text;
    };
    Rows rows;
    for (std::size_t song = 0; song < songs.size(); ++song) {
        if (isMelody(songs[song])) {
            std::vector<std::string> row = {songs[song].title, cell(tables.front(), song, false)};
            for (Trained const& table : tables) {
                row.push_back(cell(table, song, true));
            }
            rows.push_back(row);
        }
    }
    std::vector<std::string> heads = {"melody", "shipped, without the organ", "shipped"};
    for (double const weight : searchedWrongWeights) {
        heads.push_back("best at " + decimals(weight, "%.1f"));
    }
    return markdownTable(heads, rows);
}

}  // namespace

void addTableFigures(Archive const& archive, std::string const& shippedTable,
                     std::vector<ShippedSong> const& songs, Figures& figures) {
    BinMap const shipped = binMapOf(shippedTable);
    std::vector<Candidate> candidates = ruledCandidates();
    candidates.push_back({"trained", "the best map found for the tuned half, wrong frames weighing 0.5",
                          tableText(searchOver(archive, true, 0).best(shipped, trainedWrongWeight))});
    candidates.push_back({"shipped", "**the table that comes with the game**", shippedTable});

    Rows rows;
    for (Candidate const& candidate : candidates) {
        rows.push_back(candidateRow(archive, candidate, songs));
    }
    figures["tables candidates"] = markdownTable(
        {"table", "tuned half, C3 to B5", "tuned half, C5 to B5", "other half, C3 to B5",
         "other half, C5 to B5", "sharps heard as naturals", "songs, tuned half", "songs, other half"},
        rows);
    std::vector<Trained> const tables = trainedForTheTop(archive, shippedTable);
    figures["tables best songs"] = bestMapsInSongs(tables, songs);
    figures["tables best each song"] = bestMapsInEachSong(tables, songs);
    figures["tables best other half"] = bestMaps(archive, shipped, false);
    figures["tables best tuned half"] = bestMaps(archive, shipped, true);
}
