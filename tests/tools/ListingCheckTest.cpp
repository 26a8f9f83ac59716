#include "tools/zanto-song/ListingCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// "line:column code" of each problem, where only the songs a.txt and b.txt are there and bad.txt is faulty.
std::vector<std::string> codesOf(std::string const& contents) {
    std::vector<std::string> codes;
    auto const stateOf = [](std::string const& name) {
        return name == "bad.txt"
                   ? SongState::faulty
                   : (name == "a.txt" || name == "b.txt" ? SongState::fine : SongState::missing);
    };
    for (Problem const& problem : checkListing(contents, stateOf)) {
        EXPECT_EQ(problem.severity, Problem::Severity::warning);  // the game refuses no listing
        codes.push_back(std::to_string(problem.line) + ":" + std::to_string(problem.column) + " " +
                        problem.code);
    }
    return codes;
}

}  // namespace

TEST(ListingCheck, aGoodListingHasNoProblem) {
    EXPECT_THAT(codesOf("Scale a.txt\nOde\tb.txt\r\n\n"), IsEmpty());
    EXPECT_THAT(codesOf("Scale\na.txt\nOde\nb.txt"), IsEmpty());  // a pair may span lines
}

TEST(ListingCheck, namesWithoutAFile) {
    EXPECT_THAT(codesOf("Scale a.txt\nOde c.txt\n"), ElementsAre("2:5 listing-missing"));
}

TEST(ListingCheck, filesThatTheGameDoesNotLoad) {
    EXPECT_THAT(codesOf("Scale bad.txt\n"), ElementsAre("1:7 listing-faulty"));
}

TEST(ListingCheck, namesWithABlankAreToldWhereTheySplit) {
    EXPECT_THAT(
        codesOf("Ode to_Joy a.txt\nScale b.txt\n"),
        ElementsAre("1:5 listing-blank", "1:5 listing-missing", "2:1 listing-missing", "2:7 listing-single"));
}

TEST(ListingCheck, aTrailingWordIsLeftOut) {
    EXPECT_THAT(codesOf("Scale a.txt\nOde\n"), ElementsAre("2:1 listing-single"));
}

TEST(ListingCheck, namesThatStandTwice) {
    EXPECT_THAT(codesOf("Scale a.txt\nScale b.txt\n"), ElementsAre("2:1 listing-doubled"));
}

TEST(ListingCheck, aListingWithoutSongs) {
    EXPECT_THAT(codesOf(""), ElementsAre("1:1 listing-empty"));
}
