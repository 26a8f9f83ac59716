// What whole performances of the songs that come with the game earn: it depends on the song and the player,
// not on how often the screen is drawn.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "game/Score.h"
#include "game/Song.h"

namespace {

constexpr double slotSeconds = rules::secondsPerSlot;
constexpr double longestSound = 5 * slotSeconds;  // a longer note cannot be earned, and the shelf has none
constexpr float oneAward = 100.0f;
constexpr double framesPerSecond[] = {30.0, 60.0, 100.0, 144.0};

/// A note that sounds for a while, in song time.
struct Sound {
    int note;
    double begins;
    double ends;
};

/// How somebody plays what is written: every note so many seconds after its slot opens, and let go so many
/// before its last slot closes; and a wrong note held now and then.
struct Manner {
    double lateSeconds;
    double earlySeconds;
    int wrongEverySlots;  ///< 0 for never
};

constexpr Manner manners[] = {{0.0, 0.1, 0}, {0.06, 0.12, 0}, {0.02, 0.08, 7}, {-0.05, 0.15, 3}};

std::vector<Sound> performance(const Song& song, const Manner& manner) {
    std::vector<Sound> sounds;
    const auto& slots = song.getSlots();
    for (std::size_t k = 0; k < slots.size(); ++k) {
        const double opens = (static_cast<double>(k) - 0.5) * slotSeconds;
        for (const Song::NoteMark& mark : slots[k]) {
            sounds.push_back({mark.note, opens + manner.lateSeconds,
                              opens + mark.length * slotSeconds - manner.earlySeconds});
        }
        if (manner.wrongEverySlots != 0 && k % static_cast<std::size_t>(manner.wrongEverySlots) == 0) {
            sounds.push_back({static_cast<int>(k % 7), opens, opens + 0.9 * slotSeconds});
        }
    }
    std::sort(sounds.begin(), sounds.end(),
              [](const Sound& left, const Sound& right) { return left.begins < right.begins; });
    return sounds;
}

std::vector<Notes::NoteID> heardAt(const std::vector<Sound>& sounds, double t) {
    bool sounding[7] = {};
    auto sound = std::lower_bound(sounds.begin(), sounds.end(), t - longestSound,
                                  [](const Sound& each, double begins) { return each.begins < begins; });
    for (; sound != sounds.end() && sound->begins <= t; ++sound) {
        sounding[sound->note] = sounding[sound->note] || t < sound->ends;
    }
    std::vector<Notes::NoteID> heard;
    for (int note = 0; note < 7; ++note) {
        if (sounding[note]) {
            heard.emplace_back(note);
        }
    }
    return heard;
}

/// Plays the performance with so many frames a second, and gives the score.
float play(Song& song, const std::vector<Sound>& sounds, double rate) {
    Score score(0.0f, 0.0f);
    NoteState state;
    double before = -rules::leadInSeconds;
    for (int frame = 0; !song.complete(before); ++frame) {
        const double t = -rules::leadInSeconds + frame / rate;
        state.notesDown(heardAt(sounds, t), static_cast<float>(t - before));
        song.updateScore(score, t, state);
        before = t;
    }
    return score.getValue();
}

/// Every song that comes with the game (tests run in the data folder).
void forEachSong(const std::function<void(const std::string&)>& test) {
    for (const auto& entry : std::filesystem::directory_iterator("Songs")) {
        if (entry.path().filename() != "listing.txt") {
            SCOPED_TRACE(entry.path());
            test(entry.path().string());
        }
    }
}

TEST(SongPlay, IsWorthTheSameAtEveryFrameRate) {
    forEachSong([](const std::string& path) {
        for (const Manner& manner : manners) {
            std::vector<float> scores;
            for (const double rate : framesPerSecond) {
                Song song;
                ASSERT_TRUE(song.load(path.c_str()));
                scores.push_back(play(song, performance(song, manner), rate));
            }
            const auto [least, most] = std::minmax_element(scores.begin(), scores.end());
            EXPECT_LE(*most - *least, oneAward) << testing::PrintToString(scores);
            EXPECT_GT(*least, 0.0f);
        }
    });
}

TEST(SongPlay, EarnsSilenceNothing) {
    forEachSong([](const std::string& path) {
        Song song;
        ASSERT_TRUE(song.load(path.c_str()));
        EXPECT_EQ(play(song, {}, 60.0), 0.0f);
    });
}

}  // namespace
