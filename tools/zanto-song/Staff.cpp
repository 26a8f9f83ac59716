#include "tools/zanto-song/Staff.h"

#include <algorithm>
#include <string>

#include "analysis/Notes.h"
#include "game/Song.h"

using namespace staff;

namespace {

constexpr double barBottom = 4.0 / 7.0;
constexpr double nameSize = 2.7;

}  // namespace

StaffLine::StaffLine(Page& page_, const Ink& ink_, double slotWidth_, std::size_t first_, std::size_t end_,
                     double top_)
    : page(page_), ink(ink_), slotWidth(slotWidth_), first(first_), end(end_), top(top_) {
}

double StaffLine::x(double slot) const {
    return margin + rowNames + (slot - static_cast<double>(first)) * slotWidth;
}

double StaffLine::y(double height) const {
    return top + (barTop - height) * slotWidth;
}

double StaffLine::rowOf(int note) const {
    return y(static_cast<double>(Song::getNoteHeight(note)));
}

void StaffLine::drawRows() {
    const double left = x(static_cast<double>(first));
    const double right = x(static_cast<double>(end));
    page.lines.push_back({left, y(0.0), right, y(0.0), thinStroke, ink.lowestRow});
    for (int row = 2; row <= 8; row += 2) {
        page.lines.push_back({left, y(row * rowPitch), right, y(row * rowPitch), thinStroke, ink.staff});
    }
    const double size = std::min(nameSize, 1.25 * rowPitch * slotWidth);
    for (int row = 0; row < Notes::noteCount; ++row) {
        page.texts.push_back({margin + rowNames - 2.0, y(row * rowPitch) + 0.36 * size, size,
                              Page::Anchor::end, ink.texts, Notes::idToName(row)});
    }
}

void StaffLine::drawBars(bool isLast) {
    for (std::size_t slot = first; slot < end; slot += rules::slotsPerBar) {
        const double at = x(static_cast<double>(slot));
        page.lines.push_back({at, y(barBottom), at, y(barTop), 2.0 * thinStroke, ink.staff});
        page.texts.push_back({at, y(barTop) - 0.5 * numberSize, numberSize, Page::Anchor::start, ink.texts,
                              std::to_string(slot / rules::slotsPerBar + 1)});
    }
    if (isLast) {
        const double at = x(static_cast<double>(end));
        page.lines.push_back({at, y(barBottom), at, y(barTop), 5.0 * thinStroke, ink.staff});
    }
}

void StaffLine::drawStroke(double fromSlot, double toSlot, int note, double thickness,
                           const Page::Color& color) {
    const double from = std::max(x(std::min(fromSlot, toSlot)), x(static_cast<double>(first)));
    const double to = std::min(x(std::max(fromSlot, toSlot)), x(static_cast<double>(end)));
    if (from < to) {
        page.lines.push_back({from, rowOf(note), to, rowOf(note), thickness, color});
    }
}
