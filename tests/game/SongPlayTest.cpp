#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "game/Score.h"
#include "game/Song.h"

namespace {

constexpr double frameSeconds = 0.016;
constexpr int longestNote = 5;  // slots; a longer one cannot be earned, and the shelf has none

/// Plays a song from its start to its end, frame by frame, as the game's window does; `player` says which
/// notes sound at a song time. The score.
template <class Player>
float playThrough(Song& song, Player player) {
    Score score(0.0f, 0.0f);
    NoteState state;
    double t = -2.0;
    for (; !song.complete(t); t += frameSeconds) {
        state.notesDown(player(t), static_cast<float>(frameSeconds));
        song.updateScore(score, t, state);
        song.animate(frameSeconds);
    }
    return score.getValue();
}

/// Plays every note from the moment its slot's window opens until its last slot's window closes, and strikes
/// it afresh if the same note comes again at once.
std::vector<Notes::NoteID> whatIsWritten(Song const& song, double t) {
    double const position = 2.0 * t + 0.5;  // slots since slot 0's window opened
    double const lastFrame = position - 2.0 * frameSeconds;
    bool sounds[7] = {};
    bool strikes[7] = {};
    auto const& slots = song.getSlots();
    for (int i = std::max(0, static_cast<int>(position) - longestNote);
         i <= position && i < static_cast<int>(slots.size()); ++i) {
        for (Song::NoteMark const& mark : slots[static_cast<std::size_t>(i)]) {
            if (!mark.wrong && position < i + mark.length) {
                sounds[mark.note] = true;
                strikes[mark.note] = strikes[mark.note] || lastFrame < i;
            }
        }
    }
    std::vector<Notes::NoteID> sounding;
    for (int note = 0; note < 7; ++note) {
        if (sounds[note] && !strikes[note]) {
            sounding.emplace_back(note);
        }
    }
    return sounding;
}

/// What a player who makes no mistake can earn: a flat 100 for a note of one slot, which is held long enough
/// in its own slot, and 100 by the slot for a longer one, which is not.
float mostPoints(Song const& song) {
    float points = 0.0f;
    for (auto const& slot : song.getSlots()) {
        for (Song::NoteMark const& mark : slot) {
            EXPECT_LE(mark.length, longestNote);
            points += 100.0f * static_cast<float>(mark.length);
        }
    }
    return points;
}

/// Every song of the shelf that comes with the game (tests run in the data folder).
std::vector<std::string> songFiles() {
    std::vector<std::string> files;
    for (auto const& entry : std::filesystem::directory_iterator("Songs")) {
        if (entry.path().filename() != "listing.txt") {
            files.push_back(entry.path().string());
        }
    }
    return files;
}

TEST(SongPlay, APerfectPlayerEarnsEveryAwardOfEverySongAndNoPenalty) {
    ASSERT_GE(songFiles().size(), 3u);
    for (std::string const& file : songFiles()) {
        Song song;
        ASSERT_TRUE(song.load(file.c_str())) << file;
        float const most = mostPoints(song);
        EXPECT_GT(most, 0.0f) << file;
        EXPECT_EQ(playThrough(song, [&](double t) { return whatIsWritten(song, t); }), most) << file;
        for (auto const& slot : song.getSlots()) {
            for (Song::NoteMark const& mark : slot) {
                EXPECT_TRUE(mark.hit) << file;
                EXPECT_FALSE(mark.wrong) << file;
            }
        }
    }
}

TEST(SongPlay, SilenceEarnsNothingAtAll) {
    ASSERT_GE(songFiles().size(), 3u);
    for (std::string const& file : songFiles()) {
        Song song;
        ASSERT_TRUE(song.load(file.c_str())) << file;
        EXPECT_EQ(playThrough(song, [](double) { return std::vector<Notes::NoteID>(); }), 0.0f) << file;
        for (auto const& slot : song.getSlots()) {
            for (Song::NoteMark const& mark : slot) {
                EXPECT_FALSE(mark.hit) << file;
            }
        }
    }
}

TEST(SongPlay, HoldingEveryNoteAllTheTimeCostsAPenaltyForEachUnexpectedOneInEachSlot) {
    for (std::string const& file : songFiles()) {
        Song song;
        ASSERT_TRUE(song.load(file.c_str())) << file;
        playThrough(song, [](double) { return std::vector<Notes::NoteID>{0, 1, 2, 3, 4, 5, 6}; });
        // Each of the seven is written in, still sounds in, or is penalised in every slot.
        auto const& slots = song.getSlots();
        for (std::size_t i = 0; i < slots.size(); ++i) {
            std::size_t penalties = 0;
            bool expected[7] = {};
            for (Song::NoteMark const& mark : slots[i]) {
                penalties += mark.wrong ? 1 : 0;
                expected[mark.note] = expected[mark.note] || !mark.wrong;
            }
            for (std::size_t j = i < 4 ? 0 : i - 4; j < i; ++j) {
                for (Song::NoteMark const& mark : slots[j]) {
                    if (!mark.wrong && j + static_cast<std::size_t>(mark.length) > i) {
                        expected[mark.note] = true;
                    }
                }
            }
            auto const missing = static_cast<std::size_t>(std::count(expected, expected + 7, false));
            EXPECT_EQ(penalties, missing) << file << ", slot " << i;
        }
    }
}

}  // namespace
