#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "game/Song.h"
#include "tests/fuzz/InputFile.h"
#include "tools/common/QuietStream.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SongCheck.h"
#include "tools/zanto-song/SongFix.h"

namespace {

// Song files that are nearly right, put together from what people and programs leave in them.
std::string randomSong(std::mt19937& random) {
    static const std::string headers[] = {"1 1",    "x 1\n",     "\xEF\xBB\xBF 1 1\n",
                                          "1\n2\n", "+1 -2 C\n", "\n\n 1 "};
    static const std::string letters("CDEFGABCDEFGABCDEFGAB\n\n\n\n\n\n\n\n  23\r\tc#-\v\xC3\xA9\0", 42);
    const auto letter = [&] { return letters.at(random() % letters.size()); };
    std::string text = random() % 10 == 0 ? headers[random() % 6] : "120 4\n";
    for (auto count = random() % 24; count > 0; --count) {
        text += letter();
    }
    if (random() % 5 == 0) {  // a number too large, or a line too long
        text.insert(random() % text.size(), random() % 2 == 0 ? 12 : 1010 + random() % 20, letter());
    }
    return text;
}

bool hasError(const std::vector<Problem>& problems) {
    return std::any_of(problems.begin(), problems.end(),
                       [](const Problem& problem) { return problem.severity == Problem::Severity::error; });
}

bool loads(const std::string& contents) {
    static const InputFile file;
    static Song song;
    file.write(contents);
    const QuietErrors quiet;
    return song.load(file.path());
}

}  // namespace

TEST(SongCheckProperty, HoldsForManySongs) {
    std::mt19937 random(1);
    int refused = 0;
    const int songs = 12000;
    for (int round = 0; round < songs; ++round) {
        const std::string contents = randomSong(random);
        SCOPED_TRACE("round " + std::to_string(round) + ": " + quoted(contents));
        const bool loaded = loads(contents);
        refused += loaded ? 0 : 1;
        const std::vector<Problem> problems = checkSong(contents);
        ASSERT_EQ(hasError(problems), !loaded);
        ASSERT_TRUE(
            std::is_sorted(problems.begin(), problems.end(), [](const Problem& left, const Problem& right) {
                return std::tie(left.line, left.column) < std::tie(right.line, right.column);
            }));
        const MendedSong once = mendSong(contents);
        const MendedSong twice = mendSong(once.contents);
        ASSERT_EQ(twice.contents, once.contents);
        ASSERT_TRUE(twice.changes.empty());
        ASSERT_EQ(once.changes.empty(), once.contents == contents);
        // Mending breaks no song. A line that the game cuts hides what comes after it, until mending makes it
        // short.
        ASSERT_TRUE(!loaded || contents.size() > 1000 || loads(once.contents));
    }
    // They must try both sides of the question.
    EXPECT_GT(refused, songs / 4);
    EXPECT_LT(refused, songs * 3 / 4);
}
