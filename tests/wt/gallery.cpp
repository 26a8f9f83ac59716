// Every widget of the toolkit in every state, drawn into a picture:
//
//     wt_gallery WIDTH HEIGHT PICTURE.png        run in the game's data folder, for the typeface
//
// The dark panel is the theme's own with a title bar, the light one has a background like the song chooser's.

#include <GL/gl.h>

#include <cstdio>
#include <cstdlib>
#include <list>
#include <string>

#include "platform/wt/wt.h"
#include "tests/support/OffscreenGL.h"

namespace {

constexpr int centred = wt::alignCentreX | wt::alignCentreY;
const wt::LinearLayout::Attributes plain(0.01F, 0.01F, 0.01F, 0.01F, 1, 0, wt::wtAlign(centred), 0);

/// A curve with a line through it, as a widget of the program's own.
class Curve : public wt::wtWidget {
public:
    explicit Curve(wt::wtWidget* parent) : wtWidget("curve", {0, 0}, {1, 1}, expandX | expandY) {
        parent->add(this);
    }
    void draw() override {
        constexpr int points = 60;
        glColor3f(1, 0, 0);
        glBegin(GL_LINE_STRIP);
        for (int i = 0; i <= points; ++i) {
            const float x = static_cast<float>(i) / points;
            const float y = 0.2F + 0.75F * (x * 7 - static_cast<float>(static_cast<int>(x * 7)));
            glVertex2f(position.x + x * size.x, position.y + y * size.y);
        }
        glEnd();
        glColor3f(0, 1, 0);
        glBegin(GL_LINES);
        glVertex2f(position.x, position.y + 0.4F * size.y);
        glVertex2f(position.x + size.x, position.y + 0.4F * size.y);
        glEnd();
    }
};

wt::wtButton* button(wt::wtWindow* window, wt::LinearLayout* layout, const std::string& label) {
    auto* made = new wt::wtButton(window, label, {0, 0}, {-1, -1}, label);
    layout->add(made, plain);
    return made;
}

void text(wt::wtWindow* window, wt::LinearLayout* layout, const std::string& line) {
    auto* made = new wt::wtStaticText(window, line, {0, 0}, {0.8F, -1}, line, centred);
    layout->add(made, plain);
}

wt::wtListBox* list(wt::wtWindow* window, wt::LinearLayout* layout, std::list<std::string> rows) {
    auto* made = new wt::wtListBox(window, "list", {0, 0}, {0.7F, 0.7F});
    made->append(rows);
    layout->add(made, plain);
    return made;
}

std::list<std::string> manyRows() {
    std::list<std::string> rows = {"Ode_to_Joy", "Fr\u00e8re_Jacques", "H\u00e4nschen_klein",
                                   "A_name_that_is_far_too_long_to_fit_into_any_row_of_this_list"};
    for (int i = 5; i < 40; ++i) {
        rows.push_back("Song_number_" + std::to_string(i));
    }
    return rows;
}

wt::GridGraphic paleBlue() {
    wt::GridGraphic grid(1, 1);
    grid(0, 0) = wt::Polygon(wt::makeQuad({0, 0}, {1, 1}));
    grid(0, 0).setShader(wt::wtSymbols::fragProgs["solid_shader"]);
    grid(0, 0).setColor(tavi::Vec3<float>(0.9F, 0.9F, 1.0F));
    grid(0, 0).setAlpha(0.9F);
    grid.setBorder(1);
    return grid;
}

wt::wtWindow* panel(const std::string& title, float left, float bottom, float width, float height,
                    int flags) {
    auto* window = new wt::wtWindow(title, {left, bottom}, {width, height}, flags);
    window->setAlpha((flags & wt::wtWindow::titleBar) != 0 ? 0.8F : 0.9F);
    if ((flags & wt::wtWindow::titleBar) == 0) {
        window->setBackground(paleBlue());
    }
    wt::wtWindowManager::appendWidget(window);
    return window;
}

void buttonsPanel(float left, int flags) {
    wt::wtWindow* window = panel("Buttons and texts", left, 0.04F, 0.62F, 0.92F, flags);
    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    button(window, layout, "Disabled")->setEnabled(0);
    wt::wtButton* pressed = button(window, layout, "Pressed");
    wt::wtButton* hovered = button(window, layout, "Under the pointer");
    button(window, layout, "At rest");
    text(window, layout, "A text that is far too long for the room that it has got here");
    text(window, layout, "A line of text, \u00e4\u00f6\u00fc \u00e9\u00e8\u00ea, 440 880");
    window->setLayoutManager(layout);
    hovered->hover({0, 0});
    pressed->press({0, 0});
    for (int frame = 0; frame < 30; ++frame) {
        wt::wtWindowManager::animate();
    }
}

void listsPanel(float left, int flags) {
    wt::wtWindow* window = panel("Lists", left, -0.96F, 0.62F, 0.92F, flags);
    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    list(window, layout, {});
    list(window, layout, manyRows())->select(1);
    window->setLayoutManager(layout);
}

void middlePanels() {
    wt::wtWindow* curve =
        panel("A title that does not fit into its bar at all", -0.29F, 0.3F, 0.58F, 0.66F, 0x101);
    auto* curveLayout = new wt::LinearLayout(wt::bottomToTop);
    text(curve, curveLayout, "440 880 1320 ");
    curveLayout->add(new Curve(curve), plain);
    curve->setLayoutManager(curveLayout);

    wt::wtWindow* scrolled = panel("", -0.29F, -0.96F, 0.58F, 1.2F, 0);
    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    wt::wtListBox* rows = list(scrolled, layout, manyRows());
    scrolled->setLayoutManager(layout);
    rows->select(20);
    wt::wtWindowManager::setViewport(wt::screen().width, wt::screen().height);
    const wt::Rect hovered = rows->rowRect(rows->view().firstRow() + 1);
    rows->hover({hovered.x + hovered.w / 2, hovered.y + hovered.h / 2});
}

/// Something to look through to: white lines and colours, as the game draws them.
void backdrop() {
    glClear(GL_COLOR_BUFFER_BIT);
    glColor3f(1, 1, 1);
    glBegin(GL_LINES);
    for (int i = -10; i < 10; ++i) {
        glVertex2f(-1, static_cast<float>(i) / 10);
        glVertex2f(1, static_cast<float>(i) / 10 + 0.05F);
    }
    glEnd();
    glColor3f(0.2F, 0.4F, 1);
    glRectf(-0.1F, -0.2F, 0.1F, 0.2F);
    glColor3f(1, 1, 1);
    glRectf(-0.9F, -0.3F, -0.5F, 0.3F);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: wt_gallery WIDTH HEIGHT PICTURE.png\n");
        return EXIT_FAILURE;
    }
    const int width = std::atoi(argv[1]);
    const int height = std::atoi(argv[2]);
    const OffscreenGL gl(width, height);
    wt::wtWindowManager::init(width, height, false);
    wt::loadDefaults(width, height);

    buttonsPanel(-0.96F, 0);
    listsPanel(-0.96F, 0);
    middlePanels();
    buttonsPanel(0.34F, 0x101);
    listsPanel(0.34F, 0x101);

    backdrop();
    wt::wtWindowManager::displayWidgets();
    const bool written = gl.noErrors() && gl.read().write(argv[3]);
    wt::wtWindowManager::clear();
    return written ? EXIT_SUCCESS : EXIT_FAILURE;
}
