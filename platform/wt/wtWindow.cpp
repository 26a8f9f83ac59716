#include "platform/wt/wtWindow.h"

#include "platform/wt/Defaults.h"
#include "platform/wt/Theme.h"

namespace wt {

wtWindow::wtWindow(const std::string& title, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size_,
                   int flags)
    : wtWidget(title, pos, size_, 0),
      shadow(wtDefaults::Window::shadow_bg),
      shadowOffset(wtDefaults::Window::shadowOffsX, wtDefaults::Window::shadowOffsY),
      requested{pos.x, pos.y, size_.x, size_.y},
      windowFlags(flags) {
    alpha = wtDefaults::Window::alpha;
}

wtWindow::~wtWindow() = default;

void wtWindow::setLayoutManager(LayoutManager* layout_) {
    layout.reset(layout_);
}

void wtWindow::setBackground(const GridGraphic& background_) {
    background = background_;
}

void wtWindow::recomputeMinSize() {
    if (layout) {
        layout->place({0, 0, size.x, size.y});
    }
}

void wtWindow::maximize() {
    maximized = true;
    place({-1, -1, 2, 2});
}

void wtWindow::resize(float width, float height) {
    requested.w = width;
    requested.h = height;
    wtWidget::resize(width, height);
}

void wtWindow::draw() {
    recomputeMinSize();
    (void)windowFlags;
    background.draw(rect(), alpha);
}

SizeHint wtWindow::sizeHint() const {
    return wtWidget::sizeHint();
}

const Palette& wtWindow::palette() const {
    return theme().onDark;
}

float wtWindow::emPixels() const {
    return 14.0F;
}

}  // namespace wt
