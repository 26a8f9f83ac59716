#pragma once

#include <gtest/gtest.h>

#include "platform/ffont/FFontData.h"
#include "platform/timage/Image.h"
#include "tests/support/OffscreenGL.h"

/// The surface seen as the game's camera sees the world: 45 degrees from 10 units in front of the plane z =
/// 0.
class WorldView {
public:
    explicit WorldView(const OffscreenGL& surface);

    double pixelsPerUnit() const { return unitPx; }
    /// The world's x of a column's left edge, and y of a row's top edge.
    float xOf(double columnPx) const { return static_cast<float>((columnPx - widthPx / 2) / unitPx); }
    float yOf(double rowPx) const { return static_cast<float>((heightPx / 2 - rowPx) / unitPx); }
    double columnOf(double x) const { return widthPx / 2 + x * unitPx; }
    double rowOf(double y) const { return heightPx / 2 - y * unitPx; }

private:
    double widthPx;
    double heightPx;
    double unitPx;
};

/// A face on a screen that shows the world.
class DrawnFace : public testing::Test {
protected:
    const OffscreenGL gl{640, 480};
    const WorldView view{gl};
    FFontData face{"Fonts/Vera.ttf", 24};
};

/// Loads identity matrices: both axes -1 to 1 over the surface, as on the widgets' screen.
void viewScreen();

/// `text` in white on black, at (`x`, `y`) of the current view, without a limit.
tavi::Image<unsigned char> drawn(const OffscreenGL& gl, FFontData& face, const char* text, float x, float y,
                                 float scaleX, float scaleY);
