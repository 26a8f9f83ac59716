#include <string>

#include "game/Song.h"
#include "tests/tools/CommandFixture.h"
#include "tools/zanto-song/SongCheck.h"

namespace {

class PractiseCommandTest : public CommandFixture {
protected:
    PractiseCommandTest() : CommandFixture(practiseCommand) {
        folder.write("song.txt", "120 4\nC\nD\nE4\n\n\n\nG\nG\nA\nB\nC2 E2\n\n");
    }

    // What the command makes of the song, without the header; `said` is what it printed after the first line.
    std::string made(const CommandArguments& options, std::string* said = nullptr) {
        CommandArguments arguments = options;
        arguments.insert(arguments.end(), {"--force", "-o", "out.txt", "--", "song.txt"});
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.errors, "");
        if (said != nullptr) {
            *said = outcome.out.substr(outcome.out.find('\n') + 1);
        }
        const std::string text = read("out.txt");
        for (const Problem& problem : checkSong(text)) {
            ADD_FAILURE() << problem.text;
        }
        EXPECT_EQ(text.substr(0, 6), "120 4\n");
        return text.substr(6);
    }
};

}  // namespace

TEST_F(PractiseCommandTest, AStretchInBarsOfFourSlotsOrInSlots) {
    EXPECT_EQ(made({}), "C\nD\nE4\n\n\n\nG\nG\nA\nB\nC2 E2\n");
    EXPECT_EQ(made({"--bars", "3"}), "A\nB\nC2 E2\n");
    EXPECT_EQ(made({"--bars", "2-3"}), "\n\nG\nG\nA\nB\nC2 E2\n");
    EXPECT_EQ(made({"--slots", "0-1"}), "C\nD\n");
    EXPECT_EQ(run({"song.txt", "-o", "new.txt", "--slots", "0-1"}).out, "new.txt: 2 notes, 2 slots\n");
}

TEST_F(PractiseCommandTest, NotesOutsideARangeBecomeRestsAndARangeGoesOnAfterB) {
    EXPECT_EQ(made({"--notes", "C-E"}), "C\nD\nE4\n\n\n\n\n\n\n\nC2 E2\n");
    EXPECT_EQ(made({"--notes", "A-C"}), "C\n\n\n\n\n\n\n\nA\nB\nC2\n");
    EXPECT_EQ(made({"--notes", "D"}), "\nD\n");
}

TEST_F(PractiseCommandTest, RepeatsBeginWithABarAfterABarOfRest) {
    EXPECT_EQ(made({"--slots", "0-1", "--repeat", "3"}), "C\nD\n\n\n\n\n\n\nC\nD\n\n\n\n\n\n\nC\nD\n");
    EXPECT_EQ(run({"song.txt", "-o", "new.txt", "--slots", "0-1", "--repeat", "3"}).out,
              "new.txt: 2 notes 3 times, 18 slots\n");
    EXPECT_EQ(made({"--bars", "3", "--repeat", "2"}), "A\nB\nC2 E2\n\n\n\n\n\nA\nB\nC2 E2\n");
}

TEST_F(PractiseCommandTest, WhatCannotStayAsItWasIsChangedAndNamed) {
    std::string said;
    // A long note is cut at the end of the stretch and left out after its beginning.
    EXPECT_EQ(made({"--bars", "1"}, &said), "C\nD\nE2\n");
    EXPECT_EQ(said, "    1 note cut off where the stretch ends\n");
    made({"--bars", "2"}, &said);
    EXPECT_EQ(said, "    1 note begun earlier, left out\n");
    made({"--bars", "2", "--notes", "G"}, &said);
    EXPECT_EQ(said, "");
    // Slowed down, E would last eight slots, and the second G could not be heard to begin.
    EXPECT_EQ(made({"--slower", "2", "--slots", "1-7"}, &said), "D2\n\nE5\n\n\n\n\n\n\n\nG\n\nG2\n");
    EXPECT_EQ(said,
              "    1 note shortened to 5 slots, the longest to be judged\n"
              "    1 note shortened so that the same note can be heard to begin again\n");
    folder.write("song.txt", "1 1\nC# D D\nE4\n\nE\nF9\n");
    EXPECT_EQ(made({}, &said), "D\nE2\n\nE\nF2\n");
    EXPECT_EQ(said,
              "    1 note without a length, left out\n"
              "    1 note written twice in a slot, taken once\n"
              "    1 note cut off where the stretch ends\n"
              "    1 note shortened so that the same note can be heard to begin again\n");
}

TEST_F(PractiseCommandTest, EverySongOfTheGameCanBePractisedAtEverySpeed) {
    std::ifstream listing(ZANTO_DATA_FOLDER "/Songs/listing.txt");
    std::string title;
    std::string file;
    while (listing >> title >> file) {
        SCOPED_TRACE(file);
        folder.write("song.txt", read(ZANTO_DATA_FOLDER "/Songs/" + file));
        for (const char* const slower : {"1", "2", "3", "4", "5"}) {
            EXPECT_FALSE(made({"--bars", "1-4", "--slower", slower, "--repeat", "2"}).empty());
        }
    }
}

TEST_F(PractiseCommandTest, ProblemsAndWrongUse) {
    const auto option = [](const std::string& name, const std::string& value) {
        return CommandArguments{"song.txt", "-o", "a.txt", name, value};
    };
    folder.write("broken.txt", "1 1\nC \n");
    folder.write("empty.txt", "1 1\n\n\n");
    folder.write("long.txt", "1 1\n" + std::string(40000, '\n') + "C");
    folder.write("old.txt", "precious");
    expectFailure({}, 2, "which song?");
    expectFailure({"song.txt"}, 2, "where to? -o OUT.txt is missing");
    for (const char* const bars : {"0-1", "8-5", "5-", "-5", "5-6-7", "x"}) {
        expectFailure(option("--bars", bars), 2, "--bars wants numbers from 1, such as 5-8");
    }
    expectFailure(option("--slots", "1.5"), 2, "--slots wants numbers from 0, such as 16-31");
    for (const char* const notes : {"H", "c-g", "C-", "C+G", "CG"}) {
        expectFailure(option("--notes", notes), 2, "--notes wants notes from C to B, such as C-G");
    }
    expectFailure(option("--slower", "6"), 2, "--slower wants a whole number, 1 to 5");
    expectFailure(option("--repeat", "0"), 2, "--repeat wants a whole number, 1 to 99");
    expectFailure({"song.txt", "-o", "a.txt", "--bars", "1", "--slots", "1"}, 2,
                  "--bars and --slots are two ways to say the same; use one");
    expectFailure(option("--bars", "3-4"), 1,
                  "song.txt: there is no bar 4; the song has 3 bars of four slots");
    expectFailure(option("--slots", "12"), 1,
                  "song.txt: there is no slot 12; the song has 12 slots, counted from 0");
    expectFailure(option("--notes", "F"), 1, "song.txt: none of the notes asked for begins in that stretch");
    expectFailure({"empty.txt", "-o", "a.txt"}, 1,
                  "empty.txt: none of the notes asked for begins in that stretch");
    expectFailure({"long.txt", "-o", "a.txt", "--slower", "2"}, 1,
                  "that would be more than a song may have, 80000 slots and 1 MiB; ask for less");
    expectFailure({"broken.txt", "-o", "a.txt"}, 1, "broken.txt: does not load; zanto-song check says why");
    expectFailure({"song.txt", "-o", "old.txt"}, 1, "old.txt: there is such a file; --force replaces it");
    expectFailure({"song.txt", "-o", "song.txt", "--force"}, 1,
                  "song.txt: this is the file that is read; choose another name");
    EXPECT_EQ(read("old.txt"), "precious");
}
