#include "platform/wt/Painter.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "platform/wt/Screen.h"

namespace wt {
namespace {

using Path = std::vector<tavi::Vec2<float>>;

/// Half the width of the ramp at an edge, pixels. It goes from opaque half a pixel inside to transparent half
/// a pixel outside, so that an edge between two pixels is sharp.
constexpr float halfRamp = 0.5f;

void setColor(const Color& c) {
    glColor4f(c.r, c.g, c.b, c.a);
}

int stepsOfCorner(float radiusPx) {
    return std::clamp(static_cast<int>(radiusPx), 1, 12);
}

/// The outline of `rect`, made smaller on all sides by `insetPx` pixels, with round corners,
/// counter-clockwise. Paths with the same `steps` have matching points.
Path roundedPath(const Rect& rect, float radiusPx, float insetPx, int steps) {
    const float px = screen().pixelX();
    const float py = screen().pixelY();
    const float left = rect.x + insetPx * px;
    const float bottom = rect.y + insetPx * py;
    const float w = std::max(rect.w - 2 * insetPx * px, 0.0f);
    const float h = std::max(rect.h - 2 * insetPx * py, 0.0f);
    const float radius = std::clamp(radiusPx - insetPx, 0.0f, std::min(w / px, h / py) / 2);
    const float rx = radius * px;
    const float ry = radius * py;
    const tavi::Vec2<float> centres[] = {{left + w - rx, bottom + h - ry},
                                         {left + rx, bottom + h - ry},
                                         {left + rx, bottom + ry},
                                         {left + w - rx, bottom + ry}};
    constexpr float quarter = 1.57079633f;
    Path path;
    for (int corner = 0; corner < 4; ++corner) {
        for (int step = 0; step <= steps; ++step) {
            const float angle =
                quarter * (static_cast<float>(corner) + static_cast<float>(step) / static_cast<float>(steps));
            path.push_back(
                {centres[corner].x + rx * std::cos(angle), centres[corner].y + ry * std::sin(angle)});
        }
    }
    return path;
}

/// The closed band between two matching paths, each with its own colour.
void band(const Path& outer, const Color& outside, const Path& inner, const Color& inside) {
    glBegin(GL_TRIANGLE_STRIP);
    for (std::size_t i = 0; i <= outer.size(); ++i) {
        const std::size_t at = i % outer.size();
        setColor(outside);
        glVertex2f(outer[at].x, outer[at].y);
        setColor(inside);
        glVertex2f(inner[at].x, inner[at].y);
    }
    glEnd();
}

}  // namespace

namespace paint {

void fill(const Rect& rect, const Color& color) {
    fillGradient(rect, color, color);
}

void fillGradient(const Rect& rect, const Color& bottom, const Color& top) {
    glBegin(GL_QUADS);
    setColor(bottom);
    glVertex2f(rect.x, rect.y);
    glVertex2f(rect.right(), rect.y);
    setColor(top);
    glVertex2f(rect.right(), rect.top());
    glVertex2f(rect.x, rect.top());
    glEnd();
}

void fillRounded(const Rect& rect, float radiusPx, const Color& bottom, const Color& top) {
    const int steps = stepsOfCorner(radiusPx);
    const Path inner = roundedPath(rect, radiusPx, halfRamp, steps);
    const Path outer = roundedPath(rect, radiusPx, -halfRamp, steps);
    const auto colorAt = [&](const tavi::Vec2<float>& p) {
        return rect.h > 0 ? mix(bottom, top, std::clamp((p.y - rect.y) / rect.h, 0.0f, 1.0f)) : bottom;
    };
    glBegin(GL_POLYGON);
    for (const tavi::Vec2<float>& p : inner) {
        setColor(colorAt(p));
        glVertex2f(p.x, p.y);
    }
    glEnd();
    glBegin(GL_TRIANGLE_STRIP);
    for (std::size_t i = 0; i <= outer.size(); ++i) {
        const std::size_t at = i % outer.size();
        const Color color = colorAt(inner[at]);
        setColor(color);
        glVertex2f(inner[at].x, inner[at].y);
        setColor(color.faded(0));
        glVertex2f(outer[at].x, outer[at].y);
    }
    glEnd();
}

void strokeRounded(const Rect& rect, float radiusPx, float widthPx, const Color& color) {
    const int steps = stepsOfCorner(radiusPx);
    const float middle = std::max(widthPx - halfRamp, halfRamp);
    const Path edge = roundedPath(rect, radiusPx, halfRamp, steps);
    const Path far = roundedPath(rect, radiusPx, middle, steps);
    band(roundedPath(rect, radiusPx, -halfRamp, steps), color.faded(0), edge, color);
    if (middle > halfRamp) {
        band(edge, color, far, color);
    }
    band(far, color, roundedPath(rect, radiusPx, middle + 2 * halfRamp, steps), color.faded(0));
}

void polyline(const std::vector<tavi::Vec2<float>>& points, float widthPx, const Color& color) {
    const float px = screen().pixelX();
    const float py = screen().pixelY();
    const float solid = std::max(widthPx / 2 - halfRamp, 0.0f);
    const float edge = solid + 2 * halfRamp;
    const float offsets[] = {edge, solid, -solid, -edge};
    const float strengths[] = {0.0f, 1.0f, 1.0f, 0.0f};
    for (std::size_t i = 0; i + 1 < points.size(); ++i) {
        const tavi::Vec2<float> a = points[i];
        const tavi::Vec2<float> b = points[i + 1];
        const float dx = (b.x - a.x) / px;
        const float dy = (b.y - a.y) / py;
        const float length = std::hypot(dx, dy);
        if (length <= 0) {
            continue;
        }
        const tavi::Vec2<float> across(-dy / length * px, dx / length * py);
        for (int strip = 0; strip < 3; ++strip) {
            glBegin(GL_TRIANGLE_STRIP);
            for (int side = strip; side <= strip + 1; ++side) {
                setColor(color.faded(strengths[side]));
                glVertex2f(a.x + across.x * offsets[side], a.y + across.y * offsets[side]);
                glVertex2f(b.x + across.x * offsets[side], b.y + across.y * offsets[side]);
            }
            glEnd();
        }
    }
}

}  // namespace paint

ClipScope::ClipScope(const Rect& rect, const tavi::Vec2<float>& origin) {
    const Screen& s = screen();
    glGetIntegerv(GL_SCISSOR_BOX, before);
    const auto column = [&](float x) {
        return s.x + static_cast<int>(std::lround((origin.x + x + 1) / s.pixelX()));
    };
    const auto line = [&](float y) {
        return s.y + static_cast<int>(std::lround((origin.y + y + 1) / s.pixelY()));
    };
    const int left = std::max(column(rect.x), before[0]);
    const int bottom = std::max(line(rect.y), before[1]);
    const int right = std::min(column(rect.right()), before[0] + before[2]);
    const int top = std::min(line(rect.top()), before[1] + before[3]);
    glScissor(left, bottom, std::max(right - left, 0), std::max(top - bottom, 0));
}

ClipScope::~ClipScope() {
    glScissor(before[0], before[1], before[2], before[3]);
}

}  // namespace wt
