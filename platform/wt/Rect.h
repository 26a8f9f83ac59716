#pragma once

#include "platform/tmath/Vec2.h"

namespace wt {

/// An upright rectangle from (x, y), its lower left corner, to (x + w, y + h). The left and lower edges
/// belong to it, the right and upper ones do not, so that neighbours share no point.
struct Rect {
    float x = 0.0f;
    float y = 0.0f;
    float w = 0.0f;
    float h = 0.0f;

    constexpr float right() const { return x + w; }
    constexpr float top() const { return y + h; }
    constexpr bool contains(const tavi::Vec2<float>& p) const {
        return p.x >= x && p.x < x + w && p.y >= y && p.y < y + h;
    }
    /// Without the margins. If they do not fit, they shrink in proportion.
    constexpr Rect without(float left, float right, float bottom, float top_) const {
        const float across = left + right > w && left + right > 0 ? w / (left + right) : 1.0f;
        const float along = bottom + top_ > h && bottom + top_ > 0 ? h / (bottom + top_) : 1.0f;
        return {x + left * across, y + bottom * along, w - (left + right) * across,
                h - (bottom + top_) * along};
    }
    /// Smaller by `dx` at the left and right and by `dy` below and above.
    constexpr Rect inset(float dx, float dy) const { return without(dx, dx, dy, dy); }
};

}  // namespace wt
