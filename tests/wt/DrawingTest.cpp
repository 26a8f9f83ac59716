#include <GL/gl.h>

#include "tests/wt/DrawnStage.h"

namespace {

/// Fills everything that it can reach, or just itself.
class Painting : public wt::wtWidget {
public:
    Painting(wt::wtWidget* parent, const wt::Rect& rect, float overhang)
        : wtWidget("painting", {rect.x, rect.y}, {rect.w, rect.h}, 0), beyond(overhang) {
        parent->add(this);
    }
    void draw() override {
        glColor3f(1, 0, 0);
        glRectf(position.x - beyond, position.y - beyond, position.x + size.x + beyond,
                position.y + size.y + beyond);
    }

private:
    float beyond;
};

using DrawingTest = DrawnStage;

TEST_F(DrawingTest, SubclassDrawsInItsParentsCoordinatesAndCoversExactlyItsRectangle) {
    noShadow();
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    panel->setAlpha(0);
    panel->setBackground(oneCell(colored(0, 0, 0)));
    new Painting(panel, {0.25F, 0.5F, 0.25F, 0.25F}, 0);
    draw();
    // 80 by 60 pixels from 240 to 320 and, from the top, from 180 to 240.
    EXPECT_EQ(litPixels(), 80 * 60);
    EXPECT_EQ(litPixels(240, 180, 320, 240), 80 * 60);
}

TEST_F(DrawingTest, NothingInsideAWindowIsDrawnOutsideIt) {
    noShadow();
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    panel->setBackground(oneCell(colored(0, 0, 0)));
    new Painting(panel, {0.25F, 0.5F, 0.25F, 0.25F}, 10);
    draw();
    EXPECT_EQ(litPixels(), 320 * 240);
    EXPECT_EQ(litPixels(160, 120, 480, 360), 320 * 240);
}

TEST_F(DrawingTest, HiddenWindowsAndWidgetsAreNotDrawn) {
    noShadow();
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    panel->setBackground(oneCell(colored(0, 0, 0)));
    auto* painting = new Painting(panel, {0.25F, 0.5F, 0.25F, 0.25F}, 0);
    painting->setShowing(0);
    draw();
    EXPECT_EQ(litPixels(), 0);
    painting->setShowing(1);
    panel->setShowing(0);
    draw();
    EXPECT_EQ(litPixels(), 0);
    panel->setShowing(1);
    draw();
    EXPECT_GT(litPixels(), 0);
}

TEST_F(DrawingTest, WindowsAreDrawnFromBackToFront) {
    noShadow();
    window("red", {-0.5F, -0.5F, 1, 1})->setBackground(oneCell(colored(1, 0, 0)));
    wt::wtWindow* green = window("green", {-0.5F, -0.5F, 1, 1});
    green->setBackground(oneCell(colored(0, 1, 0)));
    draw();
    expectColor(pixel(at(0, 0)), {0, 255, 0});
    wt::wtWindowManager::raiseWidget(green, 1);
    draw();
    expectColor(pixel(at(0, 0)), {255, 0, 0});
}

TEST_F(DrawingTest, OpacityOfTheWindowAndOfItsBackgroundMultiply) {
    noShadow();
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    wt::Polygon white = colored(1, 1, 1);
    white.setAlpha(0.5F);
    panel->setBackground(oneCell(white));
    panel->setAlpha(0.8F);
    draw();
    expectColor(pixel(at(0, 0)), {102, 102, 102});
}

TEST_F(DrawingTest, SolidShaderLooksAsTheFixedFunctionDoes) {
    noShadow();
    ASSERT_NE(wt::wtSymbols::fragProgs["solid_shader"], 0U);
    wt::Polygon shaded = colored(0.3F, 0.6F, 0.9F);
    shaded.setShader(wt::wtSymbols::fragProgs["solid_shader"]);
    shaded.setAlpha(0.7F);
    wt::Polygon fixed = colored(0.3F, 0.6F, 0.9F);
    fixed.setAlpha(0.7F);
    window("left", {-1, -1, 1, 2})->setBackground(oneCell(shaded));
    window("right", {0, -1, 1, 2})->setBackground(oneCell(fixed));
    draw();
    expectColor(pixel(at(-0.5F, 0)), {54, 107, 161});
    expectColor(pixel(at(0.5F, 0)), {54, 107, 161});
}

TEST_F(DrawingTest, DefaultColourIsTheThemes) {
    noShadow();
    window("panel", {-0.5F, -0.5F, 1, 1})->setBackground(oneCell(wt::Polygon(wt::makeQuad({0, 0}, {1, 1}))));
    draw();
    const wt::Color solid = wt::theme().solid;
    expectColor(pixel(at(0, 0)), {static_cast<int>(solid.r * 255), static_cast<int>(solid.g * 255),
                                  static_cast<int>(solid.b * 255)});
}

TEST_F(DrawingTest, BorderIsAnOutlineOfOnePixelInside) {
    noShadow();
    wt::GridGraphic grid = oneCell(colored(0, 0, 0));
    grid.setBorder(1);
    window("panel", {-0.5F, -0.5F, 1, 1})->setBackground(grid);
    draw();
    EXPECT_EQ(litPixels(), 2 * 320 + 2 * 238);
    EXPECT_EQ(litPixels(161, 121, 479, 359), 0);
    EXPECT_EQ(litPixels(160, 120, 480, 360), 2 * 320 + 2 * 238);
}

TEST_F(DrawingTest, GridOfAFrameDrawsItsCellsWhereTheyBelong) {
    noShadow();
    wt::GridGraphic grid(3, 3);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            grid(row, column) = wt::Polygon(wt::makeQuad({0, 0}, {0.1F, 0.1F}));
            grid(row, column)
                .setColor(wt::Color(static_cast<float>(row) / 2, static_cast<float>(column) / 2, 1));
        }
    }
    grid.setSizeX(1, 0);
    grid.setSizeY(1, 0);
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    panel->setBackground(grid);
    panel->maximize();
    draw();
    expectColor(pixel(at(-0.95F, -0.95F)), {0, 0, 255});
    expectColor(pixel(at(0.95F, -0.95F)), {0, 255, 255});
    expectColor(pixel(at(-0.95F, 0.95F)), {255, 0, 255});
    expectColor(pixel(at(0, 0)), {127, 127, 255});
    expectColor(pixel(at(-0.89F, -0.89F)), {127, 127, 255});
}

TEST_F(DrawingTest, ShadowOfTheDefaultsFallsOutsideAndNoneWhenItIsTakenAway) {
    glClearColor(1, 1, 1, 1);
    window("panel", {-0.5F, -0.5F, 1, 1});
    draw();
    EXPECT_LT(pixel(482, 300).r, 200);
    EXPECT_EQ(pixel(490, 300).r, 255);
    wt::wtWindowManager::clear();
    wt::wtDefaults::Window::shadowOffsX = 0;
    wt::wtDefaults::Window::shadowOffsY = 0;
    wt::wtDefaults::Window::shadow_bg = wt::GridGraphic(1, 1);
    wt::wtDefaults::Window::shadow_bg(0, 0).setAlpha(0);
    window("panel", {-0.5F, -0.5F, 1, 1});
    draw();
    EXPECT_EQ(pixel(482, 300).r, 255);
    glClearColor(0, 0, 0, 0);
}

TEST_F(DrawingTest, ViewportIsReadAtEveryFrame) {
    noShadow();
    window("panel", {-1, -1, 2, 2})->setBackground(oneCell(colored(0, 1, 0)));
    glViewport(40, 30, 320, 240);
    draw();
    EXPECT_EQ(wt::screen().width, 320);
    EXPECT_EQ(wt::screen().height, 240);
    EXPECT_EQ(litPixels(), 320 * 240);
    EXPECT_EQ(litPixels(40, screenHeight - 270, 360, screenHeight - 30), 320 * 240);
}

TEST_F(DrawingTest, EmptyViewportDrawsNothingAndKeepsTheLayout) {
    window("panel", {-0.5F, -0.5F, 1, 1});
    glViewport(0, 0, 0, 0);
    draw();
    EXPECT_EQ(litPixels(), 0);
    EXPECT_EQ(wt::screen().width, screenWidth);
}

}  // namespace
