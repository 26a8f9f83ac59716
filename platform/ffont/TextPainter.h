#pragma once

#include <vector>

#include "platform/ffont/GlyphAtlas.h"
#include "platform/ffont/ScreenMapping.h"
#include "platform/ffont/TextLine.h"

/// A line of text in the plane z = 0: where it starts on its baseline, how large its em is, and the box that
/// it must not leave, all in the plane's units.
struct TextPlacement {
    double x;
    double y;
    double emWidth;
    double emHeight;
    double boxLeft;
    double boxBottom;
    double boxRight;
    double boxTop;
};

/// Draws one line of text from an atlas, filling the atlas with what it lacks.
///
/// Text that runs along the pixel rows is drawn sample on pixel: every glyph is rasterised at just the size
/// and the quarter of a pixel where it stands, so that nothing is ever filtered and moving text keeps its
/// sharpness. On the screen (a parallel projection) the baseline goes to a whole pixel and the outlines are
/// hinted in height; in a world, where text drifts, it keeps its quarter in y as well. Any other text is
/// filtered linearly from pictures at its size on the screen.
class TextPainter {
public:
    TextPainter(const FontFace& face_, GlyphAtlas& atlas_) : face(face_), atlas(atlas_) {}

    /// Needs a current context; changes the bound texture and the pixel store, and nothing else.
    void paint(const TextLine& line, const TextPlacement& placement);

private:
    struct Corner {
        double x, y;
        float s, t;
    };
    void paintAligned(const TextLine& line, const TextPlacement& placement, GlyphKey key);
    void paintScaled(const TextLine& line, const TextPlacement& placement, GlyphKey key);
    const AtlasGlyph& picture(const GlyphKey& key);
    void addQuad(Corner lower, Corner upper, const TextPlacement& box);
    void flush();

    const FontFace& face;
    GlyphAtlas& atlas;
    ScreenMapping screen;
    std::vector<Corner> quads;
};
