#include <GL/gl.h>

#include <random>
#include <string>

#include "tests/support/OffscreenGL.h"
#include "tests/wt/Stage.h"

namespace {

/// Whatever happens in whatever order, windows stay on the screen and nothing breaks.
class RandomEventsTest : public Stage {
protected:
    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }
    bool oneIn(int n) { return between(1, n) == 1; }

    void buildWindows() {
        for (const int flags : {0, 0x001, 0x101}) {
            wt::wtWindow* made = window("w" + std::to_string(flags), {-0.5F, -0.5F, 1, 0.9F}, flags);
            auto* layout = new wt::LinearLayout(flags == 1 ? wt::leftToRight : wt::bottomToTop);
            auto* list = new wt::wtListBox(made, "list", {0, 0}, {0.5F, 0.5F});
            auto* button = new wt::wtButton(made, "button", {0, 0}, {-1, -1}, "Button");
            auto* text = new wt::wtStaticText(made, "text", {0, 0}, {0.6F, 0.1F}, "text", 0x24);
            for (wt::wtWidget* widget : std::initializer_list<wt::wtWidget*>{button, text, list}) {
                layout->add(widget, attributes(0.01F, 1));
            }
            made->setLayoutManager(layout);
            button->connectButtonPressed([list, text, n = 0]() mutable {
                std::list<std::string> more(static_cast<std::size_t>(n % 5), "Row_" + std::to_string(n));
                list->append(more);
                text->setText("pressed " + std::to_string(++n));
            });
            button->connectButtonPressed([made, n = 0]() mutable { made->setShowing(++n % 7 != 0 ? 1 : 0); });
            list->connectItemSelected([text](wt::wtListBox* sender, int row) {
                ASSERT_GE(row, 0);
                ASSERT_LT(row, sender->rowCount());
                text->setText(sender->row(row));
            });
        }
    }

    /// An event somewhere, mostly on the screen.
    void sendEvent() {
        const int width = wt::screen().width;
        const int height = wt::screen().height;
        const Pixel point = oneIn(20) ? Pixel{between(-100000, 100000), between(-100000, 100000)}
                                      : Pixel{between(0, width), between(0, height)};
        const int kind = between(0, 9);
        if (kind < 4) {
            move(point);
        } else if (kind < 6) {
            press(point, oneIn(4) ? between(-1, 8) : 0);
        } else if (kind < 8) {
            release(point, oneIn(4) ? between(-1, 8) : 0);
        } else {
            turn(point, oneIn(2) ? wheelUp : wheelDown);
        }
    }

    void changeSomething() {
        const auto windows = wt::wtWindowManager::windows();
        wt::wtWidget* window =
            windows[static_cast<std::size_t>(between(0, static_cast<int>(windows.size()) - 1))];
        switch (between(0, 4)) {
            case 0:
                window->setShowing(between(0, 1));
                break;
            case 1:
                wt::wtWindowManager::raiseWidget(window, between(-1, 4));
                break;
            case 2:
                window->resize(static_cast<float>(between(0, 300)) / 100,
                               static_cast<float>(between(0, 300)) / 100);
                break;
            case 3:
                window->children().back()->setEnabled(between(0, 1));
                break;
            default:
                window->setAlpha(static_cast<float>(between(0, 10)) / 10);
        }
    }

    static void checkWindows() {
        for (const wt::wtWidget* window : wt::wtWindowManager::windows()) {
            const wt::Rect rect = window->rect();
            if (window->isShowing() != 0) {
                const float slack = 1e-4F;
                ASSERT_GE(rect.x, -1 - slack);
                ASSERT_GE(rect.y, -1 - slack);
                ASSERT_LE(rect.right(), 1 + slack);
                ASSERT_LE(rect.top(), 1 + slack);
                ASSERT_GE(rect.w, 0);
                ASSERT_GE(rect.h, 0);
            }
        }
    }

    std::mt19937 random{20240607};
};

TEST_F(RandomEventsTest, NothingBreaksWithoutAScreen) {
    buildWindows();
    for (int step = 0; step < 20000; ++step) {
        if (oneIn(50)) {
            const int scale = 1 << between(0, 13);
            wt::wtWindowManager::setViewport(between(1, scale), between(1, scale));
        }
        if (oneIn(30)) {
            changeSomething();
        }
        sendEvent();
        wt::wtWindowManager::animate();
        ASSERT_NO_FATAL_FAILURE(checkWindows());
    }
}

TEST_F(RandomEventsTest, NothingBreaksNorFailsInGLAtAnySizeOfTheScreen) {
    const OffscreenGL gl(64, 64);
    wt::loadDefaults(screenWidth, screenHeight);
    buildWindows();
    constexpr int sizes[][2] = {{1, 1},     {2, 300},   {300, 2},     {64, 64},     {480, 640},
                                {640, 480}, {641, 479}, {2560, 1080}, {3840, 2160}, {8192, 4320}};
    for (int step = 0; step < 400; ++step) {
        if (oneIn(10)) {
            const auto& size = sizes[between(0, 9)];
            glViewport(between(-3, 3), between(-3, 3), size[0], size[1]);
        }
        if (oneIn(10)) {
            changeSomething();
        }
        sendEvent();
        wt::wtWindowManager::displayWidgets();
        wt::wtWindowManager::animate();
        ASSERT_NO_FATAL_FAILURE(checkWindows());
    }
    EXPECT_TRUE(gl.noErrors());
    wt::wtWindowManager::clear();
}

}  // namespace
