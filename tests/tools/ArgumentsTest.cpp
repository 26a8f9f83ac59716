#include "tools/common/Arguments.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

Arguments sort(std::vector<std::string> const& arguments) {
    return Arguments(arguments, {"--json", "-v"}, {"-o", "--octave"});
}

}  // namespace

TEST(Arguments, flagsOptionsAndFilesMayComeInAnyOrder) {
    Arguments const given = sort({"a", "--json", "-o", "out", "b"});
    EXPECT_EQ(given.problem(), "");
    EXPECT_TRUE(given.has("--json"));
    EXPECT_FALSE(given.has("-v"));
    EXPECT_EQ(given.value("-o"), "out");
    EXPECT_FALSE(given.value("--octave"));
    EXPECT_EQ(given.files(), (std::vector<std::string>{"a", "b"}));
}

TEST(Arguments, anOptionsValueMayBeginWithADash) {
    EXPECT_EQ(sort({"--octave", "-2"}).value("--octave"), "-2");
}

TEST(Arguments, behindTwoDashesEverythingIsAFile) {
    EXPECT_EQ(sort({"--", "--json", "-"}).files(), (std::vector<std::string>{"--json", "-"}));
}

TEST(Arguments, problemsAreNamed) {
    EXPECT_EQ(sort({"--loud"}).problem(), "unknown option --loud");
    EXPECT_EQ(sort({"-o"}).problem(), "-o wants a value");
    EXPECT_EQ(sort({"-o", ""}).problem(), "-o wants a value");
    EXPECT_EQ(sort({"--json", "--json"}).problem(), "--json was given twice");
}

TEST(Arguments, numbersMustBeWholeWordsWithinTheirBounds) {
    EXPECT_EQ(parseNumber("-0.5", -1.0, 1.0), -0.5);
    EXPECT_FALSE(parseNumber("1.1", -1.0, 1.0));
    EXPECT_FALSE(parseNumber("nan", -1.0, 1.0));
    EXPECT_FALSE(parseNumber("1s", -1.0, 1.0));
    EXPECT_FALSE(parseNumber("", -1.0, 1.0));
    EXPECT_EQ(parseWhole("7", 2, 7), 7);
    EXPECT_FALSE(parseWhole("8", 2, 7));
    EXPECT_FALSE(parseWhole("4.0", 2, 7));
}
