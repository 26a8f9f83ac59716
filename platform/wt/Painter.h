#pragma once

#include <vector>

#include "platform/tmath/Vec2.h"
#include "platform/wt/Color.h"
#include "platform/wt/Rect.h"

namespace wt {

/// Flat shapes with smooth edges, in the current coordinates. Radii and line widths are in pixels. An edge
/// that lies between two pixels is perfectly sharp.
namespace paint {

void fill(const Rect& rect, const Color& color);
/// From `bottom` to `top` colour.
void fillGradient(const Rect& rect, const Color& bottom, const Color& top);
void fillRounded(const Rect& rect, float radiusPx, const Color& bottom, const Color& top);
/// The outline, inside the rectangle.
void strokeRounded(const Rect& rect, float radiusPx, float widthPx, const Color& color);
/// Straight strokes from point to point.
void polyline(const std::vector<tavi::Vec2<float>>& points, float widthPx, const Color& color);

}  // namespace paint

/// While it lives, nothing is drawn outside its rectangle and those of the earlier ones that still live.
class ClipScope {
public:
    /// `rect` in coordinates whose origin lies at `origin` on the screen.
    ClipScope(const Rect& rect, const tavi::Vec2<float>& origin);
    ClipScope(const ClipScope&) = delete;
    ClipScope& operator=(const ClipScope&) = delete;
    ~ClipScope();

private:
    int before[4] = {};
};

}  // namespace wt
