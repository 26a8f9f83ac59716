#include "tools/zanto-song/Performance.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "game/Song.h"
#include "tests/support/TemporaryFolder.h"

namespace {

class PerformanceTest : public testing::Test {
protected:
    Song const& songOf(std::string const& text) {
        EXPECT_TRUE(loaded.load(folder.write("song.txt", text).c_str()));
        return loaded;
    }

private:
    TemporaryFolder folder;
    Song loaded;
};

}  // namespace

TEST_F(PerformanceTest, notesBeginWhenTheirSlotsOpen) {
    std::vector<PlayedNote> const played = perform(songOf("1 1\nC\n\nE2 G"), {});
    ASSERT_EQ(played.size(), 3u);
    EXPECT_EQ(played[0].note, 0);
    EXPECT_DOUBLE_EQ(played[0].startSeconds, 1.75);
    EXPECT_DOUBLE_EQ(played[0].soundingSeconds, 0.5);
    EXPECT_EQ(played[1].note, 2);
    EXPECT_DOUBLE_EQ(played[1].startSeconds, 2.75);
    EXPECT_DOUBLE_EQ(played[1].soundingSeconds, 1.0);
    EXPECT_EQ(played[2].note, 4);
    EXPECT_DOUBLE_EQ(played[2].startSeconds, 2.75);
}

TEST_F(PerformanceTest, beingAheadMovesTheNoteAndTheGapShortensIt) {
    PlayingStyle style;
    style.aheadSeconds = 0.08;
    style.gapSeconds = 0.12;
    std::vector<PlayedNote> const played = perform(songOf("1 1\nC3"), style);
    ASSERT_EQ(played.size(), 1u);
    EXPECT_DOUBLE_EQ(played[0].startSeconds, 1.67);
    EXPECT_DOUBLE_EQ(played[0].soundingSeconds, 1.38);
}

TEST_F(PerformanceTest, pitchesAreEqualTemperedAroundA440) {
    EXPECT_DOUBLE_EQ(pitchOf(5, 4), 440.0);
    EXPECT_DOUBLE_EQ(pitchOf(5, 5), 880.0);
    EXPECT_NEAR(pitchOf(0, 5), 523.2511, 1e-4);
    EXPECT_NEAR(pitchOf(6, 5), 987.7666, 1e-4);
    EXPECT_NEAR(pitchOf(0, 4), 261.6256, 1e-4);
    PlayingStyle low;
    low.octave = 3;
    EXPECT_DOUBLE_EQ(perform(songOf("1 1\nA"), low)[0].frequencyHz, 220.0);
}

TEST_F(PerformanceTest, notesOfNoLengthAreSilent) {
    EXPECT_TRUE(perform(songOf("1 1\nC0 D-2 Ex"), {}).empty());
}

TEST_F(PerformanceTest, noNoteOutlastsTheSong) {
    Song const& song = songOf("1 1\nC2147483647\nD");
    EXPECT_DOUBLE_EQ(songSeconds(song), 2.0 + (2 + 4) * 0.5);
    std::vector<PlayedNote> const played = perform(song, {});
    EXPECT_DOUBLE_EQ(played[0].startSeconds + played[0].soundingSeconds, songSeconds(song));
}

TEST_F(PerformanceTest, aNoteSoundsHoweverWideTheGap) {
    PlayingStyle style;
    style.gapSeconds = 3.0;
    EXPECT_DOUBLE_EQ(perform(songOf("1 1\nC"), style)[0].soundingSeconds, 0.05);
}

TEST_F(PerformanceTest, aSongWithoutSlotsHasItsLeadInAndItsEnd) {
    Song const empty;
    EXPECT_TRUE(perform(empty, {}).empty());
    EXPECT_DOUBLE_EQ(songSeconds(empty), 4.0);
}
