#include <string>

#include "tests/tools/CommandFixture.h"

namespace {

class ListenCommandTest : public CommandFixture {
protected:
    ListenCommandTest() : CommandFixture(listenCommand) {
        folder.write("song.txt", "120 4\nC\nD\nE2\n\nC\nC\nG4\n\n\n");
        EXPECT_EQ(renderCommand.run({"song.txt", "-o", "take.wav", "--ahead", "0"}), 0);
    }
    ~ListenCommandTest() override { unsetenv("ZANTO_EAR"); }
};

}  // namespace

TEST_F(ListenCommandTest, ProblemsAndWrongUse) {
    folder.write("old.txt", "precious");
    folder.write("short.txt", "120 4\nC\nD\n");
    EXPECT_EQ(renderCommand.run({"short.txt", "-o", "short.wav"}), 0);
    expectFailure({"short.wav", "-o", "a.txt"}, 1, "short.wav: it is no melody: 2 notes heard in it");
    expectFailure({"none.wav", "-o", "a.txt"}, 1, "none.wav: there is no such file");
    EXPECT_FALSE(std::ifstream("a.txt").good());
    expectFailure({"take.wav", "-o", "old.txt"}, 1, "old.txt: there is such a file; --force replaces it");
    EXPECT_EQ(read("old.txt"), "precious");
    expectFailure({}, 2, "which recording?");
    expectFailure({"take.wav"}, 2, "where to? -o OUT.txt is missing");
    expectFailure({"take.wav", "-o", "a.txt", "--tempo", "3"}, 2, "--tempo wants slots a minute, 30 to 300");
}

TEST_F(ListenCommandTest, SaysWhereItWasUnsure) {
    const Outcome sure = run({"take.wav", "-o", "a.txt"});
    EXPECT_EQ(sure.status, 0) << sure.out << sure.errors;
    EXPECT_EQ(read("a.txt"), read("song.txt"));
    // At two thirds of the tempo many notes lie between slots.
    const Outcome unsure = run({"take.wav", "-o", "a.txt", "--force", "--tempo", "150"});
    EXPECT_EQ(unsure.status, 1);
    EXPECT_THAT(unsure.out + unsure.errors,
                testing::AnyOf(testing::HasSubstr("Unsure:\n    slot "), testing::HasSubstr("no beat")));
}
