#include "tools/zanto-song/Performance.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "game/Song.h"
#include "tests/support/TemporaryFolder.h"

TEST(Performance, NotesBeginWhenTheirSlotsOpenUnlessPlayedAheadOrWithAGapAndNoneOutlastsTheSong) {
    struct Case {
        const char* song;
        PlayingStyle style;
        std::vector<PlayedNote> played;
    };
    const std::vector<Case> cases = {
        {"1 1\nC\n\nE2 G",
         {5, 0.0, 0.0},
         {{0, 523.2511, 1.75, 0.5}, {2, 659.2551, 2.75, 1.0}, {4, 783.9909, 2.75, 0.5}}},
        {"1 1\nC3", {4, 0.08, 0.12}, {{0, 261.6256, 1.67, 1.38}}},
        {"1 1\nC", {5, 0.0, 3.0}, {{0, 523.2511, 1.75, 0.05}}},
        {"1 1\nA\nB", {3, 0.0, 0.0}, {{5, 220.0, 1.75, 0.5}, {6, 246.9417, 2.25, 0.5}}},
        {"1 1\nC2147483647\nD", {}, {{0, 523.2511, 1.75, 3.25}, {1, 587.3295, 2.25, 0.5}}},
        {"1 1\nC0 D-2 Ex", {}, {}},  // notes of no length
    };
    const TemporaryFolder folder;
    Song song;
    EXPECT_DOUBLE_EQ(songSeconds(song), 4.0);
    for (const Case& example : cases) {
        SCOPED_TRACE(example.song);
        ASSERT_TRUE(song.load(folder.write("song.txt", example.song).c_str()));
        const std::vector<PlayedNote> played = perform(song, example.style);
        ASSERT_EQ(played.size(), example.played.size());
        for (std::size_t index = 0; index < played.size(); ++index) {
            EXPECT_EQ(played[index].note, example.played[index].note);
            EXPECT_NEAR(played[index].frequencyHz, example.played[index].frequencyHz, 1e-4);
            EXPECT_DOUBLE_EQ(played[index].startSeconds, example.played[index].startSeconds);
            EXPECT_DOUBLE_EQ(played[index].soundingSeconds, example.played[index].soundingSeconds);
        }
    }
}
