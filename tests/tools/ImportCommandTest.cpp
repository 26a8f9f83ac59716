#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

constexpr char const* tune = "X:1\nT:Tune\nM:4/4\nL:1/4\nQ:1/4=100\nK:D\nD E F2 | A2 z2 |]\n";

}  // namespace

TEST_F(ImportCommandTest, whatIsKeptWholeGivesStatus0AndASongThatLoads) {
    folder.write("tune.abc", tune);
    Outcome const outcome = run({"tune.abc", "-o", "tune.txt"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out,
              "tune.txt: 4 of 4 notes of \"Tune\", 6 slots\n"
              "A slot is a 1/4 note: 120 quarter notes a minute, 100 in the original.\n"
              "Transposed down 2 semitones.\n");
    EXPECT_EQ(read("tune.txt"), "120 4\nC\nD\nE2\n\nG2\n\n");
    EXPECT_TRUE(Song().load("tune.txt"));
}

TEST_F(ImportCommandTest, whatIsNotKeptIsNamedAndGivesStatus1) {
    folder.write("tune.abc", "X:1\nM:4/4\nL:1/4\nK:C\nC D E ^F | {a}G4 |]\n");
    Outcome const outcome = run({"tune.abc", "-o", "tune.txt", "--transpose", "0"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out,
                HasSubstr("Not kept:\n    1 group of grace notes\n    bar 1, beat 4: F#4 is no natural"));
    EXPECT_EQ(read("tune.txt"), "120 4\nC\nD\nE\n\nG4\n\n\n\n");
}

TEST_F(ImportCommandTest, warningsOfTheCheckerAreToldAtOnce) {
    folder.write("tune.abc", "X:1\nM:4/4\nL:1/4\nK:C\nC C2 z |]\n");
    EXPECT_THAT(run({"tune.abc", "-o", "tune.txt"}).out,
                HasSubstr("tune.txt:3:1: warning: a long C straight after"));
}

TEST_F(ImportCommandTest, severalVoicesWantAChoice) {
    MidiBytes bytes(96);
    bytes.track().name("Melody").on(0, 0, 72).off(96, 0, 72);
    bytes.track().name("Bass").on(0, 1, 48).off(96, 1, 48).on(0, 1, 55).off(96, 1, 55);
    folder.write("duet.mid", bytes.file());
    Outcome const outcome = run({"duet.mid", "-o", "duet.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "zanto-song import: duet.mid: there are 2 voices in it; choose with --voice:\n"
              "    1  Melody, 1 note\n"
              "    2  Bass, 2 notes\n");
    EXPECT_FALSE(std::filesystem::exists("duet.txt"));

    EXPECT_EQ(run({"duet.mid", "-o", "duet.txt", "--voice", "2"}).status, 0);
    EXPECT_EQ(read("duet.txt"), "120 4\nC\nG\n");
    EXPECT_EQ(run({"duet.mid", "-o", "duet.txt", "--voice", "3"}).status, 1);
    run({"duet.mid", "-o", "duet.txt", "--voice", "all"});
    EXPECT_EQ(read("duet.txt"), "120 4\nC\nG\n");  // the melody's C is the bass's too
}

TEST_F(ImportCommandTest, theSlotCanBeChosen) {
    folder.write("tune.abc", tune);
    EXPECT_EQ(run({"tune.abc", "-o", "tune.txt", "--slot", "1/8"}).status, 0);
    EXPECT_EQ(read("tune.txt").substr(0, 14), "120 4\nC2\n\nD2\n\n");
}

TEST_F(ImportCommandTest, musicXmlIsReadToo) {
    folder.write(
        "a.musicxml",
        "<score-partwise><part id=\"P1\"><measure number=\"1\"><note><pitch><step>G</step><octave>4</octave>"
        "</pitch><duration>1</duration></note></measure></part></score-partwise>");
    EXPECT_EQ(run({"a.musicxml", "-o", "a.txt"}).status, 0);
    EXPECT_EQ(read("a.txt"), "120 4\nG\n");
}

TEST_F(ImportCommandTest, filesOfOtherKindsAreRefusedWithAWayOut) {
    folder.write("a.mxl", "PK");
    folder.write("a.pdf", "%PDF");
    EXPECT_THAT(run({"a.mxl", "-o", "a.txt"}).errors, HasSubstr("compressed MusicXML"));
    EXPECT_THAT(run({"a.pdf", "-o", "a.txt"}).errors, HasSubstr("must end in .mid, .abc or .musicxml"));
    EXPECT_THAT(run({"none.abc", "-o", "a.txt"}).errors, HasSubstr("there is no such file"));
    EXPECT_FALSE(std::filesystem::exists("a.txt"));
}

TEST_F(ImportCommandTest, aSongThatCannotBeWrittenIsNamed) {
    folder.write("tune.abc", tune);
    Outcome const outcome = run({"tune.abc", "-o", "/dev/full"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors, "zanto-song import: /dev/full: cannot be written\n");
}

TEST_F(ImportCommandTest, wrongUseIsStatus2) {
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({"a.abc"}).errors, "zanto-song import: where to? -o OUT.txt is missing\n");
    EXPECT_EQ(run({"a.abc", "b.abc", "-o", "c"}).status, 2);
    EXPECT_EQ(run({"a.abc", "-o", "c", "--slot", "4"}).status, 2);
    EXPECT_EQ(run({"a.abc", "-o", "c", "--slot", "1/0"}).status, 2);
    EXPECT_EQ(run({"a.abc", "-o", "c", "--voice", "first"}).status, 2);
    EXPECT_EQ(run({"a.abc", "-o", "c", "--transpose", "25"}).status, 2);
    EXPECT_EQ(run({"a.abc", "-o", "c", "--tune", "x"}).status, 2);
}
