#pragma once

#include <GL/gl.h>

#include "tests/support/OffscreenGL.h"
#include "tests/wt/Stage.h"

struct Rgb {
    int r;
    int g;
    int b;
};

/// A stage with a screen, and a look at what is on it.
class DrawnStage : public Stage {
protected:
    void TearDown() override {
        EXPECT_TRUE(gl.noErrors());
        Stage::TearDown();
    }
    void draw() {
        glClear(GL_COLOR_BUFFER_BIT);
        wt::wtWindowManager::displayWidgets();
        picture = gl.read();
    }
    Rgb pixel(int x, int y) const { return {picture.at(x, y, 0), picture.at(x, y, 1), picture.at(x, y, 2)}; }
    Rgb pixel(Pixel p) const { return pixel(p.x, p.y); }
    static void expectColor(const Rgb& actual, const Rgb& expected, int tolerance = 2) {
        EXPECT_NEAR(actual.r, expected.r, tolerance);
        EXPECT_NEAR(actual.g, expected.g, tolerance);
        EXPECT_NEAR(actual.b, expected.b, tolerance);
    }
    /// Pixels that differ from black, within `left` to `right` and `top` to `bottom`, excluding the latter.
    int litPixels(int left, int top, int right, int bottom) const {
        int lit = 0;
        for (int y = top; y < bottom; ++y) {
            for (int x = left; x < right; ++x) {
                const Rgb c = pixel(x, y);
                lit += c.r + c.g + c.b > 0 ? 1 : 0;
            }
        }
        return lit;
    }
    int litPixels() const { return litPixels(0, 0, picture.width(), picture.height()); }

    static Rgb rgb(const wt::Color& c) {
        return {static_cast<int>(c.r * 255), static_cast<int>(c.g * 255), static_cast<int>(c.b * 255)};
    }
    static void noShadow() { wt::wtDefaults::Window::shadow_bg = wt::GridGraphic(); }

    OffscreenGL gl{screenWidth, screenHeight};
    tavi::Image<unsigned char> picture{0, 0, 0};
};
