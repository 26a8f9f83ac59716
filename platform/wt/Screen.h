#pragma once

#include "platform/tmath/Vec2.h"
#include "platform/wt/Rect.h"

namespace wt {

/// The GL viewport in pixels, and what follows from it: how large a pixel is in screen units, where pixels
/// begin, and how large text is.
struct Screen {
    /// Lower left corner and size of the viewport in the GL window, pixels; the size is at least 1 by 1.
    int x = 0;
    int y = 0;
    int width = 640;
    int height = 480;

    /// Screen units for each pixel.
    float pixelX() const { return 2.0f / static_cast<float>(width); }
    float pixelY() const { return 2.0f / static_cast<float>(height); }

    /// The middle of a pixel, counted from the upper left with y down, in screen units.
    tavi::Vec2<float> fromPixel(int column, int row) const;
    /// The rectangle with each edge moved to the nearest edge between pixels: neighbours stay neighbours. The
    /// origin of the coordinates must lie on such an edge, as it does inside every window.
    Rect snapped(const Rect& rect) const;
    /// The same for screen coordinates, which count from the screen's middle.
    Rect onPixels(const Rect& rect) const;
    /// The em of ordinary text, whole pixels.
    float emPixels() const;

    bool operator==(const Screen& other) const {
        return x == other.x && y == other.y && width == other.width && height == other.height;
    }
};

/// The viewport that layout, pointer and drawing use.
const Screen& screen();
void setScreen(const Screen& current);

}  // namespace wt
