#include "platform/wt/TitleBar.h"

#include <algorithm>

#include "platform/wt/Align.h"
#include "platform/wt/Painter.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Text.h"
#include "platform/wt/Theme.h"
#include "platform/wt/wtWindow.h"

namespace wt {
namespace {

constexpr float textMarginEm = 0.7f;
constexpr float leastTitleEm = 3.0f;
constexpr float crossEm = 0.3f;  // half its width
constexpr float strokeEm = 0.11f;

}  // namespace

TitleBar::TitleBar(wtWindow* window_, bool withCloseBox)
    : wtWidget("title bar", {0, 0}, {0, 0}, expandX), window(*window_) {
    window.add(this);
    if (withCloseBox) {
        closeBox = new CloseBox(this, window_);
    }
}

SizeHint TitleBar::sizeHint() const {
    const float height = emsY(theme().titleBarEm);
    const float close = closeBox != nullptr ? emsX(theme().titleBarEm) : 0.0f;
    const tavi::Vec2<float> least(emsX(leastTitleEm) + close, height);
    return {least, least};
}

void TitleBar::place(const Rect& rect) {
    wtWidget::place(rect);
    if (closeBox != nullptr) {
        // Square in pixels.
        const float width = std::min(size.y / screen().pixelY() * screen().pixelX(), size.x);
        closeBox->place({size.x - width, 0, width, size.y});
    }
}

void TitleBar::draw() {
    paint::fill(rect(), theme().titleBar);
    const float right = closeBox != nullptr ? closeBox->rect().x : size.x;
    const float margin = emsX(textMarginEm);
    const Rect box{position.x + margin, position.y, std::max(right - 2 * margin, 0.0f), size.y};
    text::draw(window.getTitle(), box, alignLeft, emPixels(), theme().titleText);
}

bool TitleBar::press(const tavi::Vec2<float>& point) {
    grip = point;
    return true;
}

void TitleBar::drag(const tavi::Vec2<float>& point) {
    const Rect now = window.rect();
    window.moveTo(tavi::Vec2<float>(now.x, now.y) + point - grip);
}

CloseBox::CloseBox(TitleBar* bar, wtWindow* window) : wtButton(bar, "close box", {0, 0}, {0, 0}, "") {
    connectButtonPressed([this, window] {
        window->setShowing(0);
        hoverFade.jump(false);
    });
}

void CloseBox::draw() {
    const Theme& t = theme();
    if (isArmed()) {
        paint::fill(rect(), t.closePressed);
    } else if (hoverFade.value() > 0) {
        paint::fill(rect(), mix(t.titleBar, t.closeHover, hoverFade.value()));
    }
    const tavi::Vec2<float> centre(position.x + size.x / 2, position.y + size.y / 2);
    const float dx = crossEm * emPixels() * screen().pixelX();
    const float dy = crossEm * emPixels() * screen().pixelY();
    const float stroke = std::max(1.25f, strokeEm * emPixels());
    paint::polyline({{centre.x - dx, centre.y - dy}, {centre.x + dx, centre.y + dy}}, stroke, t.titleText);
    paint::polyline({{centre.x - dx, centre.y + dy}, {centre.x + dx, centre.y - dy}}, stroke, t.titleText);
}

}  // namespace wt
