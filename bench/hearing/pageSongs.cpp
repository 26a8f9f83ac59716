// What the page says about the songs: what a faithful player earns.

#include <cstddef>
#include <cstdio>

#include "bench/hearing/Page.h"

namespace {

using Rows = std::vector<std::vector<std::string>>;
using WhichPlayed = std::function<bool(Played const&)>;

/// By how much the player is ahead of the beat. The first two are those of the songs' own tables.
std::vector<double> const timings = {0.08, 0.0, 0.16, 0.12, 0.04, -0.05, -0.1, -0.15, -0.25};
constexpr std::size_t ahead = 0;
constexpr std::size_t onTheBeat = 1;

std::string oneDecimal(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value);
    return text;
}

std::string earned(SongMean const& mean) {
    return mean.performances == 0
               ? "-"
               : percent(mean.awards) + " / " + oneDecimal(mean.penalties) + " / " + percent(mean.score);
}

std::string earnedPer39(SongMean const& mean) {
    return mean.performances == 0
               ? "-"
               : percent(mean.awards) + " / " + oneDecimal(mean.penaltiesPer39) + " / " + percent(mean.score);
}

bool isDetached(Played const& played) {
    return played.piece.gapSeconds > 0.0;
}

WhichPlayed full(int octave) {
    return [octave](Played const& played) {
        return played.place < instrumentCount() && !isDetached(played) && played.piece.octave == octave;
    };
}

std::string songTable(std::vector<Played> const& all, std::vector<ShippedSong> const& songs,
                      std::size_t timing) {
    Rows rows;
    for (std::size_t song = 0; song < songs.size(); ++song) {
        std::vector<std::string> row = {songs[song].title, std::to_string(songs[song].notes),
                                        std::to_string(static_cast<int>(songs[song].bestScore))};
        for (int const octave : {3, 4, 5}) {
            SongMean const mean = songMeanOf(all, songs, timing, [&](Played const& played) {
                return full(octave)(played) && played.piece.song == song;
            });
            row.push_back(earnedPer39(mean));
        }
        rows.push_back(row);
    }
    return markdownTable({"song", "notes", "best score", "C3 to B3", "C4 to B4", "C5 to B5"}, rows);
}

std::string playerTable(std::vector<Played> const& all, std::vector<ShippedSong> const& songs) {
    Rows rows;
    for (std::size_t place = 0; place < orchestra().size(); ++place) {
        std::vector<std::string> row = {orchestra()[place].name + (isTunedOn(place) ? " *" : "")};
        std::size_t performances = 0;
        for (int const octave : {3, 4, 5}) {
            SongMean const mean = songMeanOf(all, songs, ahead, [&](Played const& played) {
                return played.place == place && played.piece.octave == octave && !isDetached(played) &&
                       isMelody(songs[played.piece.song]);
            });
            performances += mean.performances;
            row.push_back(earnedPer39(mean));
        }
        if (performances > 0) {
            rows.push_back(row);
        }
    }
    return markdownTable({"player", "C3 to B3", "C4 to B4", "C5 to B5"}, rows);
}

std::string timingTable(std::vector<Played> const& all, std::vector<ShippedSong> const& songs) {
    Rows rows;
    for (std::size_t const timing : {2u, 3u, 0u, 4u, 1u, 5u, 6u, 7u, 8u}) {
        double const seconds = timings[timing];
        char name[32];
        std::snprintf(name, sizeof name, seconds > 0.0 ? "%.2f s ahead" : "%.2f s behind",
                      seconds > 0.0 ? seconds : -seconds);
        std::vector<std::string> row = {timing == onTheBeat ? "on the beat" : name};
        for (bool const detached : {false, true}) {
            for (int const octave : {4, 5}) {
                row.push_back(earnedPer39(songMeanOf(all, songs, timing, [&](Played const& played) {
                    // The same songs both ways.
                    bool const isBoth = played.piece.song % detachedSongStep == 0;
                    return played.place < instrumentCount() && isBoth && isDetached(played) == detached &&
                           played.piece.octave == octave;
                })));
            }
        }
        rows.push_back(row);
    }
    return markdownTable(
        {"", "full length, C4 to B4", "full length, C5 to B5", "detached, C4 to B4", "detached, C5 to B5"},
        rows);
}

/// Every song with every player: one table for each song.
std::string everything(std::vector<Played> const& all, std::vector<ShippedSong> const& songs) {
    std::string text;
    for (std::size_t song = 0; song < songs.size(); ++song) {
        text += "## " + songs[song].title + "\n\n" + std::to_string(songs[song].notes) +
                " notes, best possible score " + std::to_string(static_cast<int>(songs[song].bestScore)) +
                ".\n\n";
        Rows rows;
        for (std::size_t place = 0; place < orchestra().size(); ++place) {
            std::vector<std::string> row = {orchestra()[place].name + (isTunedOn(place) ? " *" : "")};
            std::size_t performances = 0;
            for (std::size_t const timing : {onTheBeat, ahead}) {
                for (int const octave : {3, 4, 5}) {
                    SongMean const mean = songMeanOf(all, songs, timing, [&](Played const& played) {
                        return played.place == place && played.piece.song == song && !isDetached(played) &&
                               played.piece.octave == octave;
                    });
                    performances += mean.performances;
                    row.push_back(earned(mean));
                }
            }
            if (performances > 0) {
                rows.push_back(row);
            }
        }
        text += markdownTable({"player", "on the beat, C3 to B3", "C4 to B4", "C5 to B5",
                               "0.08 s ahead, C3 to B3", "C4 to B4", "C5 to B5"},
                              rows) +
                "\n\n";
    }
    text.pop_back();
    text.pop_back();
    return text;
}

void addExtremes(std::vector<Played> const& all, std::vector<ShippedSong> const& songs, Figures& figures) {
    double fewestAwards = 1.0;
    double mostPenalties = 0.0;
    for (std::size_t song = 0; song < songs.size(); ++song) {
        if (!isMelody(songs[song])) {
            continue;
        }
        SongMean const mean = songMeanOf(all, songs, ahead, [&](Played const& played) {
            return full(5)(played) && played.piece.song == song;
        });
        if (mean.awards <= fewestAwards) {
            fewestAwards = mean.awards;
            figures["songs fewest awards title"] = songs[song].title;
        }
        if (mean.penaltiesPer39 >= mostPenalties) {
            mostPenalties = mean.penaltiesPer39;
            figures["songs most penalties title"] = songs[song].title;
        }
    }
    figures["songs fewest awards"] = percent(fewestAwards);
    figures["songs most penalties"] = oneDecimal(mostPenalties);
}

}  // namespace

void addSongFigures(Archive const& archive, std::string const& shippedTable,
                    std::vector<ShippedSong> const& songs, Figures& figures) {
    Listener listener(shippedTable);
    std::vector<Played> const all = archive.pieces(listener, timings, true);
    figures["songs ahead"] = songTable(all, songs, ahead);
    figures["songs on the beat"] = songTable(all, songs, onTheBeat);
    figures["songs players"] = playerTable(all, songs);
    figures["songs timing"] = timingTable(all, songs);
    figures["songs everything"] = everything(all, songs);
    figures["songs performances"] = std::to_string(all.size());
    addExtremes(all, songs, figures);
}
