#pragma once

#include "platform/tmath/Vec2.h"

namespace wt {

/// An upright rectangle from (x, y), its lower left corner, to (x + w, y + h). The left and lower edges
/// belong to it, the right and upper ones do not, so that neighbours share no point.
struct Rect {
    float x = 0.0F;
    float y = 0.0F;
    float w = 0.0F;
    float h = 0.0F;

    constexpr float right() const { return x + w; }
    constexpr float top() const { return y + h; }
    constexpr bool contains(const tavi::Vec2<float>& p) const {
        return p.x >= x && p.x < x + w && p.y >= y && p.y < y + h;
    }
    /// Smaller by `dx` at the left and right and by `dy` below and above, never below nothing.
    constexpr Rect inset(float dx, float dy) const {
        const float dw = 2 * dx < w ? dx : w / 2;
        const float dh = 2 * dy < h ? dy : h / 2;
        return {x + dw, y + dh, w - 2 * dw, h - 2 * dh};
    }
};

}  // namespace wt
