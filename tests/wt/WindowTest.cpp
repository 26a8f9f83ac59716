#include "platform/wt/wtWindow.h"

#include <utility>

#include "tests/wt/Stage.h"

namespace {

constexpr int draggable = wt::wtWindow::titleBar;
constexpr int closable = wt::wtWindow::titleBar | wt::wtWindow::closeBox;

class WindowTest : public Stage {
protected:
    static void expectOnScreen(const wt::Rect& rect) {
        EXPECT_GE(rect.x, -1 - 1e-5f);
        EXPECT_GE(rect.y, -1 - 1e-5f);
        EXPECT_LE(rect.right(), 1 + 1e-5f);
        EXPECT_LE(rect.top(), 1 + 1e-5f);
    }
    static void resizeScreen(int width, int height) { wt::wtWindowManager::setViewport(width, height); }
    static Pixel onTitle(const wt::wtWindow& window) { return on(*window.children().front(), 0.3f, 0.5f); }
    /// The usual window, laid out.
    static wt::wtWindow* usual(int flags) {
        wt::wtWindow* made = window("panel", usualPlace, flags);
        resizeScreen(screenWidth, screenHeight);
        return made;
    }
    static constexpr wt::Rect usualPlace{-0.4f, -0.5f, 0.8f, 0.9f};
    static void drag(Pixel from, int dx, int dy) {
        press(from);
        move({from.x + dx, from.y + dy});
        release({from.x + dx, from.y + dy});
    }
};

TEST_F(WindowTest, StandsWhereItWasPutAtEverySizeOfTheScreen) {
    const wt::wtWindow* panel = usual(closable);
    for (const auto& [width, height] :
         {std::pair(640, 480), {1920, 1080}, {3840, 2160}, {2560, 1080}, {641, 479}}) {
        resizeScreen(width, height);
        expectRect(panel->rect(), usualPlace);
    }
}

TEST_F(WindowTest, PanelWithoutATitleBarHasNoCloseBoxAndDoesNotDrag) {
    for (const int flags : {0, int{wt::wtWindow::closeBox}}) {
        const wt::wtWindow* panel = usual(flags);
        EXPECT_TRUE(panel->children().empty());
        drag(on(*panel, 0.5f, 0.98f), 50, 50);
        expectRect(panel->rect(), usualPlace);
    }
}

TEST_F(WindowTest, TitleBarDragsTheWindowByAsMuchAsThePointerMovesAndItsBodyDoesNot) {
    const wt::wtWindow* panel = usual(draggable);
    drag(on(*panel, 0.5f, 0.3f), 50, 50);
    expectRect(panel->rect(), usualPlace);
    drag(onTitle(*panel), 64, -24);
    expectRect(panel->rect(), {-0.2f, -0.4f, 0.8f, 0.9f});
    drag(onTitle(*panel), -32, 48);
    expectRect(panel->rect(), {-0.3f, -0.6f, 0.8f, 0.9f});
}

TEST_F(WindowTest, DraggedWindowStaysOnTheScreenAndComesBackWithThePointer) {
    const wt::wtWindow* panel = usual(draggable);
    const Pixel grip = onTitle(*panel);
    press(grip);
    for (const Pixel far : {Pixel{5000, 5000}, Pixel{-5000, 5000}, Pixel{-5000, -5000}, Pixel{5000, -5000}}) {
        move(far);
        expectOnScreen(panel->rect());
    }
    move(grip);
    release(grip);
    expectRect(panel->rect(), usualPlace);
}

TEST_F(WindowTest, WindowDraggedToAnEdgeIsStillOnASmallerScreenAndBackOnTheLarge) {
    const wt::wtWindow* panel = usual(draggable);
    resizeScreen(1920, 1080);
    drag(onTitle(*panel), 4000, -4000);
    const wt::Rect corner = panel->rect();
    for (const auto& [width, height] : {std::pair(480, 640), {64, 64}, {1, 1}, {8192, 4320}}) {
        resizeScreen(width, height);
        expectOnScreen(panel->rect());
    }
    resizeScreen(1920, 1080);
    expectRect(panel->rect(), corner);
}

TEST_F(WindowTest, CloseBoxHidesTheWindowOnReleaseInside) {
    const wt::wtWindow* panel = usual(closable);
    const wt::wtWidget& box = *panel->children().front()->children().front();
    press(on(box));
    EXPECT_EQ(panel->isShowing(), 1);
    release(on(*panel));
    EXPECT_EQ(panel->isShowing(), 1) << "let go outside";
    click(on(box));
    EXPECT_EQ(panel->isShowing(), 0);
}

TEST_F(WindowTest, CloseBoxIsSquareAtTheRightEndAndDoesNotDrag) {
    const wt::wtWindow* panel = usual(closable);
    for (const auto& [width, height] : {std::pair(640, 480), {480, 640}, {2560, 1080}}) {
        resizeScreen(width, height);
        const wt::wtWidget& bar = *panel->children().front();
        const wt::Rect box = bar.children().front()->rect();
        EXPECT_NEAR(box.right(), panel->rect().w, 1e-5f);
        EXPECT_NEAR(box.w / wt::screen().pixelX(), box.h / wt::screen().pixelY(), 1.0f);
        const wt::Rect before = panel->rect();
        drag(on(*bar.children().front()), 40, 40);
        expectRect(panel->rect(), before);
    }
}

TEST_F(WindowTest, MaximisedWindowCoversTheScreenAtEverySizeWithoutATitleBar) {
    wt::wtWindow* panel = window("panel", {-0.6f, -0.5f, 1.0f, 0.85f}, closable);
    panel->resize(1, 1);
    panel->maximize();
    for (const auto& [width, height] : {std::pair(640, 480), {480, 640}, {3840, 2160}, {33, 7}}) {
        resizeScreen(width, height);
        expectRect(panel->rect(), {-1, -1, 2, 2}, 0.001f);
        panel->resize(0.2f, 0.2f);  // has no meaning now
    }
    EXPECT_EQ(panel->children().front()->isShowing(), 0);
    EXPECT_TRUE(panel->isMaximized());
}

TEST_F(WindowTest, WindowGrowsAboutItsMiddleOnTheScreenWhereItsWidgetsNeedMoreRoom) {
    const auto grown = [](const wt::Rect& rect, int flags) {
        wt::wtWindow* made = window("panel", rect, flags);
        auto* layout = new wt::LinearLayout(wt::bottomToTop);
        layout->add(new wt::wtButton(made, "button", {0, 0}, {-1, -1}, "New Game"), attributes(0.01f, 1));
        made->setLayoutManager(layout);
        made->recomputeMinSize();
        return made;
    };
    expectOnScreen(grown({0.9f, 0.9f, 0.1f, 0.1f}, closable)->rect());
    const wt::wtWindow* panel = grown({-0.05f, -0.05f, 0.1f, 0.1f}, 0);
    EXPECT_GT(panel->rect().w, 0.2f);
    EXPECT_NEAR(panel->rect().x + panel->rect().w / 2, 0, 2 * wt::screen().pixelX());
    EXPECT_NEAR(panel->rect().y + panel->rect().h / 2, 0, 2 * wt::screen().pixelY());
    resizeScreen(3840, 2160);
    EXPECT_GE(panel->rect().w, panel->sizeHint().least.x - wt::screen().pixelX());
}

TEST_F(WindowTest, WithoutALayoutWidgetsStandWhereTheyWerePut) {
    wt::wtWindow* panel = window("panel", {-0.5f, -0.5f, 1, 1}, draggable);
    const auto* button = new wt::wtButton(panel, "button", {0.1f, 0.2f}, {0.3f, -1}, "Here");
    resizeScreen(screenWidth, screenHeight);
    EXPECT_GT(button->rect().h, 0.05f);
    expectRect(button->rect(), {0.1f, 0.2f, 0.3f, button->rect().h});
}

TEST_F(WindowTest, TextOnALightBackgroundIsDarkAndOnAnyOtherLight) {
    wt::wtWindow* panel = window("panel", {-0.5f, -0.5f, 1, 1});
    EXPECT_EQ(&panel->palette(), &wt::theme().onDark);
    wt::GridGraphic pale = oneCell(colored(0.9f, 0.9f, 1));
    pale(0, 0).setAlpha(0.9f);
    panel->setBackground(pale);
    EXPECT_EQ(&panel->palette(), &wt::theme().onLight);
    pale(0, 0).setAlpha(0.1f);
    panel->setBackground(pale);
    EXPECT_EQ(&panel->palette(), &wt::theme().onDark) << "the dark game shows through";
    panel->setBackground(wt::GridGraphic());
    EXPECT_EQ(&panel->palette(), &wt::theme().onDark);
}

}  // namespace
