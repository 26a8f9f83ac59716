#include "platform/wt/Screen.h"

#include <algorithm>
#include <cmath>

#include "platform/wt/Theme.h"

namespace wt {
namespace {

Screen current;

float snap(float value, float pixel) {
    return std::round(value / pixel) * pixel;
}

}  // namespace

tavi::Vec2<float> Screen::fromPixel(int column, int row) const {
    return {-1.0f + (static_cast<float>(column) + 0.5f) * pixelX(),
            1.0f - (static_cast<float>(row) + 0.5f) * pixelY()};
}

Rect Screen::snapped(const Rect& rect) const {
    const float left = snap(rect.x, pixelX());
    const float bottom = snap(rect.y, pixelY());
    return {left, bottom, snap(rect.right(), pixelX()) - left, snap(rect.top(), pixelY()) - bottom};
}

Rect Screen::onPixels(const Rect& rect) const {
    constexpr float low = -1.0f;
    const Rect inCorner = snapped({rect.x - low, rect.y - low, rect.w, rect.h});
    return {inCorner.x + low, inCorner.y + low, inCorner.w, inCorner.h};
}

float Screen::emPixels() const {
    const Theme& t = theme();
    // A window narrower than 4:3 has less room across than its height says.
    const float room = std::min(static_cast<float>(height), 0.75f * static_cast<float>(width));
    const float readable = std::min(t.leastEmPx, room * t.mostEmShare);
    return std::max(1.0f, std::round(std::max(room * t.emShare, readable)));
}

const Screen& screen() {
    return current;
}

void setScreen(const Screen& next) {
    current = next;
    current.width = std::max(current.width, 1);
    current.height = std::max(current.height, 1);
}

}  // namespace wt
