// What whole performances of the songs that come with the game earn: it depends on the song and the player,
// not on how often the screen is drawn.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "game/Score.h"
#include "game/Song.h"
#include "tests/game/SongFixture.h"

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

/// Plays the performance with frames at these times, and gives the score.
float play(Song& song, const std::vector<Sound>& sounds, const std::vector<double>& frameTimes) {
    Score score(0.0f, 0.0f);
    NoteState state;
    double before = frameTimes.front();
    for (const double t : frameTimes) {
        state.notesDown(heardAt(sounds, t), static_cast<float>(t - before));
        song.updateScore(score, t, state);
        song.animate(t - before);
        before = t;
    }
    return score.getValue();
}

std::vector<double> regularFrames(const Song& song, double perSecond) {
    std::vector<double> times;
    for (int frame = 0; times.empty() || !song.complete(times.back()); ++frame) {
        times.push_back(-rules::leadInSeconds + frame / perSecond);
    }
    return times;
}

class SongPlay : public testing::TestWithParam<std::string> {
protected:
    void loadSong() { ASSERT_TRUE(song.load(("Songs/" + GetParam() + ".txt").c_str())); }

    Song song;
};

/// Every song that comes with the game (tests run in the data folder).
std::vector<std::string> shelf() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator("Songs")) {
        if (entry.path().filename() != "listing.txt") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string nameOf(const testing::TestParamInfo<std::string>& info) {
    return info.param;
}

TEST_P(SongPlay, IsWorthTheSameAtEveryFrameRate) {
    for (const Manner& manner : manners) {
        std::vector<float> scores;
        for (const double rate : framesPerSecond) {
            loadSong();
            const std::vector<Sound> sounds = performance(song, manner);
            scores.push_back(play(song, sounds, regularFrames(song, rate)));
        }
        const auto [least, most] = std::minmax_element(scores.begin(), scores.end());
        EXPECT_LE(*most - *least, oneAward) << testing::PrintToString(scores);
        EXPECT_GT(*least, 0.0f);
    }
}

TEST_P(SongPlay, EarnsAPerfectPlayerEveryAwardAndNoPenalty) {
    loadSong();
    float most = 0.0f;
    for (const auto& slot : song.getSlots()) {
        for (const Song::NoteMark& mark : slot) {
            ASSERT_LE(mark.length * slotSeconds, longestSound);
            most += oneAward * static_cast<float>(mark.length);
        }
    }
    EXPECT_GT(most, 0.0f);
    // Let go just long enough for a note that comes again to be struck afresh.
    EXPECT_EQ(play(song, performance(song, {0.0, 0.02, 0}), regularFrames(song, 60.0)), most);
    for (const auto& slot : song.getSlots()) {
        for (const Song::NoteMark& mark : slot) {
            EXPECT_TRUE(mark.hit && !mark.wrong);
        }
    }
}

TEST_P(SongPlay, EarnsSilenceNothing) {
    loadSong();
    EXPECT_EQ(play(song, {}, regularFrames(song, 60.0)), 0.0f);
}

TEST_P(SongPlay, IsWorthExactlyTheSameAtTheSameFrameTimes) {
    std::mt19937 chance(20240607);
    std::uniform_real_distribution<double> step(0.001, 0.08);
    std::vector<double> times{-rules::leadInSeconds};
    loadSong();
    while (!song.complete(times.back())) {
        times.push_back(times.back() + step(chance));
    }
    const std::vector<Sound> sounds = performance(song, manners[3]);
    const float first = play(song, sounds, times);
    const Words marks = words(song.getSlots());
    for (int again = 0; again < 3; ++again) {
        loadSong();
        EXPECT_EQ(play(song, sounds, times), first);
        EXPECT_EQ(words(song.getSlots()), marks);
    }
}

INSTANTIATE_TEST_SUITE_P(, SongPlay, testing::ValuesIn(shelf()), nameOf);

}  // namespace
