#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

#include "game/Song.h"

// The songs that come with the game are fair: each of these rules keeps a faithful player from losing points
// to how the game listens. CheckCommandTest shows that zanto-song check finds no fault in them.

namespace {

constexpr int mostSlotsWithoutBreath = 18;

struct Sounding {
    int mostWithoutBreath = 0;  ///< slots
    int end = 0;
};

Sounding soundingOf(const Song& song) {
    Sounding found;
    int sinceBreath = 0;
    std::array<int, 7> ends{};
    int slot = 0;
    for (const std::vector<Song::NoteMark>& marks : song.getSlots()) {
        const bool endsLongNote = slot > 0 && std::count(ends.begin(), ends.end(), slot) > 0;
        const bool goesOn = std::any_of(ends.begin(), ends.end(), [&](int end) { return end > slot; });
        for (const Song::NoteMark& mark : marks) {
            // The end of a note of one slot is no breath: it is needed to its last moment.
            ends.at(static_cast<std::size_t>(mark.note)) = mark.length > 1 ? slot + mark.length : 0;
            found.end = std::max(found.end, slot + mark.length);
        }
        sinceBreath = (marks.empty() && !goesOn) || endsLongNote ? 0 : sinceBreath + 1;
        found.mostWithoutBreath = std::max(found.mostWithoutBreath, sinceBreath);
        ++slot;
    }
    return found;
}

// In lower case, without what stands between them.
std::string lettersOf(const std::string& text) {
    std::string letters;
    for (const char letter : text) {
        if (std::isalpha(static_cast<unsigned char>(letter)) != 0) {
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        }
    }
    return letters;
}

}  // namespace

TEST(ShippedSongs, LetThePlayerBreatheEndWithTheirLastNoteAndHavePlayableTitlesAndAKnownOrigin) {
    std::ifstream in("Songs/listing.txt");
    std::ifstream origins(ZANTO_DOCS_FOLDER "/songs.csv");
    std::string title;
    std::string file;
    std::string origin;
    std::getline(origins, origin);  // the heading
    int songs = 0;
    for (; in >> title >> file; ++songs) {
        SCOPED_TRACE(file);
        std::getline(origins, origin);
        const std::string beginning = lettersOf(title).substr(0, 10);
        EXPECT_EQ(lettersOf(origin).substr(0, beginning.size()), beginning);
        Song song;
        ASSERT_TRUE(song.load(("Songs/" + file).c_str()));
        const Sounding sounding = soundingOf(song);
        EXPECT_LE(sounding.mostWithoutBreath, mostSlotsWithoutBreath);
        EXPECT_EQ(sounding.end, static_cast<int>(song.getSlots().size()));
        EXPECT_EQ(file.find_first_not_of("abcdefghijklmnopqrstuvwxyz_."), std::string::npos);
        EXPECT_LE(title.size(), 32u);
    }
    EXPECT_EQ(songs, 40);
}
