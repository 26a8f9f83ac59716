#include "platform/wt/wtWindow.h"

#include <algorithm>
#include <cmath>

#include "platform/wt/Defaults.h"
#include "platform/wt/Painter.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Theme.h"
#include "platform/wt/TitleBar.h"

namespace wt {
namespace {

constexpr float screenLow = -1.0f;
constexpr float screenSize = 2.0f;

/// The nearest place for `length` from `start` that is on the screen.
float onScreen(float start, float length) {
    return std::max(screenLow, std::min(start, screenLow + screenSize - length));
}

/// Whether dark text suits a ground of this colour, seen over black.
bool isLight(const Color& color) {
    constexpr float middle = 0.5f;
    return (0.30f * color.r + 0.59f * color.g + 0.11f * color.b) * color.a > middle;
}

}  // namespace

wtWindow::wtWindow(const std::string& title, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size_,
                   int flags)
    : wtWidget(title, pos, size_, 0),
      shadow(wtDefaults::Window::shadow_bg),
      shadowOffset(wtDefaults::Window::shadowOffsX, wtDefaults::Window::shadowOffsY),
      wantedCorner(pos) {
    alpha = wtDefaults::Window::alpha;
    if ((flags & titleBar) != 0) {
        bar = new TitleBar(this, (flags & closeBox) != 0);
    }
}

wtWindow::~wtWindow() = default;

void wtWindow::setLayoutManager(LayoutManager* layout_) {
    layout.reset(layout_);
    invalidateLayout();
}

void wtWindow::setBackground(const GridGraphic& background_) {
    background = background_;
    const bool hasMiddle = background.rows() > 0 && background.columns() > 0;
    const Polygon middle =
        hasMiddle ? background(background.rows() / 2, background.columns() / 2) : Polygon();
    onLight = hasMiddle && !middle.hasTexture() && isLight(middle.fill());
}

void wtWindow::recomputeMinSize() {
    invalidateLayout();
    ensureLayout();
}

void wtWindow::maximize() {
    maximized = true;
    if (bar != nullptr) {
        bar->setShowing(0);
    }
    recomputeMinSize();
}

void wtWindow::moveTo(const tavi::Vec2<float>& corner) {
    // What was asked for moves as far as the window does, not as far as the pointer does.
    const Rect before = rect();
    const float x = onScreen(corner.x, size.x);
    const float y = onScreen(corner.y, size.y);
    wantedCorner.x += x - before.x;
    wantedCorner.y += y - before.y;
    recomputeMinSize();
}

void wtWindow::resize(float width, float height) {
    wantedSize = {width, height};
    recomputeMinSize();
}

SizeHint wtWindow::sizeHint() const {
    SizeHint hint = layout ? layout->sizeHint() : SizeHint();
    const tavi::Vec2<float> padding(2 * emsX(theme().paddingEm), 2 * emsY(theme().paddingEm));
    hint.least = hint.least + padding;
    hint.preferred = hint.preferred + padding;
    if (bar != nullptr && bar->isShowing() != 0) {
        const tavi::Vec2<float> title = bar->sizeHint().least;
        hint.least = {std::max(hint.least.x, title.x), hint.least.y + title.y};
        hint.preferred = {std::max(hint.preferred.x, title.x), hint.preferred.y + title.y};
    }
    return hint;
}

Rect wtWindow::wantedRect() const {
    if (maximized) {
        return {screenLow, screenLow, screenSize, screenSize};
    }
    const tavi::Vec2<float> least = sizeHint().least;
    const float w = std::min(std::max(wantedSize.x, least.x), screenSize);
    const float h = std::min(std::max(wantedSize.y, least.y), screenSize);
    return {onScreen(wantedCorner.x + (wantedSize.x - w) / 2, w),
            onScreen(wantedCorner.y + (wantedSize.y - h) / 2, h), w, h};
}

void wtWindow::ensureLayout() {
    if (!upToDate || !(placedOn == screen())) {
        place(screen().onPixels(wantedRect()));
        placedOn = screen();
        upToDate = true;
    }
}

void wtWindow::place(const Rect& rect) {
    wtWidget::place(rect);
    Rect content{0, 0, size.x, size.y};
    if (bar != nullptr && bar->isShowing() != 0) {
        const float height = std::min(bar->sizeHint().least.y, content.h);
        content.h -= height;
        bar->place({0, content.h, size.x, height});
    }
    if (layout) {
        layout->place(content.inset(emsX(theme().paddingEm), emsY(theme().paddingEm)));
        return;
    }
    for (const auto& child : children()) {
        if (child.get() != bar) {
            const tavi::Vec2<float> preferred = child->sizeHint().preferred;
            child->place(screen().snapped({child->rect().x, child->rect().y, preferred.x, preferred.y}));
        }
    }
}

void wtWindow::draw() {
    shadow.draw({position.x + shadowOffset.x, position.y + shadowOffset.y, size.x, size.y}, 1.0f);
    if (background.rows() > 0) {
        background.draw(rect(), alpha);
        return;
    }
    paint::fill(rect(), theme().panel.faded(alpha));
    if (!maximized) {
        paint::strokeRounded(rect(), 0, 1, theme().panelLine);
    }
}

bool wtWindow::press(const tavi::Vec2<float>&) {
    return true;
}

bool wtWindow::wheel(int) {
    return true;
}

const Palette& wtWindow::palette() const {
    return onLight ? theme().onLight : theme().onDark;
}

float wtWindow::emPixels() const {
    const float ordinary = screen().emPixels();
    return maximized ? std::round(ordinary * theme().maximizedTextScale) : ordinary;
}

}  // namespace wt
