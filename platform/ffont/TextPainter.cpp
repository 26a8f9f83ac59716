#include "platform/ffont/TextPainter.h"

#include <algorithm>
#include <cmath>

#include <GL/gl.h>

namespace {

// No glyph reaches farther from its origin; only what is in sight is rasterised.
const double reachEm = 3.0;
// A smaller glyph is a smudge, and FreeType draws none.
const double smallestEmPx = 4.0;
const double largestEmPx = static_cast<double>(GlyphKey::maxSteps) / GlyphKey::stepsPerPixel;

// Larger letters are sharp without hinting.
const double largestHintedEmPx = 40.0;

int toSteps(double px) {
    return static_cast<int>(std::lround(std::clamp(px, smallestEmPx, largestEmPx) * GlyphKey::stepsPerPixel));
}

bool isExact(double px) {
    return px >= smallestEmPx && px <= largestEmPx;
}

double snap(double px, int phases = GlyphKey::phases) {
    return std::floor(px * phases + 0.5) / phases;
}

// A position as the pixel edge before it and the rest in phases.
struct Snapped {
    double pixel;
    int phase;
    explicit Snapped(double px, int phases = GlyphKey::phases) {
        const double snapped = snap(px, phases);
        pixel = std::floor(snapped);
        phase = static_cast<int>((snapped - pixel) * GlyphKey::phases);
    }
};

}  // namespace

void TextPainter::paint(const TextLine& line, const TextPlacement& placement) {
    const bool finite = std::isfinite(placement.x) && std::isfinite(placement.y) &&
                        std::isfinite(placement.emWidth) && std::isfinite(placement.emHeight);
    if (!finite || !screen.visible()) {
        return;
    }
    const ScreenMapping::Point start = screen.scaleAt({placement.x, placement.y});
    const ScreenMapping::Point end =
        screen.scaleAt({placement.x + line.advanceEm * placement.emWidth, placement.y});
    const double emWidthPx = placement.emWidth * std::max(start.x, end.x);
    const double emHeightPx = placement.emHeight * std::max(start.y, end.y);
    // A transform with huge values gives no size.
    if (std::isnan(emWidthPx) || std::isnan(emHeightPx)) {
        return;
    }
    GlyphKey key;
    key.emWidthSteps = toSteps(std::abs(emWidthPx));
    key.emHeightSteps = toSteps(std::abs(emHeightPx));
    if (screen.aligned() && isExact(emWidthPx) && isExact(emHeightPx)) {
        paintAligned(line, placement, key);
    } else {
        paintScaled(line, placement, key);
    }
    flush();
}

void TextPainter::paintAligned(const TextLine& line, const TextPlacement& placement, GlyphKey key) {
    key.hinted = screen.parallel() && key.emHeightSteps <= largestHintedEmPx * GlyphKey::stepsPerPixel;
    const double reachX = reachEm * key.emWidthSteps / GlyphKey::stepsPerPixel;
    const double reachY = reachEm * key.emHeightSteps / GlyphKey::stepsPerPixel;
    const ScreenMapping::Point start = screen.toPixels({placement.x, placement.y});
    const double emWidthPx = placement.emWidth * screen.scaleAt({placement.x, placement.y}).x;
    const Snapped y(start.y, screen.parallel() ? 1 : GlyphKey::phases);
    key.phaseY = y.phase;
    for (const TextLine::Glyph& glyph : line.glyphs) {
        // Snap start and distances separately, so that the letters of moving text keep their distances.
        const Snapped x(snap(start.x) + snap(glyph.penEm * emWidthPx));
        if (!screen.inViewport(x.pixel - reachX, y.pixel - reachY, x.pixel + reachX, y.pixel + reachY)) {
            continue;
        }
        key.glyph = glyph.glyph;
        key.phaseX = x.phase;
        const AtlasGlyph& shown = picture(key);
        const double left = x.pixel + shown.leftPx;
        const double top = y.pixel + shown.topPx;
        const ScreenMapping::Point lower = screen.toPlane({left, top - shown.heightPx});
        const ScreenMapping::Point upper = screen.toPlane({left + shown.widthPx, top});
        addQuad({lower.x, lower.y, shown.left, shown.bottom}, {upper.x, upper.y, shown.right, shown.top},
                placement);
    }
}

void TextPainter::paintScaled(const TextLine& line, const TextPlacement& placement, GlyphKey key) {
    const double unitsPerPixelX = placement.emWidth * GlyphKey::stepsPerPixel / key.emWidthSteps;
    const double unitsPerPixelY = placement.emHeight * GlyphKey::stepsPerPixel / key.emHeightSteps;
    for (const TextLine::Glyph& glyph : line.glyphs) {
        key.glyph = glyph.glyph;
        const AtlasGlyph& shown = picture(key);
        const double left = placement.x + glyph.penEm * placement.emWidth + shown.leftPx * unitsPerPixelX;
        const double top = placement.y + shown.topPx * unitsPerPixelY;
        addQuad({left, top - shown.heightPx * unitsPerPixelY, shown.left, shown.bottom},
                {left + shown.widthPx * unitsPerPixelX, top, shown.right, shown.top}, placement);
    }
}

const AtlasGlyph& TextPainter::picture(const GlyphKey& key) {
    if (const AtlasGlyph* known = atlas.find(key)) {
        return *known;
    }
    if (const AtlasGlyph* added = atlas.add(key, face.rasterise(key, atlas.maxSamples()))) {
        return *added;
    }
    // Draw what still needs the pictures before they go.
    flush();
    atlas.clear();
    // The empty atlas may be smaller than the full one was.
    return *atlas.add(key, face.rasterise(key, atlas.maxSamples()));
}

// Cuts the quad, and its texture coordinates with it, to the box.
void TextPainter::addQuad(Corner lower, Corner upper, const TextPlacement& box) {
    const double width = upper.x - lower.x;
    const double height = upper.y - lower.y;
    if (width == 0.0 || height == 0.0) {
        return;
    }
    const auto cut = [&](const Corner& corner) {
        Corner inside = corner;
        inside.x = std::clamp(corner.x, box.boxLeft, box.boxRight);
        inside.y = std::clamp(corner.y, box.boxBottom, box.boxTop);
        inside.s += static_cast<float>((inside.x - corner.x) / width) * (upper.s - lower.s);
        inside.t += static_cast<float>((inside.y - corner.y) / height) * (upper.t - lower.t);
        return inside;
    };
    const Corner cutLower = cut(lower);
    const Corner cutUpper = cut(upper);
    if (cutLower.x != cutUpper.x && cutLower.y != cutUpper.y) {
        quads.push_back(cutLower);
        quads.push_back(cutUpper);
    }
}

void TextPainter::flush() {
    if (quads.empty()) {
        return;
    }
    atlas.bind();
    glBegin(GL_QUADS);
    const auto vertex = [](float s, float t, double x, double y) {
        glTexCoord2f(s, t);
        glVertex2d(x, y);
    };
    for (std::size_t i = 0; i < quads.size(); i += 2) {
        const Corner& lower = quads[i];
        const Corner& upper = quads[i + 1];
        vertex(lower.s, lower.t, lower.x, lower.y);
        vertex(upper.s, lower.t, upper.x, lower.y);
        vertex(upper.s, upper.t, upper.x, upper.y);
        vertex(lower.s, upper.t, lower.x, upper.y);
    }
    glEnd();
    quads.clear();
}
