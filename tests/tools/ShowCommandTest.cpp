#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/tools/CommandFixture.h"

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ShowCommandTest : public CommandFixture {
protected:
    ShowCommandTest() : CommandFixture(showCommand) {}

    std::string song = folder.write("my_song.txt", "1 1\nC\n");
};

}  // namespace

TEST_F(ShowCommandTest, theEndingOfTheNameChoosesTheKindOfPicture) {
    Outcome const svg = run({"my_song.txt", "-o", "a.svg"});
    EXPECT_EQ(svg.status, 0);
    EXPECT_EQ(svg.out + svg.errors, "");
    EXPECT_THAT(read("a.svg"), StartsWith("<svg "));
    EXPECT_EQ(run({"my_song.txt", "-o", "a.png", "--night", "--bars", "5"}).status, 0);
    EXPECT_THAT(read("a.png"), StartsWith("\x89PNG"));
    EXPECT_EQ(run({"my_song.txt", "-o", "a.gif"}).status, 2);
}

TEST_F(ShowCommandTest, theTitleIsAskedForOrTheListingsOrTheFiles) {
    run({"my_song.txt", "-o", "a.svg"});
    EXPECT_THAT(read("a.svg"), HasSubstr("<title>my song</title>"));
    folder.write("listing.txt", "Other other.txt\nHer_song my_song.txt\n");
    run({"my_song.txt", "-o", "a.svg"});
    EXPECT_THAT(read("a.svg"), HasSubstr("<title>Her song</title>"));
    run({"my_song.txt", "-o", "a.svg", "--title", "Title"});
    EXPECT_THAT(read("a.svg"), HasSubstr("<title>Title</title>"));
}

TEST_F(ShowCommandTest, equalSongsGiveEqualPictures) {
    run({"my_song.txt", "-o", "a.svg"});
    run({"my_song.txt", "-o", "b.svg"});
    EXPECT_EQ(read("a.svg"), read("b.svg"));
    run({"my_song.txt", "-o", "a.png"});
    run({"my_song.txt", "-o", "b.png"});
    EXPECT_EQ(read("a.png"), read("b.png"));
}

TEST_F(ShowCommandTest, problemsAreStatus1) {
    folder.write("bad.txt", "1 1\nX\n");
    EXPECT_EQ(run({"bad.txt", "-o", "a.svg"}).errors,
              "zanto-song show: bad.txt: does not load; zanto-song check says why\n");
    EXPECT_EQ(run({"my_song.txt", "-o", "none/a.svg"}).status, 1);
    EXPECT_EQ(run({"my_song.txt", "-o", "none/a.png"}).status, 1);
}

TEST_F(ShowCommandTest, wrongUseIsStatus2) {
    EXPECT_EQ(run({}).status, 2);
    EXPECT_EQ(run({"my_song.txt"}).status, 2);
    EXPECT_EQ(run({"a", "b", "-o", "a.svg"}).status, 2);
    EXPECT_EQ(run({"my_song.txt", "-o", "a.svg", "--bars", "1"}).status, 2);
}
