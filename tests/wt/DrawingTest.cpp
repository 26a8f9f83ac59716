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

class DrawingTest : public DrawnStage {
protected:
    void SetUp() override {
        Stage::SetUp();
        noShadow();
    }
    /// A window over the middle half of the screen.
    static wt::wtWindow* half(const wt::Polygon& background) {
        wt::wtWindow* made = window("panel", {-0.5f, -0.5f, 1, 1});
        made->setBackground(oneCell(background));
        return made;
    }
};

TEST_F(DrawingTest, SubclassDrawsInItsParentsCoordinatesWithinTheWindow) {
    wt::wtWindow* panel = half(colored(0, 0, 0));
    new Painting(panel, {0.25f, 0.5f, 0.25f, 0.25f}, 0);
    draw();
    // 80 by 60 pixels from 240 to 320 and, from the top, from 180 to 240.
    EXPECT_EQ(litPixels(), 80 * 60);
    EXPECT_EQ(litPixels(240, 180, 320, 240), 80 * 60);
    new Painting(panel, {0.25f, 0.5f, 0.25f, 0.25f}, 10);
    draw();
    EXPECT_EQ(litPixels(), 320 * 240);
    EXPECT_EQ(litPixels(160, 120, 480, 360), 320 * 240);
}

TEST_F(DrawingTest, HiddenWidgetIsNotDrawn) {
    wt::wtWindow* panel = half(colored(0, 0, 0));
    (new Painting(panel, {0.25f, 0.5f, 0.25f, 0.25f}, 0))->setShowing(0);
    draw();
    EXPECT_EQ(litPixels(), 0);
}

TEST_F(DrawingTest, SolidShaderLooksAsTheFixedFunctionDoes) {
    ASSERT_NE(wt::wtSymbols::fragProgs["solid_shader"], 0U);
    wt::Polygon shaded = colored(0.3f, 0.6f, 0.9f);
    shaded.setShader(wt::wtSymbols::fragProgs["solid_shader"]);
    shaded.setAlpha(0.7f);
    wt::Polygon fixed = colored(0.3f, 0.6f, 0.9f);
    fixed.setAlpha(0.7f);
    window("left", {-1, -1, 1, 2})->setBackground(oneCell(shaded));
    window("right", {0, -1, 1, 2})->setBackground(oneCell(fixed));
    draw();
    expectColor(pixel(at(-0.5f, 0)), {54, 107, 161});
    expectColor(pixel(at(0.5f, 0)), {54, 107, 161});
}

TEST_F(DrawingTest, SolidShaderIsMadeAgainWhenItIsGone) {
    for (int i = 0; i < 2; ++i) {
        wt::loadFragmentPrograms();
        const unsigned int program = wt::wtSymbols::fragProgs["solid_shader"];
        GLint linked = GL_FALSE;
        glGetProgramiv(program, GL_LINK_STATUS, &linked);
        EXPECT_EQ(linked, GL_TRUE);
        wt::loadFragmentPrograms();
        EXPECT_EQ(wt::wtSymbols::fragProgs["solid_shader"], program);
        glDeleteProgram(program);
    }
}

TEST_F(DrawingTest, BorderIsAnOutlineOfOnePixelInside) {
    wt::GridGraphic grid = oneCell(colored(0, 0, 0));
    grid.setBorder(1);
    window("panel", {-0.5f, -0.5f, 1, 1})->setBackground(grid);
    draw();
    EXPECT_EQ(litPixels(), 2 * 320 + 2 * 238);
    EXPECT_EQ(litPixels(161, 121, 479, 359), 0);
    EXPECT_EQ(litPixels(160, 120, 480, 360), 2 * 320 + 2 * 238);
}

TEST_F(DrawingTest, ShadowOfTheDefaultsFallsOutsideAndNoneWhenItIsTakenAway) {
    wt::loadDefaults(screenWidth, screenHeight);
    glClearColor(1, 1, 1, 1);
    window("panel", {-0.5f, -0.5f, 1, 1});
    draw();
    EXPECT_LT(pixel(482, 300).r, 200);
    EXPECT_EQ(pixel(490, 300).r, 255);
    wt::wtWindowManager::clear();
    wt::wtDefaults::Window::shadowOffsX = 0;
    wt::wtDefaults::Window::shadowOffsY = 0;
    wt::wtDefaults::Window::shadow_bg = wt::GridGraphic(1, 1);
    wt::wtDefaults::Window::shadow_bg(0, 0).setAlpha(0);
    window("panel", {-0.5f, -0.5f, 1, 1});
    draw();
    EXPECT_EQ(pixel(482, 300).r, 255);
    glClearColor(0, 0, 0, 0);
}

TEST_F(DrawingTest, ViewportIsReadAtEveryFrameAndAnEmptyOneChangesNothing) {
    window("panel", {-1, -1, 2, 2})->setBackground(oneCell(colored(0, 1, 0)));
    glViewport(0, 0, 0, 0);
    draw();
    EXPECT_EQ(litPixels(), 0);
    EXPECT_EQ(wt::screen().width, screenWidth);
    glViewport(40, 30, 320, 240);
    draw();
    EXPECT_EQ(wt::screen().width, 320);
    EXPECT_EQ(wt::screen().height, 240);
    EXPECT_EQ(litPixels(), 320 * 240);
    EXPECT_EQ(litPixels(40, screenHeight - 270, 360, screenHeight - 30), 320 * 240);
}

}  // namespace
