#include "tools/zanto-song/SongPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <pugixml.hpp>
#include <string>
#include <utility>
#include <vector>

#include "game/Song.h"
#include "platform/timage/Image.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/tools/Outcome.h"

namespace {

constexpr double slotWidth = (210.0 - 30.0 - 6.0) / 16.0;  // four bars to a line
constexpr double staffLeft = 21.0;

// Rows, staff lines, bar lines and names are shown by the picture of the documentation, which a test draws
// again.
class SongPageTest : public testing::Test {
protected:
    Page draw(const std::string& text, const PageStyle& style = {}) {
        EXPECT_TRUE(song.load(folder.write("song.txt", text).c_str()));
        return layOut(song, style);
    }

    // The strokes of notes: the thickest lines.
    static std::vector<Page::Line> notesOf(const Page& page) {
        std::vector<Page::Line> notes;
        std::copy_if(page.lines.begin(), page.lines.end(), std::back_inserter(notes),
                     [](const Page::Line& line) { return std::abs(line.width - 0.14 * slotWidth) < 1e-9; });
        return notes;
    }
    static auto barsOf(const Page& page) {
        return std::count_if(page.lines.begin(), page.lines.end(),
                             [](const Page::Line& line) { return line.x1 == line.x2; });
    }

    TemporaryFolder folder;
    Song song;
};

std::string manySlots(std::size_t count) {
    return "1 1\n" + std::string(count - 1, '\n') + "C\n";
}

}  // namespace

TEST_F(SongPageTest, ANoteSpansItsSlotsWithATenthOfASlotFreeOnBothSidesAndGoesOnInTheNextLine) {
    const std::vector<Page::Line> notes =
        notesOf(draw("1 1\nC\n\nE3\n\n\n" + std::string(9, '\n') + "G5\n\n\n\n\n"));
    const std::vector<std::pair<double, double>> ends = {{0.1, 0.9}, {2.1, 4.9}, {14.1, 16.0}, {0.0, 2.9}};
    ASSERT_EQ(notes.size(), ends.size());
    for (std::size_t index = 0; index < ends.size(); ++index) {
        EXPECT_NEAR(notes[index].x1, staffLeft + ends[index].first * slotWidth, 1e-9);
        EXPECT_NEAR(notes[index].x2, staffLeft + ends[index].second * slotWidth, 1e-9);
    }
    EXPECT_GT(notes[3].y1, notes[2].y1 + 20.0);
    // The empty slot at a file's end gets no line of its own.
    EXPECT_EQ(barsOf(draw(manySlots(16))), 5);
    EXPECT_EQ(barsOf(draw(manySlots(17))), 6);
}

TEST_F(SongPageTest, AShortSongFitsA4AndAVeryLongOneMakesThePageLonger) {
    EXPECT_EQ(draw(manySlots(40)).height, 297.0);
    const Page fuller = draw(manySlots(110));  // more bars to a line
    EXPECT_EQ(fuller.height, 297.0);
    EXPECT_TRUE(notesOf(fuller).empty());
    const Page longer = draw(manySlots(1000));
    EXPECT_GT(longer.height, 297.0);
    EXPECT_EQ(longer.width, 210.0);
    for (const Page::Line& line : longer.lines) {
        ASSERT_LT(std::max(line.y1, line.y2), longer.height - 15.0);
    }
}

TEST_F(SongPageTest, TheNightIsWhiteOnBlackAndASongWithoutNotesATitle) {
    PageStyle style;
    style.night = true;
    style.title = "Silence";
    const Page page = draw("1 1\nC\n", style);
    EXPECT_EQ(page.background.red, 0.0);
    EXPECT_EQ(notesOf(page)[0].color.red, 1.0);
    const Page silence = draw("1 1\n", style);
    EXPECT_TRUE(silence.lines.empty());
    EXPECT_EQ(silence.texts.front().text, "Silence");
}

TEST_F(SongPageTest, SvgIsWellFormedWhateverTheTitle) {
    PageStyle style;
    style.title = "A <b> & \"c\" \x01\xFF";
    const Page page = draw("1 1\nC E2\n\n", style);
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(toSvg(page).c_str()));
    const pugi::xml_node svg = document.child("svg");
    EXPECT_STREQ(svg.attribute("width").value(), "210mm");
    EXPECT_STREQ(svg.attribute("viewBox").value(), "0 0 210 297");
    EXPECT_STREQ(svg.child("title").text().as_string(), "A <b> & \"c\"  \uFFFD");
    EXPECT_THAT(svg.child("desc").text().as_string(), testing::HasSubstr("Notes by slot: 0 C; 0 E2;"));
    EXPECT_EQ(document.select_nodes("//line").size(), page.lines.size());
    EXPECT_EQ(document.select_nodes("//text").size(), page.texts.size());
}

TEST_F(SongPageTest, PngHasTheSizeOfThePageAndTheNotesWhereTheyBelongOrIsRefused) {
    Page page = draw("1 1\nC\n\nE\n");
    folder.write("song.png", toPng(page, 4.0, ZANTO_DATA_FOLDER "/Fonts/Vera.ttf"));
    tavi::Image<unsigned char> image(0, 0, 0);
    ASSERT_TRUE(image.read("song.png"));
    EXPECT_EQ(image.width(), 840);
    EXPECT_EQ(image.height(), 1188);
    for (const Page::Line& note : notesOf(page)) {
        const int y = static_cast<int>(4.0 * note.y1);
        EXPECT_EQ(image.at(static_cast<int>(4.0 * (note.x1 + note.x2) / 2.0), y, 0), 0);
        EXPECT_GT(image.at(static_cast<int>(4.0 * (note.x2 + 1.0)), y + 3, 0), 200);
    }
    EXPECT_EQ(failureOf([&] { toPng(page, 1.0, "none.ttf"); }), "the typeface none.ttf cannot be read");
    page.height = 40000.0;
    EXPECT_THAT(failureOf([&] { toPng(page, 1.0, ZANTO_DATA_FOLDER "/Fonts/Vera.ttf"); }),
                testing::HasSubstr("too long for one PNG"));
}
