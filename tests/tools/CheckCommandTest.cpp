#include <filesystem>
#include <regex>
#include <string>

#include "tests/tools/CommandFixture.h"

namespace {

using testing::HasSubstr;

// What it prints about faults, and with --fix, is shown by the example of its documentation.
class CheckCommandTest : public CommandFixture {
protected:
    CheckCommandTest() : CommandFixture(checkCommand) {}
};

}  // namespace

TEST_F(CheckCommandTest, WrongUseAndFilesThatCannotBeReadAreErrors) {
    expectFailure({}, 2, "which files?");
    expectFailure({"--loud", "a.txt"}, 2, "unknown option --loud");
    expectFailure({"--listing", "--fix", "a"}, 2,
                  "--fix mends songs; a listing has nothing that it could mend");
    std::filesystem::create_directory("folder");
    const Outcome outcome = run({"--", "folder", "-x"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out,
              "folder:1:1: error: this is a folder [unreadable]\n"
              "    hint: name the files in it, such as folder/*.txt\n"
              "-x:1:1: error: there is no such file [unreadable]\n"
              "    hint: look at its name, and at its permissions\n"
              "2 files: 2 errors, 0 warnings\n");
}

TEST_F(CheckCommandTest, AFileTooLargeToBeCheckedIsNotCalledFaulty) {
    folder.write("large.txt", "120 4\n" + std::string(1u << 20, '\n'));
    EXPECT_EQ(
        run({"large.txt"}).out,
        "large.txt:1:1: warning: the file is larger than 1 MiB: the game may load it, but it was not checked "
        "[file-large]\n"
        "    hint: split the song\n"
        "1 file: 0 errors, 1 warning\n");
}

TEST_F(CheckCommandTest, FixKeepsFilesAsTheyWereAndOneThatCannotBeMendedHidesNoOther) {
    folder.write("a.txt", "1 1\nC \n");
    folder.write("a.txt.bak", "precious");
    folder.write("b/b.txt", "1 1\nC \n");
    // Its backup cannot be written: the name is too long for that.
    const std::string longName = std::string(251, 'x') + ".txt";
    folder.write(longName, "1 1\nC \n");
    const Outcome outcome = run({"a.txt", longName, "b/b.txt", "--fix"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("a.txt: mended; as it was, it is kept in a.txt.bak2\n"));
    EXPECT_THAT(outcome.out, HasSubstr(longName + ":1:1: error: it cannot be mended: "));
    EXPECT_THAT(outcome.out, HasSubstr(longName + ":2:2: error: blanks stand behind the last note"));
    EXPECT_THAT(outcome.out, HasSubstr("b/b.txt: mended; as it was, it is kept in b/b.txt.bak\n"));
    EXPECT_EQ(read(longName), "1 1\nC \n");
    EXPECT_EQ(read("a.txt"), "1 1\nC\n");
    EXPECT_EQ(read("a.txt.bak"), "precious");
    EXPECT_EQ(read("a.txt.bak2"), "1 1\nC \n");
    EXPECT_EQ(run({"a.txt", "--fix"}).out, "1 file: 0 errors, 0 warnings\n");
    EXPECT_FALSE(std::filesystem::exists("a.txt.bak3"));
}

TEST_F(CheckCommandTest, ListingsLookForTheirSongsBesideThem) {
    folder.write("Songs/a.txt", "1 1\nC\n");
    folder.write("Songs/bad.txt", "1 1\nC \n");
    folder.write("Songs/mine", "A a.txt\nB b.txt\nBad bad.txt\n");
    const Outcome outcome = run({"--listing", "Songs/mine"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("Songs/mine:2:3: warning: there is no song file \"b.txt\""));
    EXPECT_THAT(outcome.out, HasSubstr("Songs/mine:3:5: warning: the game does not load \"bad.txt\""));
    EXPECT_THAT(outcome.out, HasSubstr("1 file: 0 errors, 2 warnings\n"));
    EXPECT_EQ(outcome.errors, "");
    folder.write("Songs/listing.txt", "A_song a.txt\n");
    EXPECT_EQ(run({"--fix", "Songs/a.txt", "Songs/listing.txt"}).out, "2 files: 0 errors, 0 warnings\n");
}

TEST_F(CheckCommandTest, JsonHoldsTheSame) {
    folder.write("a.txt", "1 1\nc\n");
    const Outcome outcome = run({"--json", "a.txt"});
    EXPECT_EQ(outcome.status, 1);
    const auto inOneLine = [](const std::string& json) {
        return std::regex_replace(json, std::regex("\n *"), "");
    };
    EXPECT_EQ(inOneLine(outcome.out),
              R"({"errors": 1,"warnings": 0,"files": [{"file": "a.txt","problems": [{"line": 2,"column": 1,)"
              R"("severity": "error","code": "note-name","text": "\"c\" is no note",)"
              R"("hint": "write C as a capital letter, or let --fix do it"}]}]})");
    EXPECT_THAT(
        inOneLine(run({"--json", "--fix", "a.txt"}).out),
        HasSubstr(
            R"("backup": "a.txt.bak","changes": [{"line": 2,"what": "capital letters","before": "c","after": "C"})"));
}

TEST_F(CheckCommandTest, TheShelfOfSongsHasNoProblem) {
    CommandArguments arguments;
    for (const auto& entry : std::filesystem::directory_iterator(ZANTO_DATA_FOLDER "/Songs")) {
        arguments.push_back(entry.path().string());
    }
    ASSERT_GT(arguments.size(), 12u);
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.out;
}
