#include "tools/zanto-song/SongPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <pugixml.hpp>
#include <string>
#include <vector>

#include "game/Song.h"
#include "platform/timage/Image.h"
#include "tests/support/TemporaryFolder.h"

namespace {

using testing::DoubleNear;
using testing::ElementsAre;

constexpr double slotWidth = (210.0 - 30.0 - 6.0) / 16.0;  // four bars to a line
constexpr double staffLeft = 21.0;

class SongPageTest : public testing::Test {
protected:
    Page draw(std::string const& text, PageStyle const& style = {}) {
        EXPECT_TRUE(song.load(folder.write("song.txt", text).c_str()));
        return layOut(song, style);
    }

    // The strokes of notes: the thickest lines.
    static std::vector<Page::Line> notesOf(Page const& page, double width = slotWidth) {
        std::vector<Page::Line> notes;
        for (Page::Line const& line : page.lines) {
            if (std::abs(line.width - 0.14 * width) < 1e-9) {
                notes.push_back(line);
            }
        }
        return notes;
    }
    static std::vector<Page::Line> barsOf(Page const& page) {
        std::vector<Page::Line> bars;
        for (Page::Line const& line : page.lines) {
            if (line.x1 == line.x2) {
                bars.push_back(line);
            }
        }
        return bars;
    }
    static std::vector<std::string> textsAt(Page const& page, double size) {
        std::vector<std::string> texts;
        for (Page::Text const& text : page.texts) {
            if (text.size == size) {
                texts.push_back(text.text);
            }
        }
        return texts;
    }

    TemporaryFolder folder;
    Song song;
};

std::string manySlots(int count) {
    std::string text = "1 1\n";
    for (int slot = 0; slot < count; ++slot) {
        text += "C\n";
    }
    return text;
}

}  // namespace

TEST_F(SongPageTest, aNoteSpansItsSlotsWithATenthOfASlotFreeOnBothSides) {
    std::vector<Page::Line> const notes = notesOf(draw("1 1\nC\n\nE3\n\n\n"));
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_THAT(notes[0].x1, DoubleNear(staffLeft + 0.1 * slotWidth, 1e-9));
    EXPECT_THAT(notes[0].x2, DoubleNear(staffLeft + 0.9 * slotWidth, 1e-9));
    EXPECT_THAT(notes[1].x1, DoubleNear(staffLeft + 2.1 * slotWidth, 1e-9));
    EXPECT_THAT(notes[1].x2, DoubleNear(staffLeft + 4.9 * slotWidth, 1e-9));
}

TEST_F(SongPageTest, rowsAreTwoSeventhsOfASlotApartWithCAtTheBottom) {
    std::vector<Page::Line> const notes = notesOf(draw("1 1\nC D B\n"));
    ASSERT_EQ(notes.size(), 3u);
    EXPECT_THAT(notes[0].y1 - notes[1].y1, DoubleNear(2.0 / 7.0 * slotWidth, 1e-5));
    EXPECT_THAT(notes[0].y1 - notes[2].y1, DoubleNear(12.0 / 7.0 * slotWidth, 1e-5));
}

TEST_F(SongPageTest, theStaffHasTheGamesFiveLines) {
    std::vector<double> heights;
    Page const page = draw("1 1\nC\n");
    double const lowest = notesOf(page)[0].y1;
    for (Page::Line const& line : page.lines) {
        if (line.y1 == line.y2 && line.width < 0.2) {
            heights.push_back((lowest - line.y1) / slotWidth * 7.0 / 2.0);
        }
    }
    EXPECT_THAT(heights, ElementsAre(DoubleNear(0, 1e-5), DoubleNear(2, 1e-5), DoubleNear(4, 1e-5),
                                     DoubleNear(6, 1e-5), DoubleNear(8, 1e-5)));
}

TEST_F(SongPageTest, barLinesStandBeforeEveryFourthSlotAndAreNumbered) {
    Page const page = draw(manySlots(9));
    std::vector<Page::Line> const bars = barsOf(page);
    ASSERT_EQ(bars.size(), 4u);  // with the one at the end
    EXPECT_THAT(bars[1].x1, DoubleNear(staffLeft + 4.0 * slotWidth, 1e-9));
    EXPECT_THAT(bars[3].x1, DoubleNear(staffLeft + 9.0 * slotWidth, 1e-9));
    EXPECT_THAT(bars[0].y1 - bars[0].y2, DoubleNear((2.5 - 4.0 / 7.0) * slotWidth, 1e-9));
    EXPECT_THAT(textsAt(page, 2.4), ElementsAre("1", "2", "3", "0:00"));
}

TEST_F(SongPageTest, theNamesOfNotesStandBeneathThemTheHighestOnTop) {
    Page const page = draw("1 1\nC E\n\nG4\n\n\n\n");
    std::vector<std::string> names;
    for (Page::Text const& text : page.texts) {
        if (text.anchor == Page::Anchor::middle) {
            names.push_back(text.text);
        }
    }
    EXPECT_THAT(names, ElementsAre("E", "C", "G"));
}

TEST_F(SongPageTest, aNoteThatReachesIntoTheNextLineGoesOnThere) {
    std::string text = manySlots(14) + "G5\n\n\n\n\n";
    std::vector<Page::Line> const notes = notesOf(draw(text));
    ASSERT_EQ(notes.size(), 16u);
    EXPECT_THAT(notes[14].x1, DoubleNear(staffLeft + 14.1 * slotWidth, 1e-9));
    EXPECT_THAT(notes[14].x2, DoubleNear(staffLeft + 16.0 * slotWidth, 1e-9));
    EXPECT_THAT(notes[15].x1, DoubleNear(staffLeft, 1e-9));
    EXPECT_THAT(notes[15].x2, DoubleNear(staffLeft + 2.9 * slotWidth, 1e-9));
    EXPECT_GT(notes[15].y1, notes[14].y1 + 20.0);
}

TEST_F(SongPageTest, theEmptySlotAtAFilesEndGetsNoLineOfItsOwn) {
    EXPECT_EQ(barsOf(draw(manySlots(16))).size(), 5u);
    EXPECT_EQ(barsOf(draw(manySlots(17))).size(), 6u);
}

TEST_F(SongPageTest, aShortSongFitsA4AndAVeryLongOneMakesThePageLonger) {
    EXPECT_EQ(draw(manySlots(40)).height, 297.0);
    Page const fuller = draw(manySlots(110));  // more bars to a line
    EXPECT_EQ(fuller.height, 297.0);
    EXPECT_TRUE(notesOf(fuller).empty());
    Page const longer = draw(manySlots(1000));
    EXPECT_GT(longer.height, 297.0);
    EXPECT_EQ(longer.width, 210.0);
    for (Page::Line const& line : longer.lines) {
        ASSERT_LT(std::max(line.y1, line.y2), longer.height - 15.0);
    }
}

TEST_F(SongPageTest, theNightIsWhiteOnBlack) {
    PageStyle style;
    style.night = true;
    Page const page = draw("1 1\nC\n", style);
    EXPECT_EQ(page.background, 0.0);
    EXPECT_EQ(notesOf(page)[0].grey, 1.0);
}

TEST_F(SongPageTest, aSongWithoutNotesIsATitle) {
    PageStyle style;
    style.title = "Silence";
    Page const page = draw("1 1\n", style);
    EXPECT_TRUE(page.lines.empty());
    EXPECT_EQ(page.texts.front().text, "Silence");
}

TEST_F(SongPageTest, svgIsWellFormedWhateverTheTitle) {
    PageStyle style;
    style.title = "A <b> & \"c\" \x01\xFF";
    Page const page = draw("1 1\nC E2\n\n", style);
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(toSvg(page).c_str()));
    pugi::xml_node const svg = document.child("svg");
    EXPECT_STREQ(svg.attribute("width").value(), "210mm");
    EXPECT_STREQ(svg.attribute("viewBox").value(), "0 0 210 297");
    EXPECT_STREQ(svg.child("title").text().as_string(), "A <b> & \"c\"  \uFFFD");
    EXPECT_THAT(svg.child("desc").text().as_string(), testing::HasSubstr("Notes by slot: 0 C; 0 E2;"));
    std::size_t lines = 0;
    std::size_t texts = 0;
    for (pugi::xml_node const& group : svg.children("g")) {
        lines += static_cast<std::size_t>(
            std::distance(group.children("line").begin(), group.children("line").end()));
        texts += static_cast<std::size_t>(
            std::distance(group.children("text").begin(), group.children("text").end()));
    }
    EXPECT_EQ(lines, page.lines.size());
    EXPECT_EQ(texts, page.texts.size());
}

TEST_F(SongPageTest, pngHasTheSizeOfThePageAndTheNotesWhereTheyBelong) {
    Page const page = draw("1 1\nC\n\nE\n");
    ASSERT_EQ(writePng(page, 4.0, ZANTO_DATA_FOLDER "/Fonts/Vera.ttf", "song.png"), "");
    tavi::Image<unsigned char> image(0, 0, 0);
    ASSERT_TRUE(image.read("song.png"));
    EXPECT_EQ(image.width(), 840);
    EXPECT_EQ(image.height(), 1188);
    for (Page::Line const& note : notesOf(page)) {
        int const y = static_cast<int>(4.0 * note.y1);
        EXPECT_EQ(image.at(static_cast<int>(4.0 * (note.x1 + note.x2) / 2.0), y, 0), 0);
        EXPECT_GT(image.at(static_cast<int>(4.0 * (note.x2 + 1.0)), y + 3, 0), 200);
    }
}

TEST_F(SongPageTest, pngThatCannotBeIsRefusedWithTheReason) {
    char const* const face = ZANTO_DATA_FOLDER "/Fonts/Vera.ttf";
    Page page = draw("1 1\nC\n");
    EXPECT_NE(writePng(page, 1.0, face, "no/such/folder/song.png"), "");
    EXPECT_EQ(writePng(page, 1.0, "none.ttf", "song.png"), "the typeface none.ttf cannot be read");
    page.height = 40000.0;
    EXPECT_THAT(writePng(page, 1.0, face, "song.png"), testing::HasSubstr("too long for one PNG"));
}
