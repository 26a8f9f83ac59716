#pragma once

#include <array>

#include "platform/ffont/FFontData.h"
#include "scene/SmartPtr.h"

/// A handle on a loaded font face, with its own text scale and colour. Copies share the face, which is freed
/// with the last copy. GLUT thread only.
///
///     FFont font = Globals::getInstance().getDefaultFont();
///     font.setColor(1, 0, 0, 1);
///     font.drawString("A", x, y, -1, -1);
class FFont {
public:
    /// Loads the TrueType file `path` at `size`. A null `path` gives a font without a face: copy and assign
    /// it, but do not draw with it. Scale 1, opaque white.
    FFont(const char* path, unsigned int size);

    /// Red, green, blue and alpha, 0 to 1.
    void setColor(float r, float g, float b, float a);
    void setScale(float sx, float sy);

    /// Draws `text` from (`x`, `y`) in the current model-view transform and leaves its colour the current
    /// one. `p` and `q` are the box width and height of FFontData::drawString, whose result is returned.
    float drawString(const char* text, float x, float y, float p, float q);

private:
    void init();

    float scaleX;
    float scaleY;
    std::array<float, 4> color;
    SmartPtr<FFontData> data;
};
