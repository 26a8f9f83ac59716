#include <string>

#include "tests/tools/CommandFixture.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class ShowCommandTest : public CommandFixture {
protected:
    ShowCommandTest() : CommandFixture(showCommand) { folder.write("my_song.txt", "1 1\nC\n"); }

    std::string svg(const CommandArguments& options = {}) {
        CommandArguments arguments = options;
        arguments.insert(arguments.end(), {"--force", "-o", "a.svg", "--", "my_song.txt"});
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out + outcome.errors, "");
        return read("a.svg");
    }
};

}  // namespace

TEST_F(ShowCommandTest, NamesChooseTheKindOfPictureAndTheTitle) {
    EXPECT_THAT(svg(), AllOf(StartsWith("<svg "), HasSubstr("<title>my song</title>")));
    folder.write("listing.txt", "Other other.txt\nHer_song my_song.txt\n");
    EXPECT_THAT(svg(), HasSubstr("<title>Her song</title>"));
    EXPECT_THAT(svg({"--title", "Title"}), HasSubstr("<title>Title</title>"));
    for (const char* const name : {"a.png", "b.png"}) {
        EXPECT_EQ(run({"my_song.txt", "-o", name, "--night", "--bars", "5"}).status, 0);
    }
    EXPECT_THAT(read("a.png"), StartsWith("\x89PNG"));
    EXPECT_EQ(read("a.png"), read("b.png"));
}

TEST_F(ShowCommandTest, ProblemsAndWrongUse) {
    const std::string where = "where to? -o wants a name that ends in .png or .svg";
    folder.write("bad.txt", "1 1\nX\n");
    folder.write("old.svg", "precious");
    expectFailure({"bad.txt", "-o", "a.svg"}, 1, "bad.txt: does not load; zanto-song check says why");
    expectFailure({"my_song.txt", "-o", "none/a.svg"}, 1, "none/a.svg: No such file or directory");
    expectFailure({"my_song.txt", "-o", "old.svg"}, 1, "old.svg: there is such a file; --force replaces it");
    EXPECT_EQ(read("old.svg"), "precious");
    expectFailure({}, 2, "which song?");
    expectFailure({"my_song.txt"}, 2, where);
    expectFailure({"my_song.txt", "-o", "a.gif"}, 2, where);
    expectFailure({"my_song.txt", "-o", "a.svg", "--bars", "1"}, 2, "--bars wants a whole number, 2 to 16");
}
