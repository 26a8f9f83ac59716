#include <list>
#include <string>

#include "platform/wt/wt.h"
#include "tests/wt/DrawnStage.h"

namespace {

using LooksTest = DrawnStage;

TEST_F(LooksTest, TextStaysInsideItsWidget) {
    noShadow();
    wt::wtWindow* panel = window("panel", {-0.5f, -0.5f, 1, 1});
    panel->setBackground(oneCell(colored(0, 0, 0)));
    const auto* text = new wt::wtStaticText(panel, "text", {0.25f, 0.5f}, {0.25f, 0.1f},
                                            "A text that is much longer than its widget", 0x24);
    draw();
    const Pixel upperLeft = on(*text, 0, 0.999f);
    const Pixel lowerRight = on(*text, 0.999f, 0);
    const int inside = litPixels(upperLeft.x, upperLeft.y, lowerRight.x + 1, lowerRight.y + 1);
    EXPECT_GT(inside, 100);
    EXPECT_EQ(litPixels(), inside);
}

TEST_F(LooksTest, ButtonFadesInUnderThePointerAndLooksDifferentAtRestPressedAndDisabled) {
    noShadow();
    wt::wtWindow* panel = window("panel", {-0.5f, -0.5f, 1, 1});
    auto* button = new wt::wtButton(panel, "button", {0.2f, 0.2f}, {0.5f, 0.2f}, "");
    draw();
    const Rgb rest = pixel(on(*button));
    move(on(*button));
    Rgb hovered = rest;
    int steps = 0;
    for (int frame = 0; frame < 10; ++frame) {
        wt::wtWindowManager::animate();
        draw();
        EXPECT_GE(pixel(on(*button)).b, hovered.b);
        steps += pixel(on(*button)).b > hovered.b ? 1 : 0;
        hovered = pixel(on(*button));
    }
    EXPECT_GE(steps, 3);
    EXPECT_LE(steps, 8);
    press(on(*button));
    draw();
    const Rgb pressed = pixel(on(*button));
    move(at(0.9f, 0.9f));
    for (int frame = 0; frame < 10; ++frame) {
        wt::wtWindowManager::animate();
    }
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

TEST_F(LooksTest, ListDrawsSelectionAndHoverAndSomethingQuietWhenEmpty) {
    wt::wtWindow* panel = window("panel", {-0.5f, -0.5f, 1, 1});
    auto* list = new wt::wtListBox(panel, "list", {0.1f, 0.1f}, {0.7f, 0.7f});
    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    layout->add(list, attributes(0, 1));
    panel->setLayoutManager(layout);
    draw();
    const auto field = [&] { return pixel(on(*list, 0.1f, 0.1f)); };
    int marks = 0;
    for (int y = on(*list, 0.5f, 0.9f).y; y < on(*list, 0.5f, 0.1f).y; ++y) {
        marks += pixel(on(*list, 0.5f, 0).x, y).r > field().r + 10 ? 1 : 0;
    }
    EXPECT_EQ(marks, 5) << "the five lines of an empty staff";

    std::list<std::string> rows(3, "");
    list->append(rows);
    wt::wtWindowManager::displayWidgets();
    click(onRow(*list, 0));
    move(onRow(*list, 1));
    draw();
    expectColor(pixel(onRow(*list, 0)), rgb(wt::theme().selected));
    EXPECT_GT(pixel(onRow(*list, 1)).b, pixel(onRow(*list, 2)).b + 10);
}

}  // namespace
