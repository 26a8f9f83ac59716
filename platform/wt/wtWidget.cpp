#include "platform/wt/wtWidget.h"

#include <GL/gl.h>

#include "platform/wt/Theme.h"

namespace wt {

wtWidget::wtWidget(const std::string& name, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size_,
                   int flags)
    : position(pos), size(size_), widgetName(name), widgetFlags(flags) {
}

wtWidget::~wtWidget() = default;

tavi::Vec2<float> wtWidget::origin() const {
    return owner ? owner->origin() + position : position;
}

wtWidget* wtWidget::root() {
    return owner ? owner->root() : this;
}

void wtWidget::add(wtWidget* child) {
    child->owner = this;
    owned.emplace_back(child);
    invalidateLayout();
}

void wtWidget::setShowing(int showing) {
    shown = showing != 0 ? 1 : 0;
    invalidateLayout();
}

void wtWidget::setEnabled(int enabled) {
    active = enabled != 0 ? 1 : 0;
}

void wtWidget::setAlpha(float alpha_) {
    alpha = alpha_;
}

void wtWidget::resize(float width, float height) {
    size = {width, height};
    invalidateLayout();
}

void wtWidget::drawTree() {
    if (isShowing() == 0) {
        return;
    }
    draw();
    glPushMatrix();
    glTranslatef(position.x, position.y, 0);
    for (const auto& child : owned) {
        child->drawTree();
    }
    glPopMatrix();
}

void wtWidget::place(const Rect& rect) {
    position = {rect.x, rect.y};
    size = {rect.w, rect.h};
}

void wtWidget::invalidateLayout() {
    layoutChanged();
    if (owner) {
        owner->invalidateLayout();
    }
}

wtWidget* wtWidget::widgetAt(const tavi::Vec2<float>& point) {
    if (isShowing() == 0 || !Rect{0, 0, size.x, size.y}.contains(point)) {
        return nullptr;
    }
    for (auto child = owned.rbegin(); child != owned.rend(); ++child) {
        if (wtWidget* const hit = (*child)->widgetAt(point - (*child)->position)) {
            return hit;
        }
    }
    return this;
}

bool wtWidget::press(const tavi::Vec2<float>&) {
    return false;
}
void wtWidget::drag(const tavi::Vec2<float>&) {
}
void wtWidget::release(const tavi::Vec2<float>&) {
}
void wtWidget::hover(const tavi::Vec2<float>&) {
}
bool wtWidget::wheel(int) {
    return false;
}

const Palette& wtWidget::palette() const {
    return owner ? owner->palette() : theme().onDark;
}

float wtWidget::emPixels() const {
    return owner ? owner->emPixels() : 14.0F;
}

}  // namespace wt
