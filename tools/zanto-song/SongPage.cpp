#include "tools/zanto-song/SongPage.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

#include "analysis/Notes.h"
#include "game/Rules.h"
#include "game/Song.h"
#include "tools/common/Text.h"

namespace {

using rules::secondsPerSlot;
using rules::slotsPerBar;
constexpr int noteCount = Notes::noteCount;

// Millimetres, where nothing else is said.
constexpr double pageWidth = 210.0;
constexpr double pageHeight = 297.0;
constexpr double margin = 15.0;
constexpr double rowNames = 6.0;  // the room for them at the left
constexpr double titleSize = 6.5;
constexpr double firstLine = 34.0;  // from the top to the first line's bar numbers
constexpr double footerSize = 2.6;
constexpr double nameSize = 2.7;
constexpr double nameSpacing = 3.1;
constexpr double numberSize = 2.4;
constexpr double lineGap = 8.0;  // between the names of one line and the bar numbers of the next
constexpr double thinStroke = 0.15;

// In the game's own units: one slot is one wide.
constexpr double rowPitch = 2.0 / 7.0;
constexpr double barBottom = 4.0 / 7.0;
constexpr double barTop = 2.5;
constexpr double noteReach = 0.4;  // to both sides of its first and last slot's centre
constexpr double halfSlot = 0.5;
constexpr double noteThickness = 0.14;

struct Ink {
    double background;
    double notes;
    double staff;
    double lowestRow;
    double texts;
};
constexpr Ink paper = {1.0, 0.0, 0.45, 0.8, 0.3};
constexpr Ink night = {0.0, 1.0, 1.0, 0.25, 0.8};

std::string minutes(double seconds) {
    const int whole = static_cast<int>(seconds);
    const std::string rest = std::to_string(whole % 60);
    return std::to_string(whole / 60) + ":" + (rest.size() < 2 ? "0" : "") + rest;
}

// The slots up to the end of the last note: files end in an empty slot.
std::size_t drawnSlots(const Song& song) {
    const std::vector<std::vector<Song::NoteMark>>& slots = song.getSlots();
    std::int64_t end = 0;
    for (std::size_t slot = 0; slot < slots.size(); ++slot) {
        for (const Song::NoteMark& mark : slots[slot]) {
            end = std::max(end, static_cast<std::int64_t>(slot) + std::max(mark.length, 1));
        }
    }
    return std::min(static_cast<std::size_t>(end), slots.size());
}

class SongPage {
public:
    SongPage(const Song& song_, const PageStyle& style_)
        : song(song_), style(style_), ink(style_.night ? night : paper), slotCount(drawnSlots(song_)) {}

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
    double slotWidth(int bars) const {
        return (pageWidth - 2.0 * margin - rowNames) / (static_cast<double>(bars) * slotsPerBar);
    }
    std::size_t lineCount(int bars) const {
        const std::size_t perLine = static_cast<std::size_t>(bars) * slotsPerBar;
        return (slotCount + perLine - 1) / perLine;
    }

    double x(std::size_t slot, std::size_t first, double offset) const {
        return margin + rowNames +
               (static_cast<double>(slot - first) + halfSlot + offset) * slotWidth(barsPerLine);
    }
    double y(double height, double top) const { return top + (barTop - height) * slotWidth(barsPerLine); }

    int chooseBarsPerLine() const;
    std::size_t mostAtOnce(int bars, std::size_t line) const;
    double lineHeight(int bars, std::size_t line) const;
    double heightWith(int bars) const;
    std::string describe() const;
    void drawLine(std::size_t first, double top);
    void drawStaff(std::size_t first, std::size_t end, double top);
    void drawBars(std::size_t first, std::size_t end, double top);
    void drawMarks(std::size_t first, std::size_t end, double top);
    void drawNames(std::size_t first, std::size_t end, double top);
    void line(double x1, double y1, double x2, double y2, double width, double grey) {
        page.lines.push_back({x1, y1, x2, y2, width, grey});
    }

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

void SongPage::drawStaff(std::size_t first, std::size_t end, double top) {
    const double left = x(first, first, -halfSlot);
    const double right = x(end - 1, first, halfSlot);
    line(left, y(0.0, top), right, y(0.0, top), thinStroke, ink.lowestRow);
    for (int row = 2; row <= 8; row += 2) {
        line(left, y(row * rowPitch, top), right, y(row * rowPitch, top), thinStroke, ink.staff);
    }
    const double size = std::min(nameSize, 1.25 * rowPitch * slotWidth(barsPerLine));
    for (int row = 0; row < noteCount; ++row) {
        page.texts.push_back({margin + rowNames - 2.0, y(row * rowPitch, top) + 0.36 * size, size,
                              Page::Anchor::end, ink.texts, Notes::idToName(row)});
    }
}

void SongPage::drawBars(std::size_t first, std::size_t end, double top) {
    for (std::size_t slot = first; slot < end; slot += slotsPerBar) {
        const double at = x(slot, first, -halfSlot);
        line(at, y(barBottom, top), at, y(barTop, top), 2.0 * thinStroke, ink.staff);
        page.texts.push_back({at, y(barTop, top) - 0.5 * numberSize, numberSize, Page::Anchor::start,
                              ink.texts, std::to_string(slot / slotsPerBar + 1)});
    }
    if (end == slotCount) {
        const double at = x(end - 1, first, halfSlot);
        line(at, y(barBottom, top), at, y(barTop, top), 5.0 * thinStroke, ink.staff);
    }
}

// Of notes that reach over the line's ends, what lies on it.
void SongPage::drawMarks(std::size_t first, std::size_t end, double top) {
    const double left = x(first, first, -halfSlot);
    const double right = x(end - 1, first, halfSlot);
    for (std::size_t slot = 0; slot < end; ++slot) {
        for (const Song::NoteMark& mark : song.getSlots()[slot]) {
            const double start = static_cast<double>(slot) - static_cast<double>(first);
            const double stop = start + static_cast<double>(mark.length) - 1.0;
            const double from = margin + rowNames + (start + halfSlot - noteReach) * slotWidth(barsPerLine);
            const double to = margin + rowNames + (stop + halfSlot + noteReach) * slotWidth(barsPerLine);
            const double visibleFrom = std::max(std::min(from, to), left);
            const double visibleTo = std::min(std::max(from, to), right);
            if (visibleFrom < visibleTo) {
                const double height = y(static_cast<double>(Song::getNoteHeight(mark.note)), top);
                line(visibleFrom, height, visibleTo, height, noteThickness * slotWidth(barsPerLine),
                     ink.notes);
            }
        }
    }
}

void SongPage::drawNames(std::size_t first, std::size_t end, double top) {
    for (std::size_t slot = first; slot < end; ++slot) {
        std::vector<int> notes;
        for (const Song::NoteMark& mark : song.getSlots()[slot]) {
            notes.push_back(mark.note);
        }
        // As on the staff: the highest on top.
        std::sort(notes.begin(), notes.end(), std::greater<int>());
        double baseline = y(0.0, top) + 1.7 * nameSpacing;
        for (const int note : notes) {
            page.texts.push_back({x(slot, first, 0.0), baseline, nameSize, Page::Anchor::middle, ink.notes,
                                  Notes::idToName(note)});
            baseline += nameSpacing;
        }
    }
}

void SongPage::drawLine(std::size_t first, double top) {
    const std::size_t end = std::min(first + slotsPerLine(), slotCount);
    drawStaff(first, end, top);
    drawBars(first, end, top);
    drawMarks(first, end, top);
    drawNames(first, end, top);
    page.texts.push_back({pageWidth - margin, y(barTop, top) - 0.5 * numberSize, numberSize,
                          Page::Anchor::end, ink.texts,
                          minutes(static_cast<double>(first) * secondsPerSlot)});
}

}  // namespace

Page layOut(const Song& song, const PageStyle& style) {
    return SongPage(song, style).draw();
}
