#include <filesystem>
#include <string>

#include "game/Song.h"
#include "tests/support/MidiBytes.h"
#include "tests/tools/CommandFixture.h"

namespace {

using testing::HasSubstr;

class ImportCommandTest : public CommandFixture {
protected:
    ImportCommandTest() : CommandFixture(importCommand) {}
};

constexpr const char* tune = "X:1\nT:Tune\nM:4/4\nL:1/4\nQ:1/4=100\nK:D\nD E F2 | A2 z2 |]\n";

}  // namespace

TEST_F(ImportCommandTest, WhatIsKeptWholeGivesStatus0AndASongThatLoads) {
    folder.write("tune.abc", tune);
    const Outcome outcome = run({"tune.abc", "-o", "tune.txt"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "tune.txt: 4 of 4 notes of \"Tune\", 6 slots\n"
              "A slot is a 1/4 note: 120 quarter notes a minute, 100 in the original.\n"
              "Transposed down 2 semitones.\n");
    EXPECT_EQ(read("tune.txt"), "120 4\nC\nD\nE2\n\nG2\n");
    EXPECT_TRUE(Song().load("tune.txt"));
    folder.write(
        "a.musicxml",
        "<score-partwise><part id=\"P1\"><measure number=\"1\"><note><pitch><step>G</step><octave>4</octave>"
        "</pitch><duration>1</duration></note></measure></part></score-partwise>");
    EXPECT_EQ(run({"a.musicxml", "-o", "a.txt"}).status, 0);
    EXPECT_EQ(read("a.txt"), "120 4\nG\n");
}

TEST_F(ImportCommandTest, SeveralVoicesWantAChoice) {
    MidiBytes bytes(96);
    bytes.track().name("Melody").on(0, 0, 72).off(96, 0, 72);
    bytes.track().name("Bass").on(0, 1, 48).off(96, 1, 48).on(0, 1, 55).off(96, 1, 55);
    folder.write("duet.mid", bytes.file());
    const Outcome outcome = run({"duet.mid", "-o", "duet.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "zanto-song import: duet.mid: there are 2 voices in it; choose with --voice:\n"
              "    1  Melody, 1 note\n"
              "    2  Bass, 2 notes\n");
    EXPECT_FALSE(std::filesystem::exists("duet.txt"));

    EXPECT_EQ(run({"duet.mid", "-o", "duet.txt", "--voice", "2"}).status, 0);
    EXPECT_EQ(read("duet.txt"), "120 4\nC\nG\n");
    EXPECT_EQ(run({"duet.mid", "-o", "duet.txt", "--voice", "3"}).status, 1);
    run({"duet.mid", "-o", "duet.txt", "--voice", "all", "--force"});
    EXPECT_EQ(read("duet.txt"), "120 4\nC\nG\n");  // the melody's C is the bass's too
}

TEST_F(ImportCommandTest, TheSlotCanBeChosenAndWarningsOfTheCheckerAreToldAtOnce) {
    folder.write("tune.abc", "X:1\nM:4/4\nL:1/4\nK:C\nC C2 z |]\n");
    EXPECT_THAT(run({"tune.abc", "-o", "tune.txt"}).out,
                HasSubstr("tune.txt:3:1: warning: a long C straight after"));
    EXPECT_EQ(run({"tune.abc", "-o", "short.txt", "--slot", "1/8"}).status, 0);
    EXPECT_EQ(read("short.txt").substr(0, 10), "120 4\nC2\n\n");
}

TEST_F(ImportCommandTest, ProblemsAndWrongUse) {
    const auto option = [](const std::string& name, const std::string& value) {
        return CommandArguments{"tune.abc", "-o", "c", name, value};
    };
    folder.write("a.mxl", "PK");
    folder.write("a.pdf", "%PDF");
    folder.write("tune.abc", tune);
    folder.write("tune.txt", "precious");
    expectFailure({"a.mxl", "-o", "c"}, 1,
                  "a.mxl: this is compressed MusicXML; save it as plain .musicxml, or unpack it with unzip");
    expectFailure({"a.pdf", "-o", "c"}, 1,
                  "a.pdf: its name must end in .mid, .abc or .musicxml, after what is in it");
    expectFailure({"-o", "c", "--", "-none.abc"}, 1, "-none.abc: there is no such file");
    expectFailure({".", "-o", "c"}, 1, ".: this is a folder");
    expectFailure({"tune.abc", "-o", "tune.txt"}, 1, "tune.txt: there is such a file; --force replaces it");
    expectFailure({"tune.abc", "-o", "tune.abc", "--force"}, 1,
                  "tune.abc: this is the file that is read; choose another name");
    expectFailure({}, 2, "which file?");
    expectFailure({"a.abc"}, 2, "where to? -o OUT.txt is missing");
    expectFailure({"a.abc", "b.abc", "-o", "c"}, 2, "one file at a time");
    expectFailure(option("--slot", "4"), 2, "--slot wants a note value from 1/1 to 1/64");
    expectFailure(option("--slot", "1/0"), 2, "--slot wants a note value from 1/1 to 1/64");
    expectFailure(option("--voice", "first"), 2, "--voice wants a number from 1, or all");
    expectFailure(option("--transpose", "25"), 2, "--transpose wants whole semitones, -24 to 24");
    expectFailure(option("--tune", "x"), 2,
                  "--tune wants the number of a tune, as 4, or 4.2 for the second one of that number");
    EXPECT_FALSE(std::filesystem::exists("c"));
    EXPECT_EQ(read("tune.txt"), "precious");
}
