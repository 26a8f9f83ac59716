#pragma once

#include <array>

#include "platform/ffont/FFontData.h"
#include "scene/SmartPtr.h"

/// A handle on a loaded font face, with a text scale and a colour of its own. Copies share the face and go
/// their own way in scale and colour; the face goes with the last of them. GLUT thread only.
///
///     FFont font = Globals::getInstance().getDefaultFont();
///     font.setColor(1, 0, 0, 1);
///     font.drawString("A", x, y, -1, -1);
class FFont {
public:
    /// Loads the TrueType file `path` at `size`; a null `path` gives a font without a face, which may be
    /// copied and assigned to but not drawn with. Scale 1, opaque white.
    FFont(char const* path, unsigned int size);

    /// Red, green, blue and alpha, 0 to 1.
    void setColor(float r, float g, float b, float a);
    void setScale(float sx, float sy);

    /// Draws `text` from (`x`, `y`) in the current model-view transform and leaves its colour the current
    /// one. `p` and `q` are the box width and height of FFontData::drawString, whose result is returned.
    float drawString(char const* text, float x, float y, float p, float q);

private:
    void init();

    float scaleX;
    float scaleY;
    std::array<float, 4> color;
    SmartPtr<FFontData> data;
};
