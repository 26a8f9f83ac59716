#include "tools/zanto-song/TakePicture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr double slotWidth = (210.0 - 30.0 - 6.0) / 16.0;
constexpr double staffLeft = 21.0;

// Two bars: C is awarded and sounds for two slots.
NamedTake take() {
    NamedTake named{"folder/anna.wav", {}};
    Take& take = named.take;
    take.minDecibel = -65.0;
    take.slotCount = 8;
    take.notes = {{0, 0, 1, TakenNote::Outcome::awarded, 1.75, 1.75, 0.23, 0.225, 2.0, 100.0, {}, -10.0}};
    take.frames.resize(600);
    for (std::size_t frame = 175; frame < 275; ++frame) {
        take.frames[frame].counts[0] = 1;
        take.frames[frame].levelsDb[0] = -10;
    }
    return named;
}

}  // namespace

// Takes with penalties are shown by the picture of the documentation, which a test draws again.
TEST(TakePicture, AnAwardIsTickedAtItsMomentOnWhatWasHeard) {
    const Page line = drawTake("Song", take()).at(1);
    const auto heard = std::find_if(line.lines.begin(), line.lines.end(), [](const Page::Line& stroke) {
        return stroke.color.red == 0.0 && stroke.color.blue == 0.0;
    });
    ASSERT_NE(heard, line.lines.end());
    int ticks = 0;
    for (const Page::Line& stroke : line.lines) {
        if (stroke.color.blue > stroke.color.red) {
            EXPECT_NEAR((stroke.x1 + stroke.x2) / 2.0, staffLeft + 0.5 * slotWidth, 1.5);
            EXPECT_NEAR((stroke.y1 + stroke.y2) / 2.0, heard->y1, 1.5);
            ++ticks;
        }
    }
    EXPECT_EQ(ticks, 2);
}

TEST(TakePicture, LongSongsGoOnInFurtherLinesWhichNoSheetCuts) {
    NamedTake named = take();
    named.take.slotCount = 200;
    named.take.notes.push_back(named.take.notes.back());
    named.take.notes.back().slot = 198;
    named.take.notes.back().length = 1000;
    const std::vector<Page> strips = drawTake("Song", named);
    EXPECT_EQ(strips.size(), 1u + 13u);
    EXPECT_EQ(strips.back().title, "Bars 49 to 50");
    const Page sheets = onSheets(strips);
    EXPECT_EQ(std::fmod(sheets.height, 297.0), 0.0);
    EXPECT_GT(sheets.height, 297.0);
    for (const Page::Line& stroke : sheets.lines) {
        EXPECT_EQ(std::floor(stroke.y1 / 297.0), std::floor(stroke.y2 / 297.0));
    }
}

TEST(TakePicture, ATakeOfASongWithoutNotesIsAnEmptyStaff) {
    NamedTake silent{"a.wav", {}};
    silent.take.slotCount = 1;
    EXPECT_EQ(drawTake("Song", silent).size(), 2u);
}
