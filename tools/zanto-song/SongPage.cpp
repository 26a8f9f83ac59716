#include "tools/zanto-song/SongPage.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "analysis/Notes.h"
#include "game/Rules.h"
#include "game/Song.h"
#include "tools/common/Text.h"
#include "tools/zanto-song/Staff.h"
#include "tools/zanto-song/songText.h"

namespace {

using namespace staff;
using rules::secondsPerSlot;
using rules::slotsPerBar;

// Millimetres.
constexpr double titleSize = 6.5;
constexpr double firstLine = 34.0;  // from the top to the first line's bar numbers
constexpr double footerSize = 2.6;
constexpr double nameSize = 2.7;
constexpr double nameSpacing = 3.1;
constexpr double lineGap = 8.0;  // between the names of one line and the bar numbers of the next

std::string minutes(double seconds) {
    const int whole = static_cast<int>(seconds);
    const std::string rest = std::to_string(whole % 60);
    return std::to_string(whole / 60) + ":" + (rest.size() < 2 ? "0" : "") + rest;
}

class SongPage {
public:
    SongPage(const Song& song_, const PageStyle& style_)
        : song(song_), style(style_), ink(style_.night ? night : paper), slotCount(slotsWithNotes(song_)) {}

    Page draw() {
        barsPerLine = style.barsPerLine > 0 ? style.barsPerLine : chooseBarsPerLine();
        page.width = pageWidth;
        page.height = std::max(pageHeight, heightWith(barsPerLine));
        page.background = ink.background;
        page.title = style.title;
        page.description = describe();
        page.texts.push_back(
            {margin, margin + titleSize, titleSize, Page::Anchor::start, ink.notes, style.title});
        double top = firstLine;
        for (std::size_t line = 0; line < lineCount(barsPerLine); ++line) {
            drawLine(line * slotsPerLine(), top);
            top += lineHeight(barsPerLine, line) + lineGap;
        }
        page.texts.push_back({margin, page.height - margin, footerSize, Page::Anchor::start, ink.texts,
                              "One slot lasts half a second; a bar line stands before every fourth."});
        return std::move(page);
    }

private:
    std::size_t slotsPerLine() const { return static_cast<std::size_t>(barsPerLine) * slotsPerBar; }
    std::size_t lineCount(int bars) const {
        const std::size_t perLine = static_cast<std::size_t>(bars) * slotsPerBar;
        return (slotCount + perLine - 1) / perLine;
    }

    int chooseBarsPerLine() const;
    std::size_t mostAtOnce(int bars, std::size_t line) const;
    double lineHeight(int bars, std::size_t line) const;
    double heightWith(int bars) const;
    std::string describe() const;
    void drawLine(std::size_t first, double top);
    void drawMarks(StaffLine& line, std::size_t end);
    void drawNames(const StaffLine& line, std::size_t first, std::size_t end);

    const Song& song;
    const PageStyle& style;
    const Ink& ink;
    std::size_t slotCount;
    int barsPerLine = 4;
    Page page;
};

// The largest number of notes that begin in one slot of the line; their names stand beneath each other.
std::size_t SongPage::mostAtOnce(int bars, std::size_t line) const {
    const std::size_t perLine = static_cast<std::size_t>(bars) * slotsPerBar;
    std::size_t most = 1;
    for (std::size_t slot = line * perLine; slot < std::min((line + 1) * perLine, slotCount); ++slot) {
        most = std::max(most, song.getSlots()[slot].size());
    }
    return most;
}

double SongPage::lineHeight(int bars, std::size_t line) const {
    return barTop * slotWidth(bars) + nameSpacing * (1.0 + static_cast<double>(mostAtOnce(bars, line)));
}

double SongPage::heightWith(int bars) const {
    double height = firstLine + 2.0 * margin;
    for (std::size_t line = 0; line < lineCount(bars); ++line) {
        height += lineHeight(bars, line) + lineGap;
    }
    return height;
}

int SongPage::chooseBarsPerLine() const {
    for (const int bars : {4, 5, 6}) {
        if (heightWith(bars) <= pageHeight) {
            return bars;
        }
    }
    return 8;
}

std::string SongPage::describe() const {
    std::string text = counted(slotCount, "slot") + ", " +
                       minutes(static_cast<double>(slotCount) * secondsPerSlot) + " minutes. Notes by slot:";
    for (std::size_t slot = 0; slot < slotCount; ++slot) {
        for (const Song::NoteMark& mark : song.getSlots()[slot]) {
            text += " " + std::to_string(slot) + " " + Notes::idToName(mark.note) +
                    (mark.length == 1 ? "" : std::to_string(mark.length)) + ";";
        }
    }
    return text;
}

// The part of each note that lies on this line.
void SongPage::drawMarks(StaffLine& line, std::size_t end) {
    for (std::size_t slot = 0; slot < end; ++slot) {
        for (const Song::NoteMark& mark : song.getSlots()[slot]) {
            const double centre = static_cast<double>(slot) + halfSlot;
            line.drawStroke(centre - noteReach, centre + static_cast<double>(mark.length) - 1.0 + noteReach,
                            mark.note, noteThickness * slotWidth(barsPerLine), ink.notes);
        }
    }
}

void SongPage::drawNames(const StaffLine& line, std::size_t first, std::size_t end) {
    for (std::size_t slot = first; slot < end; ++slot) {
        std::vector<int> notes;
        for (const Song::NoteMark& mark : song.getSlots()[slot]) {
            notes.push_back(mark.note);
        }
        // As on the staff: the highest on top.
        std::sort(notes.begin(), notes.end(), std::greater<int>());
        double baseline = line.y(0.0) + 1.7 * nameSpacing;
        for (const int note : notes) {
            page.texts.push_back({line.x(static_cast<double>(slot) + halfSlot), baseline, nameSize,
                                  Page::Anchor::middle, ink.notes, Notes::idToName(note)});
            baseline += nameSpacing;
        }
    }
}

void SongPage::drawLine(std::size_t first, double top) {
    const std::size_t end = std::min(first + slotsPerLine(), slotCount);
    StaffLine line(page, ink, slotWidth(barsPerLine), first, end, top);
    line.drawRows();
    line.drawBars(end == slotCount);
    drawMarks(line, end);
    drawNames(line, first, end);
    page.texts.push_back({pageWidth - margin, line.y(barTop) - 0.5 * numberSize, numberSize,
                          Page::Anchor::end, ink.texts,
                          minutes(static_cast<double>(first) * secondsPerSlot)});
}

}  // namespace

Page layOut(const Song& song, const PageStyle& style) {
    return SongPage(song, style).draw();
}
