#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/game/SongFixture.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

char const* const badInput = "Song: input is not good.\n";
char const* const badTiming = "Error loading timing information.\n";
char const* const badNote = "Song: Got invalid note.\n";

class SongLoadingTest : public SongFixture {
protected:
    void expectLoads(std::string const& contents) {
        EXPECT_TRUE(load(contents));
        EXPECT_EQ(errors, "");
    }
    void expectFails(std::string const& contents, std::string const& message) {
        EXPECT_FALSE(load(contents));
        EXPECT_EQ(errors, message);
    }
};

TEST_F(SongLoadingTest, ANewSongHasNoSlots) {
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, ReadsOneSlotPerLineAndAnEmptyOneFromTheFinalLineBreak) {
    expectLoads("1 1\nC\nE2\n\n");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1"), ElementsAre("E/2"), IsEmpty(), IsEmpty()));
}

TEST_F(SongLoadingTest, ReadsChordsRestsAndLengths) {
    expectLoads("120 4\nC E G\n\nD2\n");
    EXPECT_THAT(slots(),
                ElementsAre(ElementsAre("C/1", "E/1", "G/1"), IsEmpty(), ElementsAre("D/2"), IsEmpty()));
}

TEST_F(SongLoadingTest, ReadsAllSevenNotesAsWhiteUnhitMarks) {
    expectLoads("1 1\nC D E F G A B");
    ASSERT_THAT(song.getSlots(), SizeIs(1));
    auto const& marks = song.getSlots()[0];
    ASSERT_THAT(marks, SizeIs(7));
    for (int i = 0; i < 7; ++i) {
        Song::NoteMark const& mark = marks[static_cast<std::size_t>(i)];
        EXPECT_EQ(mark.note, i);
        EXPECT_EQ(mark.length, 1);
        EXPECT_EQ(mark.brightness, 1.0f);
        EXPECT_FALSE(mark.hit);
        EXPECT_FALSE(mark.wrong);
    }
}

TEST_F(SongLoadingTest, ALastLineWithoutALineBreakMakesNoExtraSlot) {
    expectLoads("1 1\nC\nE2");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1"), ElementsAre("E/2")));
}

TEST_F(SongLoadingTest, AHeaderAloneWithItsLineBreakIsOneEmptySlot) {
    expectLoads("1 1\n");
    EXPECT_THAT(slots(), ElementsAre(IsEmpty()));
}

TEST_F(SongLoadingTest, AHeaderWithoutItsLineBreakCannotBeRead) {
    expectFails("1 1", badTiming);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, AHeaderEndingInABlankInsteadOfALineBreakIsAnEmptySong) {
    expectLoads("1 1 ");
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, TheHeadersIntegersMayStandOnLinesOfTheirOwn) {
    expectLoads("\n 120\n\t4\nC");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1")));
}

TEST_F(SongLoadingTest, TheRestOfTheHeaderLineIsSkipped) {
    expectLoads("120 4 beats, H and so on\nC");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1")));
}

TEST_F(SongLoadingTest, AHeaderOfOtherWordsCannotBeRead) {
    expectFails("abc\nC\n", badTiming);
    expectFails("120 abc\nC\n", badTiming);
    expectFails("99999999999 1\nC\n", badTiming);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, AFileWithoutAHeaderCannotBeRead) {
    expectFails("C E G\nD2\n", badTiming);
    expectFails("", badTiming);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, ANonExistentPathIsNoGoodInput) {
    CapturedErrors const captured;
    EXPECT_FALSE(song.load("nowhere/song.txt"));
    EXPECT_FALSE(song.load(""));
    EXPECT_EQ(captured.text(), std::string(badInput) + badInput);
}

TEST_F(SongLoadingTest, AFolderOpensButHasNoTiming) {
    CapturedErrors const captured;
    EXPECT_FALSE(song.load(folder.path().c_str()));
    EXPECT_EQ(captured.text(), badTiming);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, AFailedStreamIsNoGoodInput) {
    std::ifstream in(folder.write("song.txt", "1 1\nC"));
    in.setstate(std::ios::failbit);
    CapturedErrors const captured;
    EXPECT_FALSE(song.load(in));
    EXPECT_EQ(captured.text(), badInput);
}

TEST_F(SongLoadingTest, TwoHeadersOverTheSameNotesAreTheSameSong) {
    std::string const notes = "C\nD2\n\nE F\n";
    expectLoads("60 4\n" + notes);
    Words const slow = slots();
    expectLoads("200 3\n" + notes);
    EXPECT_EQ(slots(), slow);
    // Five slots at two a second: over with slot 9, which is nearest from 4.25 s on.
    EXPECT_FALSE(song.complete(4.24));
    EXPECT_TRUE(song.complete(4.25));
}

TEST_F(SongLoadingTest, AnInvalidNoteEndsLoadingAndKeepsTheSlotsBefore) {
    expectFails("1 1\nD\n\nC H\nE\n", badNote);
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("D/1"), IsEmpty()));
}

TEST_F(SongLoadingTest, ALowerCaseNoteIsInvalid) {
    expectFails("1 1\nc\n", badNote);
}

TEST_F(SongLoadingTest, ATrailingBlankIsAnInvalidNote) {
    expectFails("1 1\nD\nC \n", badNote);
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("D/1")));
    expectFails("1 1\nC\t\n", badNote);
}

TEST_F(SongLoadingTest, ACarriageReturnIsATrailingBlank) {
    expectFails("1 1\r\nC\r\n", badNote);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, ALineOfBlanksIsAnInvalidNote) {
    expectFails("1 1\n   \n", badNote);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, AnyWhitespaceMaySeparateAndPrecedeNotes) {
    expectLoads("1 1\n  C \t E\v\f\rG2");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1", "E/1", "G/2")));
}

TEST_F(SongLoadingTest, ALengthIsWhatAtoiMakesOfTheRest) {
    expectLoads("1 1\nG4 Gx G-2 C# G+3 G3x G007 G0 G0x10");
    EXPECT_THAT(slots(),
                ElementsAre(ElementsAre("G/4", "G/0", "G/-2", "C/0", "G/3", "G/3", "G/7", "G/0", "G/0")));
}

TEST_F(SongLoadingTest, ALengthBeyondAnIntLosesItsUpperBits) {
    expectLoads(
        "1 1\nG2147483647 G2147483648 G-2147483648 G-2147483649 G4294967297 G99999999999999999999 "
        "G-99999999999999999999");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("G/2147483647", "G/-2147483648", "G/-2147483648",
                                                 "G/2147483647", "G/1", "G/-1", "G/0")));
}

TEST_F(SongLoadingTest, ANulByteEndsItsLinesText) {
    using namespace std::string_literals;
    expectLoads("1 1\nC\0 H\nD\0\n\0C\nE"s);
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1"), ElementsAre("D/1"), IsEmpty(), ElementsAre("E/1")));
    expectFails("1 1\nC \0D\n"s, badNote);
}

/// 2 * count - 1 characters.
std::string manyNotes(int count) {
    std::string line = "C";
    for (int i = 1; i < count; ++i) {
        line += " C";
    }
    return line;
}

TEST_F(SongLoadingTest, ALineOf1023CharactersIsReadWhole) {
    ASSERT_EQ(manyNotes(512).size(), 1023u);
    expectLoads("1 1\n" + manyNotes(512) + "\nD");
    ASSERT_THAT(slots(), SizeIs(2));
    EXPECT_THAT(slots()[0], SizeIs(512));
    EXPECT_THAT(slots()[1], ElementsAre("D/1"));
}

TEST_F(SongLoadingTest, ALineOf1024CharactersIsCutAndEndsTheSong) {
    expectLoads("1 1\nE\n" + manyNotes(512) + "2\nD\nH\n");
    ASSERT_THAT(slots(), SizeIs(2));
    EXPECT_THAT(slots()[1], SizeIs(512));
    EXPECT_THAT(slots()[1], Each("C/1"));
}

TEST_F(SongLoadingTest, ALineOf1024CharactersAtTheEndOfTheFileIsCutToo) {
    expectLoads("1 1\n" + manyNotes(512) + "2");
    ASSERT_THAT(slots(), SizeIs(1));
    EXPECT_EQ(slots()[0].back(), "C/1");
}

TEST_F(SongLoadingTest, ALineOf100000CharactersIsCutAndEndsTheSong) {
    expectLoads("1 1\n" + manyNotes(50000) + "\nD\n");
    ASSERT_THAT(slots(), SizeIs(1));
    EXPECT_THAT(slots()[0], SizeIs(512));
}

TEST_F(SongLoadingTest, ACutThatLeavesATrailingBlankIsAnInvalidNote) {
    expectFails("1 1\nE\n " + manyNotes(512) + "\n", badNote);
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("E/1")));
}

TEST_F(SongLoadingTest, ACutInTheMiddleOfALengthKeepsTheDigitsBefore) {
    expectLoads("1 1\n" + std::string(1000, ' ') + "G" + std::string(30, '0') + "9\nD\n");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("G/0")));
}

TEST_F(SongLoadingTest, AHeaderLineTooLongForTheBufferLeavesASongWithoutSlots) {
    expectLoads("1 1" + std::string(1023, ' ') + "\nC");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1")));
    expectLoads("1 1" + std::string(1024, ' ') + "\nC");
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, LoadingAPathReplacesTheSongAndLoadingAStreamAddsToIt) {
    expectLoads("1 1\nC");
    expectLoads("1 1\nD");
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("D/1")));

    std::ifstream in(folder.write("more.txt", "1 1\nE"));
    EXPECT_TRUE(song.load(in));
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("D/1"), ElementsAre("E/1")));
}

TEST_F(SongLoadingTest, AFailedLoadLeavesNothingOfTheSongBefore) {
    expectLoads("1 1\nC");
    expectFails("abc", badTiming);
    EXPECT_THAT(slots(), IsEmpty());
}

TEST_F(SongLoadingTest, ReloadingClearsHitsAndPenalties) {
    std::string const contents = "1 1\nC";
    expectLoads(contents);
    song.updateScore(score, 0.1, holding({noteC, noteD}, 0.5f));
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1!", "D/1x")));

    expectLoads(contents);
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1")));
}

}  // namespace
