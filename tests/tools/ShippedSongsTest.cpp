#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <string>
#include <vector>

#include "game/Song.h"

// The songs that come with the game are fair: each of these rules keeps a faithful player from losing points
// to how the game listens.

namespace {

struct Entry {
    std::string title;
    std::string file;
};

std::vector<Entry> shippedSongs() {
    std::vector<Entry> entries;
    std::ifstream in("Songs/listing.txt");
    Entry entry;
    while (in >> entry.title >> entry.file) {
        entries.push_back(entry);
    }
    return entries;
}

std::string nameOf(testing::TestParamInfo<Entry> const& info) {
    return info.param.file.substr(0, info.param.file.find('.'));
}

using Slots = std::vector<std::vector<Song::NoteMark>>;

class ShippedSong : public testing::TestWithParam<Entry> {
protected:
    void SetUp() override {
        testing::internal::CaptureStderr();
        bool const loaded = song.load(("Songs/" + GetParam().file).c_str());
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        ASSERT_TRUE(loaded);
    }

    Slots const& slots() const { return song.getSlots(); }

    /// The slot after the last one in which `note` sounds, having begun before `slot`.
    int endOf(int note, int slot) const {
        int end = 0;
        for (int k = 0; k < slot; ++k) {
            for (Song::NoteMark const& mark : slots()[static_cast<std::size_t>(k)]) {
                if (mark.note == note) {
                    end = k + mark.length;
                }
            }
        }
        return end;
    }

    int songEnd() const { return static_cast<int>(slots().size()); }

    Song song;
};

constexpr int longestNote = 5;
constexpr int mostSlotsWithoutBreath = 18;

}  // namespace

TEST(ShippedSongs, areADozenOrMore) {
    EXPECT_GE(shippedSongs().size(), 12u);
}

TEST_P(ShippedSong, hasNotesOfOneToFiveSlots) {
    for (std::vector<Song::NoteMark> const& slot : slots()) {
        for (Song::NoteMark const& mark : slot) {
            EXPECT_GE(mark.length, 1);
            EXPECT_LE(mark.length, longestNote);
        }
    }
}

TEST_P(ShippedSong, hasNoNoteThatBeginsWhileItStillSounds) {
    for (int slot = 0; slot < songEnd(); ++slot) {
        for (Song::NoteMark const& mark : slots()[static_cast<std::size_t>(slot)]) {
            EXPECT_LE(endOf(mark.note, slot), slot) << "slot " << slot;
        }
    }
}

TEST_P(ShippedSong, hasNoLongNoteStraightAfterTheSameNote) {
    for (int slot = 1; slot < songEnd(); ++slot) {
        for (Song::NoteMark const& mark : slots()[static_cast<std::size_t>(slot)]) {
            if (mark.length > 1) {
                EXPECT_NE(endOf(mark.note, slot), slot) << "slot " << slot;
            }
        }
    }
}

TEST_P(ShippedSong, letsThePlayerBreathe) {
    int sinceBreath = 0;
    std::array<int, 7> ends{};
    for (int slot = 0; slot < songEnd(); ++slot) {
        bool sounds = false;
        bool endsLongNote = false;
        for (int note = 0; note < 7; ++note) {
            int const end = ends.at(static_cast<std::size_t>(note));
            endsLongNote = endsLongNote || end == slot;
            sounds = sounds || end > slot;
        }
        for (Song::NoteMark const& mark : slots()[static_cast<std::size_t>(slot)]) {
            // The end of a note of one slot is no breath: it is needed to its last moment.
            ends.at(static_cast<std::size_t>(mark.note)) = mark.length > 1 ? slot + mark.length : 0;
            sounds = true;
        }
        sinceBreath = !sounds || (endsLongNote && slot > 0) ? 0 : sinceBreath + 1;
        EXPECT_LE(sinceBreath, mostSlotsWithoutBreath) << "slot " << slot;
    }
}

TEST_P(ShippedSong, endsWithTheLastSlotOfItsLastNote) {
    int end = 0;
    for (int note = 0; note < 7; ++note) {
        end = std::max(end, endOf(note, songEnd()));
    }
    EXPECT_EQ(end, songEnd());
}

TEST_P(ShippedSong, hasAPlayableTitle) {
    EXPECT_EQ(GetParam().file.find_first_not_of("abcdefghijklmnopqrstuvwxyz_."), std::string::npos);
    EXPECT_LE(GetParam().title.size(), 32u);
}

INSTANTIATE_TEST_SUITE_P(, ShippedSong, testing::ValuesIn(shippedSongs()), nameOf);
