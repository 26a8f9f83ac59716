#include "platform/wt/ScrollBar.h"

#include <algorithm>
#include <cmath>

#include "platform/wt/Painter.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Theme.h"

namespace wt {
namespace {

constexpr float thumbMarginEm = 0.18f;
constexpr float arrowHalfEm = 0.26f;  // half the width of an arrow's angle
constexpr float strokeEm = 0.12f;
constexpr float faintArrow = 0.45f;

}  // namespace

ScrollBar::ScrollBar(wtWidget* parent, ScrollRange& range_)
    : wtWidget("scroll bar", {0, 0}, {0, 0}, expandY), range(range_) {
    parent->add(this);
}

float ScrollBar::arrowLength() const {
    return std::min(size.x / screen().pixelX() * screen().pixelY(), size.y / 3);
}

float ScrollBar::troughLength() const {
    return size.y - 2 * arrowLength();
}

float ScrollBar::leastThumb() const {
    return emsY(theme().leastThumbEm);
}

Rect ScrollBar::thumb() const {
    const float length = range.thumbLength(troughLength(), leastThumb());
    const float start = arrowLength() + range.thumbStart(troughLength(), leastThumb());
    return {0, size.y - start - length, size.x, length};
}

void ScrollBar::draw() {
    if (!range.scrolls()) {
        return;
    }
    const Palette& colors = palette();
    const float em = emPixels();
    const float px = screen().pixelX();
    const float py = screen().pixelY();
    paint::fill(rect(), colors.trough);

    const float margin = std::max(1.0f, std::round(thumbMarginEm * em));
    const Rect own = thumb();
    const Rect bar = screen().snapped({position.x + own.x, position.y + own.y, own.w, own.h});
    const Color body = dragging || hovered ? colors.thumbHover : colors.thumb;
    paint::fillRounded(bar.inset(margin * px, margin * py), size.x / px, body, body);

    const float half = arrowHalfEm * em;
    const float stroke = std::max(1.25f, strokeEm * em);
    const float x = position.x + size.x / 2;
    const auto arrow = [&](float y, float direction, bool leadsOn) {
        const float tip = y + direction * half / 2 * py;
        const float foot = y - direction * half / 2 * py;
        paint::polyline({{x - half * px, foot}, {x, tip}, {x + half * px, foot}}, stroke,
                        leadsOn ? colors.arrow : colors.fieldLine.faded(faintArrow));
    };
    arrow(position.y + size.y - arrowLength() / 2, 1, range.moreAbove());
    arrow(position.y + arrowLength() / 2, -1, range.moreBelow());
}

bool ScrollBar::press(const tavi::Vec2<float>& point) {
    const Rect now = thumb();
    if (point.y >= size.y - arrowLength()) {
        range.scrollBy(-1);
    } else if (point.y < arrowLength()) {
        range.scrollBy(1);
    } else if (point.y >= now.top()) {
        range.scrollBy(-range.visibleRows());
    } else if (point.y < now.y) {
        range.scrollBy(range.visibleRows());
    } else {
        dragging = true;
        grip = now.top() - point.y;
    }
    return true;
}

void ScrollBar::drag(const tavi::Vec2<float>& point) {
    if (dragging) {
        const float start = size.y - arrowLength() - (point.y + grip);
        range.scrollTo(range.firstRowAt(start, troughLength(), leastThumb()));
    }
}

void ScrollBar::hover(const tavi::Vec2<float>& point) {
    hovered = thumb().contains(point);
}

}  // namespace wt
