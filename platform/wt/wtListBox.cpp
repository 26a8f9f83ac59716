#include "platform/wt/wtListBox.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/wt/Align.h"
#include "platform/wt/Painter.h"
#include "platform/wt/Screen.h"
#include "platform/wt/ScrollBar.h"
#include "platform/wt/Text.h"
#include "platform/wt/Theme.h"
#include "platform/wt/wtWindowManager.h"

namespace wt {
namespace {

constexpr float leastWidthEm = 6.0f;
constexpr float leastRows = 1.0f;
constexpr float roundingSlack = 0.001f;  // rows
/// A notch of the wheel scrolls a part of what is in view, and never skips a row.
constexpr int notchesPerPage = 3;
constexpr int mostRowsPerNotch = 3;

}  // namespace

wtListBox::wtListBox(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
                     const tavi::Vec2<float>& size_)
    : wtWidget(name, pos, size_, expandX | expandY),
      scrollBar(new ScrollBar(this, range)),
      itemSelected(std::make_shared<ItemSelectedSignal>()) {
    if (parent != nullptr) {
        parent->add(this);
    }
}

void wtListBox::append(std::list<std::string>& added) {
    rows.insert(rows.end(), added.begin(), added.end());
    range.setRows(rowCount());
    invalidateLayout();
}

void wtListBox::select(int index) {
    selectedRow = index >= 0 && index < rowCount() ? index : -1;
    revealing = selectedRow >= 0;
    invalidateLayout();
}

boost::signals2::connection wtListBox::connectItemSelected(const ItemSelectedSignal::slot_type& slot) {
    return itemSelected->connect(slot);
}

SizeHint wtListBox::sizeHint() const {
    const tavi::Vec2<float> least(emsX(leastWidthEm),
                                  emsY(theme().rowEm * leastRows) + 2 * screen().pixelY());
    return {least, least};
}

void wtListBox::place(const Rect& rect) {
    wtWidget::place(rect);
    revealing = revealing || range.inView(selectedRow);
    const float row = emsY(theme().rowEm);
    const float border = screen().pixelY();
    range.setVisible(static_cast<int>((size.y - 2 * border) / row + roundingSlack));
    if (std::exchange(revealing, false)) {
        range.reveal(selectedRow);
    }
    // When all rows are in view it has no width, and so gets no presses.
    const Rect inside = Rect{0, 0, size.x, size.y}.inset(screen().pixelX(), border);
    const float barWidth = range.scrolls() ? std::min(emsX(theme().scrollBarEm), inside.w / 2) : 0.0f;
    scrollBar->place({inside.right() - barWidth, inside.y, barWidth, inside.h});
}

Rect wtListBox::rowsArea() const {
    const Rect inside = Rect{0, 0, size.x, size.y}.inset(screen().pixelX(), screen().pixelY());
    return {inside.x, inside.y, inside.w - scrollBar->rect().w, inside.h};
}

Rect wtListBox::rowRect(int index) const {
    if (!range.inView(index)) {
        return {};
    }
    // The rows in view share the height, so that no row is cut.
    const Rect area = rowsArea();
    const float each = area.h / static_cast<float>(range.visibleRows());
    const auto place = static_cast<float>(index - range.firstRow());
    return screen().snapped({area.x, area.top() - (place + 1) * each, area.w, each});
}

int wtListBox::rowAt(const tavi::Vec2<float>& point) const {
    for (int index = range.firstRow(); index < range.endRow(); ++index) {
        if (rowRect(index).contains(point)) {
            return index;
        }
    }
    return -1;
}

void wtListBox::draw() {
    const Palette& colors = palette();
    const ClipScope inside(rect(), origin() - position);
    paint::fill(rect(), colors.field.faded(alpha));
    for (int index = range.firstRow(); index < range.endRow(); ++index) {
        drawRow(index);
    }
    if (rows.empty()) {
        drawEmpty();
    }
    paint::strokeRounded(rect(), 0, 1, colors.fieldLine);
}

void wtListBox::drawRow(int index) const {
    const Theme& t = theme();
    const Palette& colors = palette();
    Rect place = rowRect(index);
    place.x += position.x;
    place.y += position.y;
    Color ink = colors.fieldText;
    if (index == selectedRow) {
        paint::fill(place, t.selected);
        ink = t.selectedText;
    } else if (index == hovered && isEnabled() != 0) {
        paint::fill(place, colors.rowHover);
    }
    text::draw(row(index), place.inset(emsX(t.rowPaddingEm), 0), alignLeft, emPixels(), ink);
}

void wtListBox::drawEmpty() const {
    // An empty staff: five quiet lines, and nothing to play on them.
    constexpr int lines = 5;
    constexpr int below = lines / 2;  // the middle one
    constexpr float widthShare = 0.5f;
    constexpr float gapEm = 0.55f;
    const float gap = emsY(gapEm);
    const float thickness = std::max(1.0f, std::round(emPixels() / theme().leastEmPx)) * screen().pixelY();
    const Rect lowest = screen().snapped({position.x + size.x * (1 - widthShare) / 2,
                                          position.y + size.y / 2 - gap * below, size.x * widthShare, 0});
    for (int line = 0; line < lines; ++line) {
        paint::fill({lowest.x, lowest.y + static_cast<float>(line) * gap, lowest.w, thickness},
                    palette().emptyMark);
    }
}

bool wtListBox::press(const tavi::Vec2<float>& point) {
    const int index = rowAt(point);
    if (index >= 0) {
        select(index);
        wtWindowManager::defer([this, index, signal = itemSelected] { (*signal)(this, index); });
    }
    return true;
}

bool wtListBox::wheel(int steps) {
    const int rowsPerNotch = std::clamp(range.visibleRows() / notchesPerPage, 1, mostRowsPerNotch);
    range.scrollBy(-steps * rowsPerNotch);
    return true;
}

}  // namespace wt
