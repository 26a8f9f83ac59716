#include <GL/gl.h>

#include <cstdlib>
#include <string>

#include "tests/support/OffscreenGL.h"
#include "tests/wt/Stage.h"

namespace {

struct Rgb {
    int r;
    int g;
    int b;
};

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

class DrawingTest : public Stage {
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

    static wt::Polygon colored(float r, float g, float b) {
        wt::Polygon polygon(wt::makeQuad({0, 0}, {1, 1}));
        polygon.setColor(wt::Color(r, g, b));
        return polygon;
    }
    static wt::GridGraphic oneCell(const wt::Polygon& cell) {
        wt::GridGraphic grid(1, 1);
        grid(0, 0) = cell;
        return grid;
    }
    static void noShadow() { wt::wtDefaults::Window::shadow_bg = wt::GridGraphic(); }

    OffscreenGL gl{screenWidth, screenHeight};
    tavi::Image<unsigned char> picture{0, 0, 0};
};

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

TEST_F(DrawingTest, TextStaysInsideItsWidget) {
    noShadow();
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    panel->setBackground(oneCell(colored(0, 0, 0)));
    const auto* text = new wt::wtStaticText(panel, "text", {0.25F, 0.5F}, {0.25F, 0.1F},
                                            "A text that is much longer than its widget", 0x24);
    draw();
    const Pixel upperLeft = on(*text, 0, 0.999F);
    const Pixel lowerRight = on(*text, 0.999F, 0);
    const int inside = litPixels(upperLeft.x, upperLeft.y, lowerRight.x + 1, lowerRight.y + 1);
    EXPECT_GT(inside, 100);
    EXPECT_EQ(litPixels(), inside);
}

TEST_F(DrawingTest, ButtonLooksDifferentAtRestUnderThePointerPressedAndDisabled) {
    noShadow();
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    auto* button = new wt::wtButton(panel, "button", {0.2F, 0.2F}, {0.5F, 0.2F}, "");
    const auto settle = [] {
        for (int frame = 0; frame < 10; ++frame) {
            wt::wtWindowManager::animate();
        }
    };
    draw();
    const Rgb rest = pixel(on(*button));
    move(on(*button));
    settle();
    draw();
    const Rgb hovered = pixel(on(*button));
    press(on(*button));
    draw();
    const Rgb pressed = pixel(on(*button));
    move(at(0.9F, 0.9F));
    settle();
    draw();
    const Rgb left = pixel(on(*button));
    button->setEnabled(0);
    draw();
    const Rgb disabled = pixel(on(*button));
    EXPECT_GT(hovered.b, rest.b + 8);
    EXPECT_LT(pressed.b, rest.b - 20);
    EXPECT_EQ(left.b, rest.b);
    EXPECT_LT(disabled.b - disabled.r, 40) << "grey";
}

TEST_F(DrawingTest, HoverFadesInOverAFewFrames) {
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    const auto* button = new wt::wtButton(panel, "button", {0.2F, 0.2F}, {0.5F, 0.2F}, "");
    draw();
    const Pixel middle = on(*button);
    move(middle);
    int last = pixel(middle).b;
    int steps = 0;
    for (int frame = 0; frame < 10; ++frame) {
        wt::wtWindowManager::animate();
        draw();
        EXPECT_GE(pixel(middle).b, last);
        steps += pixel(middle).b > last ? 1 : 0;
        last = pixel(middle).b;
    }
    EXPECT_GE(steps, 3);
    EXPECT_LE(steps, 8);
}

TEST_F(DrawingTest, ListDrawsSelectionAndHoverAndSomethingQuietWhenEmpty) {
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    auto* list = new wt::wtListBox(panel, "list", {0.1F, 0.1F}, {0.7F, 0.7F});
    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    layout->add(list, attributes(0, 1));
    panel->setLayoutManager(layout);
    draw();
    const auto field = [&] { return pixel(on(*list, 0.1F, 0.1F)); };
    int marks = 0;
    for (int y = on(*list, 0.5F, 0.9F).y; y < on(*list, 0.5F, 0.1F).y; ++y) {
        marks += pixel(on(*list, 0.5F, 0).x, y).r > field().r + 10 ? 1 : 0;
    }
    EXPECT_EQ(marks, 5) << "the five lines of an empty staff";

    std::list<std::string> rows(3, "");
    list->append(rows);
    wt::wtWindowManager::displayWidgets();
    const auto middleOf = [&](int row) {
        const wt::Rect rect = list->rowRect(row);
        return at(list->origin().x + rect.x + rect.w / 2, list->origin().y + rect.y + rect.h / 2);
    };
    click(middleOf(0));
    move(middleOf(1));
    draw();
    const wt::Color selected = wt::theme().selected;
    expectColor(pixel(middleOf(0)), {static_cast<int>(selected.r * 255), static_cast<int>(selected.g * 255),
                                     static_cast<int>(selected.b * 255)});
    EXPECT_GT(pixel(middleOf(1)).b, pixel(middleOf(2)).b + 10);
}

}  // namespace
