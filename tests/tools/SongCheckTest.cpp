#include "tools/zanto-song/SongCheck.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tools/zanto-song/ListingCheck.h"
#include "tools/zanto-song/SongFix.h"

namespace {

// Contents of a file, and what is said of it or what becomes of it.
using Cases = std::vector<std::pair<std::string, std::string>>;

// "line:column code" of each problem, with ERROR before the code of one that the game refuses.
std::string codesOf(const std::vector<Problem>& problems) {
    std::string codes;
    for (const Problem& problem : problems) {
        const std::string sign = problem.severity == Problem::Severity::error ? " ERROR " : " ";
        codes += codes.empty() ? "" : ", ";
        codes += std::to_string(problem.line) + ":" + std::to_string(problem.column) + sign + problem.code;
        EXPECT_NE(problem.text, "");
        EXPECT_NE(problem.hint, "") << problem.text;
    }
    return codes;
}

const std::string longestLine = "C" + std::string(1021, ' ') + "E";

}  // namespace

TEST(SongCheck, EveryProblemIsNamedWithItsPlaceInTheOrderOfTheLines) {
    const Cases cases = {
        {"120 4\nC E G\n\nD2\n", ""},
        {"-1\n+3   a song for beginners\nC5\n  G\tE\nA1\n\n", ""},
        {"1 1\nC h \n\nC# D9\nE E\r\nX\n",
         "2:3 ERROR note-name, 2:4 ERROR trailing-blank, 4:2 accidental, 4:5 length-long, 5:3 doubled, "
         "5:4 ERROR carriage-return, 6:1 ERROR note-name"},
        {"1 1\n\u00E9 C h\n", "2:1 ERROR note-name, 2:5 ERROR note-name"},  // columns count characters
        // Headers
        {"", "1:1 ERROR header-end"},
        {"\n\n", "3:1 ERROR header-end"},
        {"1 1", "1:4 ERROR header-end"},
        {"abc", "1:1 ERROR header-number"},
        {"1 1.5\nC\n", ""},  // the rest of the line is passed over
        {"1.5 1\nC\n", "1:2 ERROR header-number"},
        {"12 3000000000\nC\n", "1:4 ERROR header-range"},
        {"\uFEFF1 1\nC\n", "1:1 ERROR byte-order-mark"},
        {"abc\nC \n", "1:1 ERROR header-number, 2:2 ERROR trailing-blank"},
        {"C E\nD#\n", "1:1 ERROR header-number, 2:2 accidental"},  // no header at all
        {"120 4 C E\nG\n", "1:7 header-notes"},
        {"120 4 for Anna\nG\n", ""},
        // Blanks
        {"1 1\nC \nE\t \nG \r\n\r\n   \n  C  E",
         "2:2 ERROR trailing-blank, 3:2 ERROR trailing-blank, 4:2 ERROR trailing-blank, "
         "5:1 ERROR carriage-return, 6:1 ERROR blank-line"},
        // Lengths
        {"1 1\nC# Db E\u266F\n", "2:2 accidental, 2:5 accidental, 2:8 accidental"},
        {"1 1\nGx A4x\n\n\n", "2:2 length-text, 2:5 length-text"},
        {"1 1\nC0 D-2 E6\n", "2:2 length-zero, 2:5 length-negative, 2:9 length-long"},
        {"1 1\nC4294967297\n", "2:2 length-range"},
        {"1 1\nC1 D5 E+3 F03\n\n\n\n", ""},
        // A long note straight after the same note; a short one is awarded the same either way
        {"1 1\nC\nC2\n", "3:1 repeat-long"},
        {"1 1\nC3\n\n\nC2\n", "5:1 repeat-long"},
        {"1 1\nC\n\nC2\n", ""},
        {"1 1\nC2\n\nC\n", ""},
        {"1 1\nC\nD2\n", ""},
        // Notes that sound for too long; the last line feed makes one more slot
        {"1 1\nC3\nE\nC\n", "4:1 overlap"},
        {"1 1\nC3\nC\n\nC2\n", "3:1 overlap, 5:1 repeat-long"},
        {"1 1\nC3\n\n", ""},
        {"1 1\nC3\n", "2:1 song-end"},
        {"1 1\nE C2", "2:3 song-end"},
        // What the game does not read
        {"1 1\n" + longestLine + "\nX\n", "3:1 ERROR note-name"},
        {"1 1\n" + longestLine + "2\nX\n", "2:1024 line-long"},
        {"1 1\n" + longestLine + "2", "2:1024 line-long"},
        {"1 1\nC" + std::string(1030, ' ') + "E\nX\n", "2:2 ERROR trailing-blank, 2:1024 line-long"},
        {"1 1 " + std::string(1100, 'x') + "\nX\n", "1:1024 line-long"},
        {std::string("1 1\nC\0X\nD\n", 10), "2:2 nul"},
        // Songs without notes
        {"1 1\n", "1:1 no-notes"},
        {"1 1 \n\n\n", "1:1 no-notes"},
        {"1 1 ", "1:1 no-notes"},
    };
    for (const auto& [contents, codes] : cases) {
        EXPECT_EQ(codesOf(checkSong(contents)), codes) << contents;
    }
}

TEST(SongCheck, TextsAndHintsTellWhatWasMeant) {
    const Cases cases = {
        {"1 1\ne2\n", "E as a capital letter"},        {"1 1\nH\n", "write B"},    {"1 1\nC 4\n", "C4"},
        {"1 1\nC5\n", "add 3 empty lines at the end"}, {"1 1\n-\n", "empty line"},
    };
    for (const auto& [contents, hint] : cases) {
        EXPECT_THAT(checkSong(contents).at(0).hint, testing::HasSubstr(hint));
    }
    EXPECT_THAT(checkSong("1 1\n" + longestLine + "2\nC\nD").front().text,
                testing::HasSubstr("nothing of the 2 lines after it"));
}

TEST(SongFix, MendsWhatNeedsNoGuessing) {
    const Cases cases = {
        {"", ""},
        {"120 4\n\nC E2\nG", "120 4\n\nC E2\nG"},
        {"120 4\n  C   E\n", "120 4\n  C   E\n"},
        {"120 4\nbb c# ex h a-2\n", "120 4\nbb c# ex h a-2\n"},
        {"120 4\r\nC\r\n\r\nE", "120 4\nC\n\nE"},
        {"120 4\rC\rE\r", "120 4\nC\nE\n"},
        {"120 4\r\r\nC\n", "120 4\nC\n"},
        {"120 4 \nC \t\n   \nE \r\nG ", "120 4\nC\n\nE\nG"},
        {"120 4 cd\nc e2 g10\n", "120 4 cd\nC E2 G10\n"},
        {"\uFEFF120 4\nC\n", "120 4\nC\n"},
        {"\uFEFF\uFEFF120 4\nC\n", "120 4\nC\n"},
        {"120 4 ", "120 4\n"},  // the header's line needs an end
    };
    for (const auto& [before, after] : cases) {
        EXPECT_EQ(mendSong(before).contents, after);
    }
    // The example of the documentation shows changes with one cause each.
    const MendedSong mended = mendSong("120 4\r\nC\nc  \r\n");
    ASSERT_EQ(mended.changes.size(), 2u);
    EXPECT_EQ(mended.changes[1].line, 3u);
    EXPECT_EQ(mended.changes[1].before, "c  \r");
    EXPECT_EQ(mended.changes[1].what, "carriage return, blanks at the end, capital letters");
}

TEST(ListingCheck, WhatIsHardlyMeantIsAWarningWithItsPlace) {
    const auto stateOf = [](const std::string& name) {
        return name == "bad.txt"
                   ? SongState::faulty
                   : (name == "a.txt" || name == "b.txt" ? SongState::fine : SongState::missing);
    };
    const Cases cases = {
        {"Scale a.txt\nOde\tb.txt\r\n\n", ""},
        {"Scale\na.txt\nOde\nb.txt", ""},  // a pair may span lines
        {"Scale a.txt\nOde c.txt\n", "2:5 listing-missing"},
        {"Scale bad.txt\n", "1:7 listing-faulty"},
        {"Ode to_Joy a.txt\nScale b.txt\n",
         "1:5 listing-blank, 1:5 listing-missing, 2:1 listing-missing, 2:7 listing-single"},
        {"Scale a.txt\nOde\n", "2:1 listing-single"},
        {"Scale a.txt\nScale b.txt\n", "2:1 listing-doubled"},
        {"", "1:1 listing-empty"},
    };
    for (const auto& [contents, codes] : cases) {
        EXPECT_EQ(codesOf(checkListing(contents, stateOf)), codes) << contents;
    }
}
