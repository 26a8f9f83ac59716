#include "tools/zanto-song/SongCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// "line:column severity code" of each problem.
std::vector<std::string> codesOf(std::string const& contents) {
    std::vector<std::string> codes;
    for (Problem const& problem : checkSong(contents)) {
        bool const isError = problem.severity == Problem::Severity::error;
        codes.push_back(std::to_string(problem.line) + ":" + std::to_string(problem.column) +
                        (isError ? " error " : " warning ") + problem.code);
        EXPECT_NE(problem.text, "");
        EXPECT_NE(problem.hint, "") << problem.text;
    }
    return codes;
}

std::string hintOf(std::string const& contents) {
    std::vector<Problem> const problems = checkSong(contents);
    return problems.size() == 1 ? problems.front().hint : "not one problem";
}

}  // namespace

TEST(SongCheck, aGoodSongHasNoProblem) {
    EXPECT_THAT(codesOf("120 4\nC E G\n\nD2\n"), IsEmpty());
    EXPECT_THAT(codesOf("-1\n+3   a song for beginners\nC5\n  G\tE\nA1\n\n"), IsEmpty());
}

TEST(SongCheck, everyProblemIsToldAtOnceInTheOrderOfTheLines) {
    EXPECT_THAT(codesOf("1 1\nC h \n\nC# D9\nE E\r\nX\n"),
                ElementsAre("2:3 error note-name", "2:4 error trailing-blank", "4:2 warning accidental",
                            "4:5 warning length-long", "5:3 warning doubled", "5:4 error carriage-return",
                            "6:1 error note-name"));
}

TEST(SongCheck, headersThatCannotBeRead) {
    EXPECT_THAT(codesOf(""), ElementsAre("1:1 error header-end"));
    EXPECT_THAT(codesOf("\n\n"), ElementsAre("3:1 error header-end"));
    EXPECT_THAT(codesOf("1 1"), ElementsAre("1:4 error header-end"));
    EXPECT_THAT(codesOf("abc"), ElementsAre("1:1 error header-number"));
    EXPECT_THAT(codesOf("1 1.5\nC\n"), IsEmpty());  // the rest of the line is passed over
    EXPECT_THAT(codesOf("1.5 1\nC\n"), ElementsAre("1:2 error header-number"));
    EXPECT_THAT(codesOf("12 3000000000\nC\n"), ElementsAre("1:4 error header-range"));
    EXPECT_THAT(codesOf("\xEF\xBB\xBF"
                        "1 1\nC\n"),
                ElementsAre("1:1 error byte-order-mark"));
}

TEST(SongCheck, aFaultyHeaderDoesNotHideTheFaultsOfTheSlots) {
    EXPECT_THAT(codesOf("abc\nC \n"), ElementsAre("1:1 error header-number", "2:2 error trailing-blank"));
}

TEST(SongCheck, aSongWithoutAHeaderIsCheckedFromItsFirstLine) {
    EXPECT_THAT(codesOf("C E\nD#\n"), ElementsAre("1:1 error header-number", "2:2 warning accidental"));
}

TEST(SongCheck, columnsCountCharactersAndNotBytes) {
    EXPECT_THAT(codesOf("1 1\n\u00E9 C h\n"), ElementsAre("2:1 error note-name", "2:5 error note-name"));
}

TEST(SongCheck, blanksBehindTheLastNoteAreErrorsAndBlanksBeforeItAreNone) {
    EXPECT_THAT(codesOf("1 1\nC \nE\t \nG \r\n\r\n   \n  C  E"),
                ElementsAre("2:2 error trailing-blank", "3:2 error trailing-blank",
                            "4:2 error trailing-blank", "5:1 error carriage-return", "6:1 error blank-line"));
}

TEST(SongCheck, hintsGuessWhatWasMeant) {
    EXPECT_THAT(hintOf("1 1\ne2\n"), testing::HasSubstr("E as a capital letter"));
    EXPECT_THAT(hintOf("1 1\nH\n"), testing::HasSubstr("write B"));
    EXPECT_THAT(hintOf("1 1\nC 4\n"), testing::HasSubstr("C4"));
    EXPECT_THAT(hintOf("1 1\n-\n"), testing::HasSubstr("empty line"));
}

TEST(SongCheck, lengthsThatWereHardlyMeant) {
    EXPECT_THAT(codesOf("1 1\nC# Db E\u266F\n"),
                ElementsAre("2:2 warning accidental", "2:5 warning accidental", "2:8 warning accidental"));
    EXPECT_THAT(codesOf("1 1\nGx A4x\n\n\n"),
                ElementsAre("2:2 warning length-text", "2:5 warning length-text"));
    EXPECT_THAT(
        codesOf("1 1\nC0 D-2 E6\n"),
        ElementsAre("2:2 warning length-zero", "2:5 warning length-negative", "2:9 warning length-long"));
    EXPECT_THAT(codesOf("1 1\nC4294967297\n"), ElementsAre("2:2 warning length-range"));
    EXPECT_THAT(codesOf("1 1\nC1 D5 E+3 F03\n\n\n\n"), IsEmpty());
}

TEST(SongCheck, notesOfTheHeadersLineAreNotPlayed) {
    EXPECT_THAT(codesOf("120 4 C E\nG\n"), ElementsAre("1:7 warning header-notes"));
    EXPECT_THAT(codesOf("120 4 for Anna\nG\n"), IsEmpty());
}

TEST(SongCheck, aLongNoteStraightAfterTheSameNote) {
    EXPECT_THAT(codesOf("1 1\nC\nC2\n"), ElementsAre("3:1 warning repeat-long"));
    EXPECT_THAT(codesOf("1 1\nC3\n\n\nC2\n"), ElementsAre("5:1 warning repeat-long"));
    EXPECT_THAT(codesOf("1 1\nC\n\nC2\n"), IsEmpty());
    EXPECT_THAT(codesOf("1 1\nC2\n\nC\n"), IsEmpty());  // a short one is awarded the same either way
    EXPECT_THAT(codesOf("1 1\nC\nD2\n"), IsEmpty());
}

TEST(SongCheck, aNoteThatBeginsWhileTheSameNoteSounds) {
    EXPECT_THAT(codesOf("1 1\nC3\nE\nC\n"), ElementsAre("4:1 warning overlap"));
    EXPECT_THAT(codesOf("1 1\nC3\nC\n\nC2\n"), ElementsAre("3:1 warning overlap", "5:1 warning repeat-long"));
}

TEST(SongCheck, aNoteThatOutlastsTheSong) {
    EXPECT_THAT(codesOf("1 1\nC3\n\n"), IsEmpty());  // the last line feed makes the third slot
    EXPECT_THAT(codesOf("1 1\nC3\n"), ElementsAre("2:1 warning song-end"));
    EXPECT_THAT(codesOf("1 1\nE C2"), ElementsAre("2:3 warning song-end"));
    EXPECT_EQ(hintOf("1 1\nC5\n"), "add 3 empty lines at the end");
}

TEST(SongCheck, linesPast1023BytesAndWhatComesAfterThem) {
    std::string const longest = "C" + std::string(1021, ' ') + "E";
    EXPECT_THAT(codesOf("1 1\n" + longest + "\nX\n"), ElementsAre("3:1 error note-name"));
    EXPECT_THAT(codesOf("1 1\n" + longest + "2\nX\n"), ElementsAre("2:1024 warning line-long"));
    EXPECT_THAT(codesOf("1 1\n" + longest + "2"), ElementsAre("2:1024 warning line-long"));
    EXPECT_THAT(codesOf("1 1\nC" + std::string(1030, ' ') + "E\nX\n"),
                ElementsAre("2:2 error trailing-blank", "2:1024 warning line-long"));
    EXPECT_THAT(codesOf("1 1 " + std::string(1100, 'x') + "\nX\n"), ElementsAre("1:1024 warning line-long"));
    EXPECT_THAT(checkSong("1 1\n" + longest + "2\nC\nD").front().text,
                testing::HasSubstr("nothing of the 2 lines after it"));
}

TEST(SongCheck, zeroBytesHideTheRestOfTheirLine) {
    EXPECT_THAT(codesOf(std::string("1 1\nC\0X\nD\n", 10)), ElementsAre("2:2 warning nul"));
}

TEST(SongCheck, aSongWithoutNotes) {
    EXPECT_THAT(codesOf("1 1\n"), ElementsAre("1:1 warning no-notes"));
    EXPECT_THAT(codesOf("1 1 \n\n\n"), ElementsAre("1:1 warning no-notes"));
    EXPECT_THAT(codesOf("1 1 "), ElementsAre("1:1 warning no-notes"));
}
