#include "bench/hearing/Results.h"

#include <stdexcept>

namespace {

constexpr double changesOfReference = 39.0;

std::vector<Recording> readAll(const std::string& path, std::size_t expected) {
    std::vector<Recording> recordings = readRecordings(path);
    if (recordings.size() != expected) {
        throw std::runtime_error(path + " is missing or was recorded by another version of the bench");
    }
    return recordings;
}

}  // namespace

Archive::Archive(const std::string& recordingsFolder, const std::vector<ShippedSong>& shippedSongs)
    : songs(shippedSongs) {
    for (std::size_t place = 0; place < orchestra().size(); ++place) {
        const Player& player = orchestra()[place];
        const std::string stem = recordingsFolder + "/" + std::to_string(place);
        takeRecordings.push_back(readAll(stem + ".takes", takesOf(player).size()));
        pieceRecordings.push_back(readAll(stem + ".songs", piecesOf(place, songs.size()).size()));
    }
    quietRecordings = readAll(recordingsFolder + "/nobody.takes", quiets().size());
}

std::vector<Heard> Archive::takes(Listener& listener, const std::function<bool(const Take&)>& which) const {
    std::vector<Heard> heard;
    for (std::size_t place = 0; place < orchestra().size(); ++place) {
        const std::vector<Take> takes = takesOf(orchestra()[place]);
        for (std::size_t i = 0; i < takes.size(); ++i) {
            if (which(takes[i])) {
                heard.push_back({place, takes[i], judge(takes[i], takeRecordings[place][i], listener)});
            }
        }
    }
    return heard;
}

std::vector<Played> Archive::pieces(Listener& listener, const std::vector<double>& aheadSeconds,
                                    const std::function<bool(const Piece&)>& which) const {
    std::vector<Played> played;
    for (std::size_t place = 0; place < orchestra().size(); ++place) {
        const std::vector<Piece> pieces = piecesOf(place, songs.size());
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            if (which(pieces[i])) {
                const ShippedSong& song = songs[pieces[i].song];
                played.push_back(
                    {place, pieces[i], outcomes(song, pieceRecordings[place][i], listener, aheadSeconds)});
            }
        }
    }
    return played;
}

std::vector<FalseNotes> Archive::quietRooms(Listener& listener) const {
    std::vector<FalseNotes> rooms;
    for (const Recording& recording : quietRecordings) {
        rooms.push_back(falseNotes(recording, listener));
    }
    return rooms;
}

void Archive::forEachPlainTake(bool tunedOn,
                               const std::function<void(const Take&, const Recording&)>& each) const {
    for (std::size_t place = 0; place < instrumentCount(); ++place) {
        const std::vector<Take> takes = takesOf(orchestra()[place]);
        for (std::size_t i = 0; i < takes.size() && isTunedOn(place) == tunedOn; ++i) {
            if (takes[i].trial == Trial::plain && !takes[i].touch.room &&
                octaveOf(takes[i].pitches.front()) >= lowestTableOctave &&
                Notes::ofSemitone(takes[i].pitches.front()) != -1) {
                each(takes[i], takeRecordings[place][i]);
            }
        }
    }
}

std::vector<Ear> allEars(const std::string& tableText) {
    std::vector<Ear> ears;
    ears.push_back({"plain", Listener(tableText)});
    ears.push_back({"fine", Listener::fine()});
    ears.push_back({"yinfft", Listener::peer()});
    return ears;
}

const char* partOf(std::size_t place) {
    switch (orchestra().at(place).source) {
        case Source::synthetic:
            return "voice";
        case Source::festival:
            return "sung";
        case Source::timGM6mb:
            return "second";
        case Source::fluidR3:
            break;
    }
    return isTunedOn(place) ? "tuned" : "other";
}

SongMean songMeanOf(const std::vector<Played>& all, const std::vector<ShippedSong>& songs, std::size_t timing,
                    const std::function<bool(const Played&)>& which) {
    SongMean mean;
    for (const Played& played : all) {
        if (!which(played)) {
            continue;
        }
        const ShippedSong& song = songs[played.piece.song];
        const Outcome& outcome = played.outcomes[timing];
        ++mean.performances;
        mean.awards += static_cast<double>(outcome.awards) / song.notes;
        mean.penalties += outcome.penalties;
        mean.penaltiesPer39 += outcome.penalties * changesOfReference / (song.notes - 1);
        mean.score += outcome.score / song.bestScore;
    }
    if (mean.performances > 0) {
        const auto count = static_cast<double>(mean.performances);
        mean.awards /= count;
        mean.penalties /= count;
        mean.penaltiesPer39 /= count;
        mean.score /= count;
    }
    return mean;
}

bool isMelody(const ShippedSong& song) {
    for (const std::vector<Song::NoteMark>& slot : song.song->getSlots()) {
        if (slot.size() > 1) {
            return false;
        }
    }
    return true;
}
