#pragma once

#include <cstddef>

#include "game/Rules.h"
#include "tools/zanto-song/Page.h"

/// The measures of staffs on paper, in millimetres.
namespace staff {

constexpr double pageWidth = 210.0;  // A4
constexpr double pageHeight = 297.0;
constexpr double margin = 15.0;
constexpr double rowNames = 6.0;  // the room for them at the left
constexpr double numberSize = 2.4;
constexpr double thinStroke = 0.15;

// In the game's own units: one slot is one wide.
constexpr double rowPitch = 2.0 / 7.0;
constexpr double barTop = 2.5;
constexpr double noteReach = 0.4;  // to both sides of its first and last slot's centre
constexpr double halfSlot = 0.5;
constexpr double noteThickness = 0.14;

/// The width of a slot with so many bars to a line.
constexpr double slotWidth(int barsPerLine) {
    return (pageWidth - 2.0 * margin - rowNames) /
           (static_cast<double>(barsPerLine) * static_cast<double>(rules::slotsPerBar));
}

struct Ink {
    Page::Color background;
    Page::Color notes;
    Page::Color staff;
    Page::Color lowestRow;
    Page::Color texts;
};
constexpr Ink paper = {Page::grey(1.0), Page::grey(0.0), Page::grey(0.45), Page::grey(0.8), Page::grey(0.3)};
constexpr Ink night = {Page::grey(0.0), Page::grey(1.0), Page::grey(1.0), Page::grey(0.25), Page::grey(0.8)};

}  // namespace staff

/// One line of a song's staff, as the game draws it: a row for each note, C the lowest, staff lines at E, G,
/// B and one above, a bar line before every fourth slot, and the bars' numbers.
///
///     StaffLine line(page, staff::paper, staff::slotWidth(4), 0, 16, 34.0);
///     line.drawRows(), line.drawBars(isLast);
///     line.drawStroke(2.1, 2.9, note, thickness, staff::paper.notes);
class StaffLine {
public:
    /// The slots from `first` to before `end`, on a page that must outlive this. `top` is that of the bar
    /// lines.
    StaffLine(Page& page, const staff::Ink& ink, double slotWidth, std::size_t first, std::size_t end,
              double top);

    double x(double slot) const;    ///< of a slot's left end, 0 for the song's first slot
    double y(double height) const;  ///< of a height in the game's units
    double rowOf(int note) const;

    void drawRows();

    /// With a double bar at the end where the song is over.
    void drawBars(bool isLast);

    /// A stroke in a note's row between two places in slots, or what of it lies on this line.
    void drawStroke(double fromSlot, double toSlot, int note, double thickness, const Page::Color& color);

private:
    Page& page;
    const staff::Ink& ink;
    double slotWidth;
    std::size_t first;
    std::size_t end;
    double top;
};
