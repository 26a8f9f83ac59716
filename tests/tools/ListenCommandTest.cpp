#include <string>

#include "tests/tools/CommandFixture.h"

namespace {

class ListenCommandTest : public CommandFixture {
protected:
    ListenCommandTest() : CommandFixture(listenCommand) { folder.write("take.wav", ""); }
    ~ListenCommandTest() override { unsetenv("ZANTO_EAR"); }
};

}  // namespace

TEST_F(ListenCommandTest, ProblemsAndWrongUse) {
    folder.write("old.txt", "precious");
    folder.write("short.txt", "120 4\nC\nD\n");
    EXPECT_EQ(renderCommand.run({"short.txt", "-o", "short.wav"}), 0);
    // A header's length of the sound, and a file with a hole of that size.
    const std::string hours = read("short.wav").substr(0, 40) + std::string("\0\0\0\x60", 4);
    std::filesystem::resize_file(folder.write("hours.wav", hours), 0x6000002C);
    expectFailure({"hours.wav", "-o", "a.txt"}, 1, "hours.wav: it is longer than 4 hours");
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
    // With two slots in one, a note on an odd slot lies between two.
    folder.write("odd.txt", "120 4\nC2\n\nD2\n\nE2\n\nF2\n\nG2\n\n\nA3\n\n\n\n");
    EXPECT_EQ(renderCommand.run({"odd.txt", "-o", "odd.wav", "--ahead", "0"}), 0);
    const Outcome unsure = run({"odd.wav", "-o", "b.txt", "--tempo", "60"});
    EXPECT_EQ(unsure.status, 1);
    EXPECT_THAT(unsure.out, testing::StartsWith("b.txt: 6 notes, 60.0 slots a minute, the first at 1.77 s\n"
                                                "Unsure:\n    slot "));
    EXPECT_THAT(unsure.out,
                testing::EndsWith(" s: A begins between two slots, and may have another length\n"));
    EXPECT_EQ(read("b.txt").substr(0, 14), "120 4\nC\nD\nE\nF\n");
}
