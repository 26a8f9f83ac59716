#include "platform/wt/wtWidget.h"

#include <GL/gl.h>

#include <cmath>
#include <optional>

#include "platform/wt/Painter.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Theme.h"
#include "platform/wt/wtWindowManager.h"

namespace wt {
namespace {

constexpr float leastExpandingEm = 3.0f;

}  // namespace

wtWidget::wtWidget(const std::string& name, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size_,
                   int flags)
    : position(pos), size(size_), wantedSize(size_), widgetName(name), widgetFlags(flags) {
}

wtWidget::~wtWidget() {
    wtWindowManager::forget(this);
}

bool wtWidget::isIn(const wtWidget* ancestor) const {
    return this == ancestor || (owner != nullptr && owner->isIn(ancestor));
}

tavi::Vec2<float> wtWidget::origin() const {
    return owner != nullptr ? owner->origin() + position : position;
}

void wtWidget::add(wtWidget* child) {
    child->owner = this;
    owned.emplace_back(child);
    invalidateLayout();
}

void wtWidget::setShowing(int showing) {
    shown = showing != 0 ? 1 : 0;
    if (shown == 0) {
        wtWindowManager::takePointerFrom(this);
    }
    invalidateLayout();
}

void wtWidget::setEnabled(int enabled) {
    active = enabled != 0 ? 1 : 0;
    if (active == 0) {
        wtWindowManager::takePointerFrom(this);
    }
}

void wtWidget::setAlpha(float alpha_) {
    alpha = alpha_;
}

void wtWidget::resize(float width, float height) {
    size = {width, height};
    wantedSize = size;
    invalidateLayout();
}

void wtWidget::drawTree() {
    if (isShowing() == 0) {
        return;
    }
    draw();
    std::optional<ClipScope> insideWindow;
    if (owner == nullptr) {
        insideWindow.emplace(rect(), tavi::Vec2<float>());
    }
    glPushMatrix();
    glTranslatef(position.x, position.y, 0);
    for (const auto& child : owned) {
        child->drawTree();
    }
    glPopMatrix();
}

void wtWidget::animateTree() {
    if (isShowing() == 0) {
        return;
    }
    animate();
    for (const auto& child : owned) {
        child->animateTree();
    }
}

SizeHint wtWidget::sizeHint() const {
    const tavi::Vec2<float> least((widgetFlags & expandX) != 0 ? emsX(leastExpandingEm) : wantedSize.x,
                                  (widgetFlags & expandY) != 0 ? emsY(leastExpandingEm) : wantedSize.y);
    return {least, least};
}

void wtWidget::place(const Rect& rect) {
    position = {rect.x, rect.y};
    size = {rect.w, rect.h};
}

void wtWidget::invalidateLayout() {
    if (owner != nullptr) {
        owner->invalidateLayout();
    }
}

wtWidget* wtWidget::widgetAt(const tavi::Vec2<float>& point) {
    if (isShowing() == 0 || !covers(point)) {
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
    return owner != nullptr ? owner->palette() : theme().onDark;
}

float wtWidget::emPixels() const {
    return owner != nullptr ? owner->emPixels() : screen().emPixels();
}

float wtWidget::emsX(float ems) const {
    return std::round(ems * emPixels()) * screen().pixelX();
}

float wtWidget::emsY(float ems) const {
    return std::round(ems * emPixels()) * screen().pixelY();
}

}  // namespace wt
