#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/tools/CommandFixture.h"

namespace {

using testing::HasSubstr;

class CheckCommandTest : public CommandFixture {
protected:
    CheckCommandTest() : CommandFixture(checkCommand) {}
};

}  // namespace

TEST_F(CheckCommandTest, goodSongsGiveStatus0) {
    folder.write("a.txt", "1 1\nC\n");
    folder.write("b.txt", "1 1\nC\n");
    Outcome const outcome = run({"a.txt", "b.txt"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "2 files: 0 errors, 0 warnings\n");
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(CheckCommandTest, everyProblemHasItsPlaceItsCodeAndAHint) {
    folder.write("a.txt", "1 1\nC \nD#\n");
    Outcome const outcome = run({"a.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out,
              "a.txt:2:2: error: blanks stand behind the last note [trailing-blank]\n"
              "    hint: remove them, or let --fix do it\n"
              "a.txt:3:2: warning: \"D#\" is read as D with the length 0 [accidental]\n"
              "    hint: there are no sharps and flats: transpose the song until it does without\n"
              "1 file: 1 error, 1 warning\n");
}

TEST_F(CheckCommandTest, warningsAloneAreProblemsToo) {
    folder.write("a.txt", "1 1\nD#\n");
    EXPECT_EQ(run({"a.txt"}).status, 1);
}

TEST_F(CheckCommandTest, filesThatCannotBeReadAreErrors) {
    std::filesystem::create_directory("folder");
    Outcome const outcome = run({"nowhere.txt", "folder"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("nowhere.txt:1:1: error: there is no such file [unreadable]\n"));
    EXPECT_THAT(outcome.out, HasSubstr("folder:1:1: error: this is a folder [unreadable]\n"));
    EXPECT_THAT(outcome.out, HasSubstr("2 files: 2 errors, 0 warnings\n"));
}

TEST_F(CheckCommandTest, fixMendsShowsWhatItDidAndKeepsABackup) {
    std::string const contents = "1 1\nC\r\ne2\r\nX\n";
    folder.write("a.txt", contents);
    Outcome const outcome = run({"--fix", "a.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out,
              "a.txt: mended; as it was, it is kept in a.txt.bak\n"
              "a.txt:2: carriage return\n"
              "    - \"C\\r\"\n"
              "    + \"C\"\n"
              "a.txt:3: carriage return, capital letters\n"
              "    - \"e2\\r\"\n"
              "    + \"E2\"\n"
              "a.txt:4:1: error: \"X\" is no note [note-name]\n"
              "    hint: notes are C, D, E, F, G, A and B, with their length behind them if it is not 1\n"
              "1 file: 1 error, 0 warnings\n");
    EXPECT_EQ(read("a.txt"), "1 1\nC\nE2\nX\n");
    EXPECT_EQ(read("a.txt.bak"), contents);
}

TEST_F(CheckCommandTest, fixOverwritesNoEarlierBackup) {
    folder.write("a.txt", "1 1\nC \n");
    folder.write("a.txt.bak", "precious");
    EXPECT_EQ(run({"a.txt", "--fix"}).status, 0);
    EXPECT_EQ(read("a.txt.bak"), "precious");
    EXPECT_EQ(read("a.txt.bak2"), "1 1\nC \n");
}

TEST_F(CheckCommandTest, fixLeavesAGoodSongUntouched) {
    folder.write("a.txt", "1 1\nC\n");
    auto const before = std::filesystem::last_write_time("a.txt");
    EXPECT_EQ(run({"a.txt", "--fix"}).out, "1 file: 0 errors, 0 warnings\n");
    EXPECT_EQ(std::filesystem::last_write_time("a.txt"), before);
    EXPECT_FALSE(std::filesystem::exists("a.txt.bak"));
}

TEST_F(CheckCommandTest, listingsLookForTheirSongsBesideThem) {
    folder.write("Songs/a.txt", "1 1\nC\n");
    folder.write("Songs/bad.txt", "1 1\nC \n");
    folder.write("Songs/mine", "A a.txt\nB b.txt\nBad bad.txt\n");
    Outcome const outcome = run({"--listing", "Songs/mine"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("Songs/mine:2:3: warning: there is no song file \"b.txt\""));
    EXPECT_THAT(outcome.out, HasSubstr("Songs/mine:3:5: warning: the game does not load \"bad.txt\""));
    EXPECT_THAT(outcome.out, HasSubstr("1 file: 0 errors, 2 warnings\n"));
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(CheckCommandTest, aFileCalledListingIsNotTakenForASong) {
    folder.write("Songs/a.txt", "1 1\nC\n");
    folder.write("Songs/listing.txt", "A_song a.txt\n");
    EXPECT_EQ(run({"--fix", "Songs/a.txt", "Songs/listing.txt"}).out, "2 files: 0 errors, 0 warnings\n");
}

TEST_F(CheckCommandTest, jsonHoldsTheSame) {
    folder.write("a.txt", "1 1\nc \n");
    Outcome const outcome = run({"--json", "a.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out,
              "{\n"
              "  \"errors\": 2,\n"
              "  \"warnings\": 0,\n"
              "  \"files\": [\n"
              "    {\n"
              "      \"file\": \"a.txt\",\n"
              "      \"problems\": [\n"
              "        {\n"
              "          \"line\": 2,\n"
              "          \"column\": 1,\n"
              "          \"severity\": \"error\",\n"
              "          \"code\": \"note-name\",\n"
              "          \"text\": \"\\\"c\\\" is no note\",\n"
              "          \"hint\": \"write C as a capital letter, or let --fix do it\"\n"
              "        },\n"
              "        {\n"
              "          \"line\": 2,\n"
              "          \"column\": 2,\n"
              "          \"severity\": \"error\",\n"
              "          \"code\": \"trailing-blank\",\n"
              "          \"text\": \"blanks stand behind the last note\",\n"
              "          \"hint\": \"remove them, or let --fix do it\"\n"
              "        }\n"
              "      ]\n"
              "    }\n"
              "  ]\n"
              "}\n");
    EXPECT_THAT(run({"--json", "--fix", "a.txt"}).out, HasSubstr("\"backup\": \"a.txt.bak\""));
}

TEST_F(CheckCommandTest, wrongUseIsStatus2) {
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({"--loud", "a.txt"}).errors, "zanto-song check: unknown option --loud\n");
    EXPECT_EQ(run({"--listing", "--fix", "a"}).status, 2);
}

TEST_F(CheckCommandTest, theShelfOfSongsHasNoProblem) {
    CommandArguments arguments;
    for (auto const& entry : std::filesystem::directory_iterator(ZANTO_DATA_FOLDER "/Songs")) {
        arguments.push_back(entry.path().string());
    }
    ASSERT_GT(arguments.size(), 10u);
    Outcome const outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.out;
}
