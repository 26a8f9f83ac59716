#include "platform/wt/Text.h"

#include <GL/gl.h>

#include <cmath>
#include <memory>

#include "platform/ffont/FFontData.h"
#include "platform/wt/Align.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Theme.h"

namespace wt::text {
namespace {

constexpr float emUnitsPerSize = 0.025f;
constexpr float usualAscent = 0.93f;   // ems
constexpr float usualDescent = 0.24f;  // ems

std::unique_ptr<FFontData>& face() {
    static std::unique_ptr<FFontData> loaded;
    return loaded;
}

/// The typeface's own unit, its em at scale 1.
float emUnits() {
    return emUnitsPerSize * static_cast<float>(theme().faceSize);
}

float ascent() {
    const float ofFace = face() ? face()->ascender() / emUnits() : 0.0f;
    return ofFace > 0 ? ofFace : usualAscent;
}

float descent() {
    const float ofFace = face() ? -face()->descender() / emUnits() : 0.0f;
    return ofFace > 0 ? ofFace : usualDescent;
}

}  // namespace

void loadTypeface() {
    // Free the old face first: the new one may get the same texture name.
    face().reset();
    face() = std::make_unique<FFontData>(theme().facePath, theme().faceSize);
}

float width(const std::string& line, float emPx) {
    return face() ? face()->measureString(line.c_str(), emPx / emUnits()) : 0.0f;
}

float height(float emPx) {
    return (ascent() + descent()) * emPx;
}

std::string shortened(const std::string& line, float emPx, float widthPx) {
    return face() ? face()->shortenString(line.c_str(), emPx / emUnits(), widthPx) : line;
}

void draw(const std::string& line, const Rect& box, int alignment, float emPx, const Color& color) {
    if (!face() || line.empty()) {
        return;
    }
    const float px = screen().pixelX();
    const float py = screen().pixelY();
    const std::string shown = shortened(line, emPx, box.w / px);
    const float shownWidth = width(shown, emPx) * px;
    const float shownHeight = height(emPx) * py;
    float x = box.x + std::round(alignedX(alignment, box.w, shownWidth) / px) * px;
    float y = box.y + std::round(alignedY(alignment, box.h, shownHeight) / py + descent() * emPx) * py;
    glColor4f(color.r, color.g, color.b, color.a);
    face()->drawString(shown.c_str(), x, y, emPx * px / emUnits(), emPx * py / emUnits(), -1, -1);
}

}  // namespace wt::text
