#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "game/Song.h"
#include "tools/common/QuietStream.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/SongCheck.h"
#include "tools/zanto-song/SongFix.h"

namespace {

// Song files that are nearly right, and damaged in all the ways that people and programs know.
class SongFuzzer {
public:
    explicit SongFuzzer(unsigned seed) : random(seed) {}

    std::string song() {
        std::string text = chance(10) ? pick(oddHeaders) : std::string("120 4\n");
        for (int lines = below(12); lines > 0; --lines) {
            text += line() + (chance(25) ? pick(lineEnds) : std::string("\n"));
        }
        while (chance(3)) {
            damage(text);
        }
        return text;
    }

    void damage(std::string& text) {
        std::size_t const at = static_cast<std::size_t>(below(static_cast<int>(text.size()) + 1));
        switch (below(4)) {
            case 0:
                text.insert(at, 1, static_cast<char>(below(256)));
                break;
            case 1:
                text.insert(at, pick(oddPieces));
                break;
            case 2:
                text.erase(at, static_cast<std::size_t>(below(4)));
                break;
            default:
                text.insert(at, static_cast<std::size_t>(1015 + below(20)), chance(2) ? ' ' : 'C');
                break;
        }
    }

private:
    template <std::size_t size>
    std::string pick(std::array<std::string, size> const& from) {
        return from.at(static_cast<std::size_t>(below(static_cast<int>(size))));
    }
    int below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random); }
    bool chance(int oneIn) { return below(oneIn) == 0; }

    std::string line() {
        std::string text;
        for (int tokens = below(4); tokens > 0; --tokens) {
            text += (text.empty() ? "" : " ") + (chance(15) ? pick(oddTokens) : note());
        }
        return text;
    }
    std::string note() {
        std::string const name(1, "CDEFGAB"[below(7)]);
        return chance(3) ? name + std::to_string(below(8)) : name;
    }

    std::mt19937 random;
    std::array<std::string, 12> const oddHeaders = {"",
                                                    "1",
                                                    "1 1",
                                                    "1 1 ",
                                                    "x 1\n",
                                                    "1\n2\n",
                                                    "1,2\n",
                                                    "99999999999 1\n",
                                                    "1 -99999999999\n",
                                                    "0x10 4\n",
                                                    "+1 -2 C\n",
                                                    "\n\n 1 \n 1 \n"};
    std::array<std::string, 12> const oddTokens = {"C#", "Gx", "H",  "c", "C-3", "D99999999999",
                                                   "4",  "-",  "E+", "?", "CC",  "F 4"};
    std::array<std::string, 7> const lineEnds = {"\r\n", " \n", "\t\n", "\n\n", "\r", "", "\v\n"};
    std::array<std::string, 8> const oddPieces = {
        "\r\n", " ", "\xEF\xBB\xBF", "\n", std::string(1, '\0'), "\xC3\xA9", "C", "\t"};
};

bool reportsAnError(std::string const& contents) {
    std::vector<Problem> const problems = checkSong(contents);
    return std::any_of(problems.begin(), problems.end(),
                       [](Problem const& problem) { return problem.severity == Problem::Severity::error; });
}

class SongCheckProperty : public testing::Test {
protected:
    SongCheckProperty() : file(memfd_create("song", 0)) {}
    ~SongCheckProperty() override { close(file); }

    // Whether the game loads a file of these contents; one in memory, for there are very many.
    bool loads(std::string const& contents) {
        EXPECT_EQ(ftruncate(file, 0), 0);
        EXPECT_EQ(pwrite(file, contents.data(), contents.size(), 0), static_cast<ssize_t>(contents.size()));
        QuietErrors const quiet;
        return song.load(("/proc/self/fd/" + std::to_string(file)).c_str());
    }

    Song song;
    int file;
};

}  // namespace

TEST_F(SongCheckProperty, anErrorIsReportedExactlyWhenTheGameRefusesTheSong) {
    SongFuzzer fuzzer(1);
    int refused = 0;
    int const songs = 12000;
    for (int round = 0; round < songs; ++round) {
        std::string const contents = fuzzer.song();
        bool const loaded = loads(contents);
        refused += loaded ? 0 : 1;
        ASSERT_EQ(reportsAnError(contents), !loaded) << "round " << round << ": " << quoted(contents);
    }
    // The fuzzer must try both sides of the question.
    EXPECT_GT(refused, songs / 4);
    EXPECT_LT(refused, songs * 3 / 4);
}

TEST_F(SongCheckProperty, theShelfOfSongsStaysInStepUnderDamage) {
    SongFuzzer fuzzer(2);
    int shelf = 0;
    for (auto const& entry : std::filesystem::directory_iterator(ZANTO_DATA_FOLDER "/Songs")) {
        std::ifstream in(entry.path(), std::ios::binary);
        std::string const original(std::istreambuf_iterator<char>(in), {});
        for (int round = 0; round < 60; ++round) {
            std::string contents = original;
            fuzzer.damage(contents);
            ASSERT_EQ(reportsAnError(contents), !loads(contents)) << entry.path() << " round " << round;
        }
        ++shelf;
    }
    EXPECT_GT(shelf, 10);
}

TEST_F(SongCheckProperty, problemsComeInTheOrderOfTheirPlaces) {
    SongFuzzer fuzzer(3);
    for (int round = 0; round < 3000; ++round) {
        std::vector<Problem> const problems = checkSong(fuzzer.song());
        ASSERT_TRUE(std::is_sorted(problems.begin(), problems.end(),
                                   [](Problem const& left, Problem const& right) {
                                       return std::tie(left.line, left.column) <
                                              std::tie(right.line, right.column);
                                   }))
            << "round " << round;
    }
}

TEST_F(SongCheckProperty, mendingTwiceIsMendingOnce) {
    SongFuzzer fuzzer(4);
    for (int round = 0; round < 5000; ++round) {
        std::string const contents = fuzzer.song();
        MendedSong const once = mendSong(contents);
        MendedSong const twice = mendSong(once.contents);
        ASSERT_EQ(twice.contents, once.contents) << "round " << round << ": " << quoted(contents);
        ASSERT_TRUE(twice.changes.empty());
        ASSERT_EQ(once.changes.empty(), once.contents == contents);
    }
}

TEST_F(SongCheckProperty, mendingNeverBreaksASongThatLoads) {
    SongFuzzer fuzzer(5);
    for (int round = 0; round < 5000; ++round) {
        std::string const contents = fuzzer.song();
        // A line that the game cuts hides what comes after it, until mending makes it short enough.
        bool const hides = contents.size() > 1000;
        if (!hides && loads(contents)) {
            ASSERT_TRUE(loads(mendSong(contents).contents)) << "round " << round << ": " << quoted(contents);
        }
    }
}
