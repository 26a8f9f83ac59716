#pragma once

#include <array>

/// How the plane z = 0 of the current model-view transform falls on the pixels of the viewport: a snapshot of
/// the OpenGL matrices and viewport at the time it is made. Pixels count from the window's lower left corner,
/// y up; whole numbers are edges between pixels.
class ScreenMapping {
public:
    struct Point {
        double x;
        double y;
    };

    /// Without a current context nothing is visible.
    ScreenMapping();

    /// False when nothing of the plane could appear: an empty viewport, or a matrix that is not finite.
    bool visible() const { return anythingVisible; }
    /// True when the plane's axes run along pixel rows and columns, x right and y up, at one scale all over.
    bool aligned() const { return alongPixels; }
    /// True when size does not change with depth: what is drawn is laid out on the screen, not in a world.
    bool parallel() const { return parallelProjection; }

    /// Pixels per unit along x and along y. Where not aligned: their lengths on the screen at `at`, 0 behind
    /// the eye.
    Point scaleAt(Point at) const;
    /// For an aligned plane, there and back.
    Point toPixels(Point inPlane) const;
    Point toPlane(Point pixels) const;
    /// In pixels, for an aligned plane.
    bool inViewport(double left, double bottom, double right, double top) const;

private:
    using Matrix = std::array<double, 16>;
    struct Row {
        double x, y, one;
        double at(Point p) const { return x * p.x + y * p.y + one; }
    };
    Row rowOf(const Matrix& projection, const Matrix& modelview, int row) const;

    std::array<int, 4> viewport{};
    // Clip coordinates of a point of the plane.
    Row clipX{}, clipY{}, clipW{};
    bool anythingVisible = false;
    bool alongPixels = false;
    bool parallelProjection = false;
    Point origin{};
    Point scale{};
};
