#include "bench/hearing/SongRun.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <stdexcept>

#include "game/Rules.h"
#include "game/Score.h"

namespace {

constexpr double slotSeconds = rules::secondsPerSlot;
/// Song time 0, the middle of slot 0, in the sound of a performance.
constexpr double originSeconds = 1.0;
constexpr double afterwardsSeconds = 0.5;
constexpr double pointsPerSlot = rules::awardPoints;

constexpr std::array<int, 4> songOctaves = {2, 3, 4, 5};
constexpr std::size_t songStep = 5;

constexpr std::array<int, 7> semitonesAboveC = {0, 2, 4, 5, 7, 9, 11};

void countWhatCanBeReached(ShippedSong& shipped) {
    for (const std::vector<Song::NoteMark>& slot : shipped.song->getSlots()) {
        for (const Song::NoteMark& mark : slot) {
            ++shipped.notes;
            shipped.bestScore += pointsPerSlot * mark.length;
        }
    }
}

}  // namespace

std::vector<ShippedSong> shippedSongs(const std::string& dataFolder) {
    std::vector<ShippedSong> songs;
    std::ifstream listing(dataFolder + "/Songs/listing.txt");
    std::string title;
    std::string file;
    while (listing >> title >> file) {
        ShippedSong shipped;
        shipped.title = title;
        shipped.path = dataFolder + "/Songs/" + file;
        const auto song = std::make_shared<Song>();
        if (!song->load(shipped.path.c_str())) {
            throw std::runtime_error("cannot load " + shipped.path);
        }
        shipped.song = song;
        countWhatCanBeReached(shipped);
        songs.push_back(shipped);
    }
    return songs;
}

std::vector<Piece> piecesOf(std::size_t place, std::size_t songCount) {
    const Player& player = orchestra().at(place);
    std::vector<Piece> pieces;
    const bool isSynthetic = player.source == Source::synthetic;
    if (player.source != Source::fluidR3 && !(isSynthetic && player.vowel == 'a')) {
        return pieces;
    }
    for (const int octave : songOctaves) {
        for (std::size_t song = place % songStep; player.playsOctave(octave) && song < songCount;
             song += songStep) {
            Touch touch;
            touch.room = !isSynthetic && (song + static_cast<std::size_t>(octave)) % 2 == 1;
            pieces.push_back({song, octave, 0.0, touch});
            pieces.push_back({song, octave, detachedGapSeconds, touch});
        }
    }
    return pieces;
}

std::vector<NoteEvent> performance(const Song& song, int octave, double gapSeconds) {
    std::vector<NoteEvent> notes;
    double beat = originSeconds - slotSeconds / 2.0;
    for (const std::vector<Song::NoteMark>& slot : song.getSlots()) {
        for (const Song::NoteMark& mark : slot) {
            const int pitch = pitchOfC(octave) + semitonesAboveC.at(static_cast<std::size_t>(mark.note));
            notes.push_back({pitch, beat, beat + mark.length * slotSeconds - gapSeconds});
        }
        beat += slotSeconds;
    }
    return notes;
}

double performanceSeconds(const Song& song) {
    return originSeconds + static_cast<double>(song.getSlots().size()) * slotSeconds + afterwardsSeconds;
}

std::vector<Outcome> outcomes(const ShippedSong& shipped, const Recording& recording, Listener& listener,
                              const std::vector<double>& aheadSeconds) {
    struct Play {
        Song song;
        Score score = Score(0.0f, 0.0f);
    };
    std::vector<Play> plays(aheadSeconds.size());
    for (Play& play : plays) {
        play.song.load(shipped.path.c_str());
    }
    listener.replay(recording, [&](double seconds, const NoteState& held) {
        for (std::size_t i = 0; i < plays.size(); ++i) {
            plays[i].song.updateScore(plays[i].score, seconds - originSeconds - aheadSeconds[i], held);
            plays[i].song.animate(1.0 / framesPerSecond);
        }
    });

    std::vector<Outcome> results;
    for (const Play& play : plays) {
        Outcome outcome;
        outcome.score = static_cast<double>(play.score.getValue());
        for (const std::vector<Song::NoteMark>& slot : play.song.getSlots()) {
            for (const Song::NoteMark& mark : slot) {
                outcome.awards += mark.hit && !mark.wrong ? 1 : 0;
                outcome.penalties += mark.wrong ? 1 : 0;
            }
        }
        results.push_back(outcome);
    }
    return results;
}
