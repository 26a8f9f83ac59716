#include <filesystem>
#include <string>

#include "tests/support/MidiBytes.h"
#include "tests/tools/CommandFixture.h"

namespace {

using testing::HasSubstr;

// What it prints, with and without --round, is shown by the examples of its documentation.
class ImportCommandTest : public CommandFixture {
protected:
    ImportCommandTest() : CommandFixture(importCommand) {}
};

constexpr const char* tune = "X:1\nT:Tune\nM:4/4\nL:1/4\nQ:1/4=100\nK:D\nD E F2 | A2 z2 |]\n";

}  // namespace

TEST_F(ImportCommandTest, SeveralVoicesWantAChoice) {
    MidiBytes bytes(96);
    bytes.track().name("Melody").program(0, 73).on(0, 0, 72).off(96, 0, 72);
    bytes.track().name("Bass").on(0, 1, 48).off(96, 1, 48).on(0, 1, 55).off(96, 1, 55);
    folder.write("duet.mid", bytes.file());
    const Outcome outcome = run({"duet.mid", "-o", "duet.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "zanto-song import: duet.mid: there are 2 voices in it; choose with --voice:\n"
              "    1  Melody, 1 note, C5 to C5, flute\n"
              "    2  Bass, 2 notes, C3 to G3\n");
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

TEST_F(ImportCommandTest, TheMelodyIsTakenOutOfChordsAndAccompaniment) {
    // Chords with a long bass, legato downwards, then the bass alone.
    folder.write("song.abc",
                 "X:1\nM:4/4\nL:1/4\nQ:1/4=120\nK:C\nV:1\n[CEG] [DFA] G2|F E z2|\nV:2\nC,4|z F, G, z|\n");
    const Outcome outcome = run({"song.abc", "-o", "song.txt", "--melody"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(read("song.txt"), "120 4\nG\nA\nG2\n\nF\nE\nG\n");
    EXPECT_THAT(outcome.out, HasSubstr("The melody is the highest notes; 6 notes below were left out.\n"));
    run({"song.abc", "-o", "bass.txt", "--melody", "--voice", "2"});
    EXPECT_EQ(read("bass.txt"), "120 4\nC4\n\n\n\n\nF\nG\n");
}

TEST_F(ImportCommandTest, AfterTenLinesTheReportSumsUpByKindUnlessAllIsAskedFor) {
    std::string notes;
    for (int bar = 0; bar < 8; ++bar) {
        notes += "C D E ^F|G A ^c d|e8 ";
    }
    folder.write("tune.abc", "X:1\nL:1/4\nK:C\n" + notes + "\n");
    const std::string out = run({"tune.abc", "-o", "tune.txt", "--transpose", "0", "--slot", "1/4"}).out;
    EXPECT_THAT(out, HasSubstr("    and 14 more, which --all lists:\n"
                               "    5 times: a note is longer than 5 slots, the longest that can be judged\n"
                               "    9 times: a note is no natural here and became a rest\n"));
    const std::string all =
        run({"tune.abc", "-o", "tune.txt", "--transpose", "0", "--slot", "1/4", "--all", "--force"}).out;
    EXPECT_EQ(all.find("more"), std::string::npos);
    EXPECT_GT(all.size(), out.size());
}

TEST_F(ImportCommandTest, EverySlotThatTheReportNamesCanBeAskedFor) {
    for (const char* const slot :
         {"1/1", "3/4", "1/2", "3/8", "1/4", "3/16", "1/6", "1/8", "1/12", "1/16", "1/24"}) {
        folder.write("tune.abc", "X:1\nL:" + std::string(slot) + "\nK:C\nC D E\n");
        EXPECT_THAT(run({"tune.abc", "-o", "tune.txt", "--slot", slot, "--force"}).out,
                    HasSubstr("A slot is a " + std::string(slot) + " note: "));
        EXPECT_EQ(read("tune.txt"), "120 4\nC\nD\nE\n");
    }
}

TEST_F(ImportCommandTest, ProblemsAndWrongUse) {
    const auto option = [](const std::string& name, const std::string& value) {
        return CommandArguments{"tune.abc", "-o", "c", name, value};
    };
    folder.write("a.pdf", "%PDF");
    folder.write("tune.abc", tune);
    folder.write("tune.txt", "precious");
    expectFailure({"a.pdf", "-o", "c"}, 1,
                  "a.pdf: its name must end in .mid, .abc, .musicxml or .mxl, after what is in it");
    expectFailure({"-o", "c", "--", "-none.abc"}, 1, "-none.abc: there is no such file");
    expectFailure({".", "-o", "c"}, 1, ".: this is a folder");
    folder.write("empty.mxl", "");
    expectFailure({"empty.mxl", "-o", "c"}, 1, "empty.mxl: the file is empty");
    expectFailure({"tune.abc", "-o", "tune.txt"}, 1, "tune.txt: there is such a file; --force replaces it");
    expectFailure({"tune.abc", "-o", "tune.abc", "--force"}, 1,
                  "tune.abc: this is the file that is read; choose another name");
    expectFailure({}, 2, "which file?");
    expectFailure({"a.abc"}, 2, "where to? -o OUT.txt is missing");
    expectFailure({"a.abc", "b.abc", "-o", "c"}, 2, "one file at a time");
    expectFailure(option("--slot", "4"), 2, "--slot wants a note value as 1/8 or 3/8, of numbers up to 64");
    expectFailure(option("--slot", "1/0"), 2, "--slot wants a note value as 1/8 or 3/8, of numbers up to 64");
    expectFailure(option("--voice", "first"), 2, "--voice wants a number from 1, or all");
    expectFailure(option("--transpose", "25"), 2, "--transpose wants whole semitones, -24 to 24");
    expectFailure(option("--tune", "x"), 2,
                  "--tune wants the number of a tune, as 4, or 4.2 for the second one of that number");
    EXPECT_FALSE(std::filesystem::exists("c"));
    EXPECT_EQ(read("tune.txt"), "precious");
}
