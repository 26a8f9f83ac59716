// One truth for scoring: what a performance earns is a matter of the song and the player, not of how often
// the screen is drawn.

#include <GL/gl.h>
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
#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

namespace {

constexpr double slotSeconds = 0.5;
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

std::vector<Sound> performance(Song const& song, Manner const& manner) {
    std::vector<Sound> sounds;
    auto const& slots = song.getSlots();
    for (std::size_t k = 0; k < slots.size(); ++k) {
        double const opens = (static_cast<double>(k) - 0.5) * slotSeconds;
        for (Song::NoteMark const& mark : slots[k]) {
            sounds.push_back({mark.note, opens + manner.lateSeconds,
                              opens + mark.length * slotSeconds - manner.earlySeconds});
        }
        if (manner.wrongEverySlots != 0 && k % static_cast<std::size_t>(manner.wrongEverySlots) == 0) {
            sounds.push_back({static_cast<int>(k % 7), opens, opens + 0.9 * slotSeconds});
        }
    }
    std::sort(sounds.begin(), sounds.end(),
              [](Sound const& left, Sound const& right) { return left.begins < right.begins; });
    return sounds;
}

std::vector<Notes::NoteID> heardAt(std::vector<Sound> const& sounds, double t) {
    bool sounding[7] = {};
    auto sound = std::lower_bound(sounds.begin(), sounds.end(), t - longestSound,
                                  [](Sound const& each, double begins) { return each.begins < begins; });
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
float play(Song& song, std::vector<Sound> const& sounds, std::vector<double> const& frameTimes) {
    Score score(0.0f, 0.0f);
    NoteState state;
    double before = frameTimes.front();
    for (double const t : frameTimes) {
        state.notesDown(heardAt(sounds, t), static_cast<float>(t - before));
        song.updateScore(score, t, state);
        song.animate(t - before);
        before = t;
    }
    return score.getValue();
}

std::vector<double> regularFrames(Song const& song, double perSecond) {
    std::vector<double> times;
    for (int frame = 0; times.empty() || !song.complete(times.back()); ++frame) {
        times.push_back(-2.0 + frame / perSecond);
    }
    return times;
}

class SongFrameRate : public testing::TestWithParam<std::string> {
protected:
    void loadSong() { ASSERT_TRUE(song.load(("Songs/" + GetParam() + ".txt").c_str())); }

    Song song;
};

/// Every song that comes with the game (tests run in the data folder).
std::vector<std::string> shelf() {
    std::vector<std::string> names;
    for (auto const& entry : std::filesystem::directory_iterator("Songs")) {
        if (entry.path().filename() != "listing.txt") {
            names.push_back(entry.path().stem().string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string nameOf(testing::TestParamInfo<std::string> const& info) {
    return info.param;
}

TEST_P(SongFrameRate, IsWorthTheSameAtEveryFrameRate) {
    for (Manner const& manner : manners) {
        std::vector<float> scores;
        for (double const rate : framesPerSecond) {
            loadSong();
            std::vector<Sound> const sounds = performance(song, manner);
            scores.push_back(play(song, sounds, regularFrames(song, rate)));
        }
        auto const [least, most] = std::minmax_element(scores.begin(), scores.end());
        EXPECT_LE(*most - *least, oneAward) << testing::PrintToString(scores);
        EXPECT_GT(*least, 0.0f);
    }
}

TEST_P(SongFrameRate, IsWorthExactlyTheSameAtTheSameFrameTimes) {
    std::mt19937 chance(20240607);
    std::uniform_real_distribution<double> step(0.001, 0.08);
    std::vector<double> times{-2.0};
    loadSong();
    while (!song.complete(times.back())) {
        times.push_back(times.back() + step(chance));
    }
    std::vector<Sound> const sounds = performance(song, manners[3]);
    float const first = play(song, sounds, times);
    Words const marks = words(song.getSlots());
    for (int again = 0; again < 3; ++again) {
        loadSong();
        EXPECT_EQ(play(song, sounds, times), first);
        EXPECT_EQ(words(song.getSlots()), marks);
    }
}

INSTANTIATE_TEST_SUITE_P(, SongFrameRate, testing::ValuesIn(shelf()), nameOf);

/// Somebody who hits whatever keys there are, and a clock that goes back to the start again and again.
TEST(SongRandomPlaying, NeitherGrowsNorSlowsHoweverOftenItGoesOn) {
    RecordingGL gl;
    RecordingFont font;
    Song song;
    ASSERT_TRUE(song.load("Songs/canon_and_ground.txt"));
    std::size_t most = 0;
    for (auto const& slot : song.getSlots()) {
        most += slot.size() + 7;  // one penalty for each note
    }
    std::mt19937 chance(5);
    Score score(0.0f, 0.0f);
    NoteState state;
    int mostGroups[2] = {};
    std::size_t mostTexts[2] = {};
    constexpr double dt = 0.05;
    constexpr int rounds = 20;
    for (int round = 0; round < rounds; ++round) {
        for (double t = -2.0; !song.complete(t); t += dt) {
            std::vector<Notes::NoteID> held;
            for (int note = 0; note < 7; ++note) {
                if ((chance() >> 8) % 8 != 0) {
                    held.emplace_back(note);
                }
            }
            state.notesDown(held, static_cast<float>(dt));
            gl.forget();
            font.forget();
            glPushMatrix();
            song.draw(t);
            glPopMatrix();
            song.updateScore(score, t, state);
            song.animate(dt);
            bool const late = round >= rounds / 2;
            mostGroups[late] = std::max(mostGroups[late], gl.groups());
            mostTexts[late] = std::max(mostTexts[late], font.texts().size());
        }
    }
    std::size_t marks = 0;
    for (auto const& slot : song.getSlots()) {
        marks += slot.size();
    }
    EXPECT_LE(marks, most);
    EXPECT_LE(mostGroups[1], mostGroups[0]);
    EXPECT_LE(mostTexts[1], mostTexts[0]);
    EXPECT_GT(mostTexts[0], 0u);

    song.animate(5.0);
    font.forget();
    song.draw(0.0);
    EXPECT_TRUE(font.texts().empty()) << "floating numbers are left over";
}

}  // namespace
