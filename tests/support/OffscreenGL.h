#pragma once

#include "platform/timage/Image.h"

/// A real OpenGL context without a display server, for tests that look at what was drawn: Mesa's software
/// rasteriser behind EGL, the compatibility profile, 8 bits each of red, green, blue, alpha and stencil and
/// 24 of depth. Current from construction to destruction on the thread that made it; one at a time.
///
///     OffscreenGL gl(640, 480);
///     draw();
///     EXPECT_TRUE(gl.noErrors());
///     EXPECT_EQ(gl.read().at(320, 240, 0), 255);
///
/// Throws std::runtime_error, naming the step that failed, when there is no such context: the test fails.
class OffscreenGL {
public:
    /// Sizes in pixels. The viewport covers the surface, all buffers are cleared to 0 and the state is
    /// OpenGL's initial one.
    OffscreenGL(int widthPx, int heightPx);
    ~OffscreenGL();
    OffscreenGL(const OffscreenGL&) = delete;
    OffscreenGL& operator=(const OffscreenGL&) = delete;

    int width() const { return widthPx; }
    int height() const { return heightPx; }
    /// The whole surface, four channels, top row first. Leaves the pixel-store state as it was.
    tavi::Image<unsigned char> read() const;
    /// True when no OpenGL error is pending; clears and prints (to standard error) those that are.
    bool noErrors() const;

private:
    int widthPx;
    int heightPx;
    void* display;
    void* surface = nullptr;
    void* context = nullptr;
};
