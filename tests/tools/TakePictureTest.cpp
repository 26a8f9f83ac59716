#include "tools/zanto-song/TakePicture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace {

using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;

constexpr double slotWidth = (210.0 - 30.0 - 6.0) / 16.0;
constexpr double staffLeft = 21.0;

// Two bars: C is awarded, E is not, and the C sounds on through the E's slot, softer there.
NamedTake take() {
    NamedTake named{"folder/anna.wav", {}};
    Take& take = named.take;
    take.score = 80.0;
    take.minDecibel = -65.0;
    take.slotCount = 8;
    TakenNote c{0, 0, 1, TakenNote::Outcome::awarded, 1.75, 1.75, 0.23, 0.225, 2.0, 100.0, {}, -10.0};
    TakenNote e{1, 2, 1, TakenNote::Outcome::otherNotes, 2.25, {}, 0.0, 0.225, 0.0, 0.0, {0}, -10.0};
    take.notes = {c, e};
    take.penalties = {{1, 0, TakenPenalty::Cause::heldOver, 0, 2.5, 0.36, -20.0, {}}};
    take.frames.resize(600);
    for (std::size_t frame = 175; frame < 275; ++frame) {
        take.frames[frame].counts[0] = 1;
        take.frames[frame].levelsDb[0] = frame < 225 ? -10 : -60;
    }
    return named;
}

std::vector<std::string> wordsOf(const Page& page) {
    std::vector<std::string> words;
    for (const Page::Text& text : page.texts) {
        words.push_back(text.text);
    }
    return words;
}

// Where the strokes of a colour begin, in slots, and how thick they are.
std::vector<Page::Line> strokesOf(const Page& page, bool (*has)(const Page::Color&)) {
    std::vector<Page::Line> strokes;
    for (const Page::Line& line : page.lines) {
        if (has(line.color)) {
            strokes.push_back(line);
        }
    }
    return strokes;
}
bool isBlack(const Page::Color& color) {
    return color.red == 0.0 && color.blue == 0.0;
}
bool isOrange(const Page::Color& color) {
    return color.red > color.blue;
}
bool isBlue(const Page::Color& color) {
    return color.blue > color.red;
}

}  // namespace

TEST(TakePicture, ShowsWhatWasHeardByPitchTimeAndLoudnessAndWhatCameOfIt) {
    const std::vector<Page> strips = drawTake("Song", take());
    ASSERT_EQ(strips.size(), 2u);
    EXPECT_EQ(strips[0].title, "anna.wav plays Song");
    EXPECT_EQ(strips[0].description, "80 points, 1 of 2 notes awarded, 1 penalty");
    const Page& line = strips[1];
    EXPECT_THAT(wordsOf(line), AllOf(Contains("C +100"), Contains("E missed"), Contains("heard C"),
                                     Contains("C -20"), Contains("held on"), Contains("= 80")));

    const std::vector<Page::Line> heard = strokesOf(line, isBlack);
    ASSERT_EQ(heard.size(), 2u);
    EXPECT_NEAR(heard[0].x1, staffLeft, 1e-9);
    EXPECT_NEAR(heard[0].x2, staffLeft + slotWidth, 1e-9);
    EXPECT_NEAR(heard[1].x2, staffLeft + 2.0 * slotWidth, 1e-9);
    EXPECT_EQ(heard[0].y1, heard[1].y1);
    EXPECT_GT(heard[0].width, 3.0 * heard[1].width);

    // The tick and the cross stand in the row of the C, at their moments.
    for (const auto& [has, slot] : {std::make_pair(isBlue, 0.5), std::make_pair(isOrange, 1.5)}) {
        for (const Page::Line& stroke : strokesOf(line, has)) {
            EXPECT_NEAR((stroke.x1 + stroke.x2) / 2.0, staffLeft + slot * slotWidth, 1.5);
            EXPECT_NEAR((stroke.y1 + stroke.y2) / 2.0, heard[0].y1, 1.5);
        }
        EXPECT_EQ(strokesOf(line, has).size(), 2u);
    }
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
