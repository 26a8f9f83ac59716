#include "bench/hearing/Results.h"

#include <stdexcept>

namespace {

constexpr double changesOfReference = 39.0;

std::vector<Recording> readAll(std::string const& path, std::size_t expected) {
    std::vector<Recording> recordings = readRecordings(path);
    if (recordings.size() != expected) {
        throw std::runtime_error(path + " is missing or was recorded by another version of the bench");
    }
    return recordings;
}

}  // namespace

Archive::Archive(std::string const& recordingsFolder, std::vector<ShippedSong> const& shippedSongs)
    : songs(shippedSongs) {
    for (std::size_t place = 0; place < orchestra().size(); ++place) {
        Player const& player = orchestra()[place];
        std::string const stem = recordingsFolder + "/" + std::to_string(place);
        takeRecordings.push_back(readAll(stem + ".takes", takesOf(player).size()));
        pieceRecordings.push_back(readAll(stem + ".songs", piecesOf(player, songs.size()).size()));
    }
    quietRecordings = readAll(recordingsFolder + "/nobody.takes", quiets().size());
}

std::vector<Heard> Archive::takes(Listener& listener, std::function<bool(Take const&)> const& which) const {
    std::vector<Heard> heard;
    for (std::size_t place = 0; place < orchestra().size(); ++place) {
        std::vector<Take> const takes = takesOf(orchestra()[place]);
        for (std::size_t i = 0; i < takes.size(); ++i) {
            if (which(takes[i])) {
                heard.push_back({place, takes[i], judge(takes[i], takeRecordings[place][i], listener)});
            }
        }
    }
    return heard;
}

std::vector<Played> Archive::pieces(Listener& listener, std::vector<double> const& aheadSeconds,
                                    bool withDetached) const {
    std::vector<Played> played;
    for (std::size_t place = 0; place < orchestra().size(); ++place) {
        std::vector<Piece> const pieces = piecesOf(orchestra()[place], songs.size());
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            if (withDetached || pieces[i].gapSeconds <= 0.0) {
                ShippedSong const& song = songs[pieces[i].song];
                played.push_back(
                    {place, pieces[i], outcomes(song, pieceRecordings[place][i], listener, aheadSeconds)});
            }
        }
    }
    return played;
}

std::vector<FalseNotes> Archive::quietRooms(Listener& listener) const {
    std::vector<FalseNotes> rooms;
    for (Recording const& recording : quietRecordings) {
        rooms.push_back(falseNotes(recording, listener));
    }
    return rooms;
}

void Archive::forEachPlainTake(bool tunedOn,
                               std::function<void(Take const&, Recording const&)> const& each) const {
    for (std::size_t place = 0; place < instrumentCount(); ++place) {
        std::vector<Take> const takes = takesOf(orchestra()[place]);
        for (std::size_t i = 0; i < takes.size() && isTunedOn(place) == tunedOn; ++i) {
            if (takes[i].trial == Trial::plain && !takes[i].touch.room &&
                naturalOf(takes[i].pitches.front()) != -1) {
                each(takes[i], takeRecordings[place][i]);
            }
        }
    }
}

SongMean songMeanOf(std::vector<Played> const& all, std::vector<ShippedSong> const& songs, std::size_t timing,
                    std::function<bool(Played const&)> const& which) {
    SongMean mean;
    for (Played const& played : all) {
        if (!which(played)) {
            continue;
        }
        ShippedSong const& song = songs[played.piece.song];
        Outcome const& outcome = played.outcomes[timing];
        ++mean.performances;
        mean.awards += static_cast<double>(outcome.awards) / song.notes;
        mean.penalties += outcome.penalties;
        mean.penaltiesPer39 += outcome.penalties * changesOfReference / (song.notes - 1);
        mean.score += outcome.score / song.bestScore;
    }
    if (mean.performances > 0) {
        auto const count = static_cast<double>(mean.performances);
        mean.awards /= count;
        mean.penalties /= count;
        mean.penaltiesPer39 /= count;
        mean.score /= count;
    }
    return mean;
}

bool isMelody(ShippedSong const& song) {
    for (std::vector<Song::NoteMark> const& slot : song.song->getSlots()) {
        if (slot.size() > 1) {
            return false;
        }
    }
    return true;
}
