#include "tools/zanto-song/SongFix.h"

#include <gtest/gtest.h>

#include <string>

namespace {

void expectUnchanged(std::string const& contents) {
    MendedSong const mended = mendSong(contents);
    EXPECT_EQ(mended.contents, contents);
    EXPECT_TRUE(mended.changes.empty());
}

}  // namespace

TEST(SongFix, whatNeedsNoMendingStaysAsItIs) {
    expectUnchanged("");
    expectUnchanged("120 4\n\nC E2\nG");
    expectUnchanged("120 4\n  C   E\n");
}

TEST(SongFix, lineEndsBecomeLineFeeds) {
    EXPECT_EQ(mendSong("120 4\r\nC\r\n\r\nE").contents, "120 4\nC\n\nE");
    EXPECT_EQ(mendSong("120 4\rC\rE\r").contents, "120 4\nC\nE\n");
    EXPECT_EQ(mendSong("120 4\r\r\nC\n").contents, "120 4\nC\n");
}

TEST(SongFix, blanksAtTheEndGo) {
    EXPECT_EQ(mendSong("120 4 \nC \t\n   \nE \r\nG ").contents, "120 4\nC\n\nE\nG");
}

TEST(SongFix, lowerCaseNotesAreRaisedWhereNothingElseCanBeMeant) {
    EXPECT_EQ(mendSong("120 4 cd\nc e2 g10\n").contents, "120 4 cd\nC E2 G10\n");
    expectUnchanged("120 4\nbb c# ex h a-2\n");
}

TEST(SongFix, theByteOrderMarkGoes) {
    EXPECT_EQ(mendSong("\xEF\xBB\xBF"
                       "120 4\nC\n")
                  .contents,
              "120 4\nC\n");
}

TEST(SongFix, everyByteOrderMarkGoesAtOnce) {
    EXPECT_EQ(mendSong("\xEF\xBB\xBF\xEF\xBB\xBF"
                       "120 4\nC\n")
                  .contents,
              "120 4\nC\n");
}

TEST(SongFix, aHeaderWithoutSlotsKeepsAnEndToItsLine) {
    EXPECT_EQ(mendSong("120 4 ").contents, "120 4\n");
}

TEST(SongFix, everyChangedLineIsToldWithWhatWasDone) {
    MendedSong const mended = mendSong("120 4\r\nC\nc  \r\n");
    ASSERT_EQ(mended.changes.size(), 2u);
    EXPECT_EQ(mended.changes[0].line, 1u);
    EXPECT_EQ(mended.changes[0].what, "carriage return");
    EXPECT_EQ(mended.changes[1].line, 3u);
    EXPECT_EQ(mended.changes[1].before, "c  \r");
    EXPECT_EQ(mended.changes[1].after, "C");
    EXPECT_EQ(mended.changes[1].what, "carriage return, blanks at the end, capital letters");
}
