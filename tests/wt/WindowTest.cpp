#include "platform/wt/wtWindow.h"

#include <utility>

#include "tests/wt/Stage.h"

namespace {

constexpr int draggable = wt::wtWindow::titleBar;
constexpr int closable = wt::wtWindow::titleBar | wt::wtWindow::closeBox;

class WindowTest : public Stage {
protected:
    static void expectRect(const wt::Rect& actual, const wt::Rect& expected) {
        EXPECT_NEAR(actual.x, expected.x, wt::screen().pixelX());
        EXPECT_NEAR(actual.y, expected.y, wt::screen().pixelY());
        EXPECT_NEAR(actual.w, expected.w, wt::screen().pixelX());
        EXPECT_NEAR(actual.h, expected.h, wt::screen().pixelY());
    }
    static void expectOnScreen(const wt::Rect& rect) {
        EXPECT_GE(rect.x, -1 - 1e-5F);
        EXPECT_GE(rect.y, -1 - 1e-5F);
        EXPECT_LE(rect.right(), 1 + 1e-5F);
        EXPECT_LE(rect.top(), 1 + 1e-5F);
    }
    static void resizeScreen(int width, int height) { wt::wtWindowManager::setViewport(width, height); }
    static Pixel onTitle(const wt::wtWindow& window) { return on(*window.children().front(), 0.3F, 0.5F); }
    static void drag(Pixel from, int dx, int dy) {
        press(from);
        move({from.x + dx, from.y + dy});
        release({from.x + dx, from.y + dy});
    }
};

TEST_F(WindowTest, StandsWhereItWasPutAtEverySizeOfTheScreen) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, closable);
    for (const auto& [width, height] :
         {std::pair(640, 480), {1920, 1080}, {3840, 2160}, {2560, 1080}, {641, 479}}) {
        resizeScreen(width, height);
        expectRect(panel->rect(), {-0.4F, -0.5F, 0.8F, 0.9F});
    }
}

TEST_F(WindowTest, TakesOverTheDefaultsOfTheMomentOfItsCreation) {
    wt::wtDefaults::Window::alpha = 0.8F;
    const wt::wtWindow* first = window("first", {0, 0, 0.5F, 0.5F});
    wt::wtDefaults::Window::alpha = 0.3F;
    const wt::wtWindow* second = window("second", {0, 0, 0.5F, 0.5F});
    EXPECT_FLOAT_EQ(first->getAlpha(), 0.8F);
    EXPECT_FLOAT_EQ(second->getAlpha(), 0.3F);
    wt::loadDefaults(screenWidth, screenHeight);
    EXPECT_FLOAT_EQ(wt::wtDefaults::Window::alpha, 1.0F);
}

TEST_F(WindowTest, PanelWithoutFlagsHasNoTitleBarAndDoesNotDrag) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F});
    resizeScreen(screenWidth, screenHeight);
    EXPECT_TRUE(panel->children().empty());
    const wt::Rect before = panel->rect();
    drag(on(*panel, 0.5F, 0.98F), 50, 50);
    expectRect(panel->rect(), before);
}

TEST_F(WindowTest, TitleBarDragsTheWindowByAsMuchAsThePointerMoves) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, draggable);
    resizeScreen(screenWidth, screenHeight);
    drag(onTitle(*panel), 64, -24);
    expectRect(panel->rect(), {-0.2F, -0.4F, 0.8F, 0.9F});
    drag(onTitle(*panel), -32, 48);
    expectRect(panel->rect(), {-0.3F, -0.6F, 0.8F, 0.9F});
}

TEST_F(WindowTest, BodyOfADraggableWindowDoesNotDrag) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, draggable);
    resizeScreen(screenWidth, screenHeight);
    drag(on(*panel, 0.5F, 0.3F), 50, 50);
    expectRect(panel->rect(), {-0.4F, -0.5F, 0.8F, 0.9F});
}

TEST_F(WindowTest, DraggedWindowStaysOnTheScreenAndComesBackWithThePointer) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, draggable);
    resizeScreen(screenWidth, screenHeight);
    const Pixel grip = onTitle(*panel);
    press(grip);
    for (const Pixel far : {Pixel{5000, 5000}, Pixel{-5000, 5000}, Pixel{-5000, -5000}, Pixel{5000, -5000}}) {
        move(far);
        expectOnScreen(panel->rect());
    }
    move(grip);
    release(grip);
    expectRect(panel->rect(), {-0.4F, -0.5F, 0.8F, 0.9F});
}

TEST_F(WindowTest, WindowDraggedToAnEdgeIsStillOnASmallerScreenAndBackOnTheLarge) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, draggable);
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

TEST_F(WindowTest, DragGoesOnUndisturbedWhenTheScreenChangesItsSize) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, draggable);
    resizeScreen(screenWidth, screenHeight);
    press(onTitle(*panel));
    resizeScreen(1280, 960);
    move({640, 480});
    release({640, 480});
    expectOnScreen(panel->rect());
}

TEST_F(WindowTest, CloseBoxHidesTheWindowOnReleaseInside) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, closable);
    resizeScreen(screenWidth, screenHeight);
    const wt::wtWidget& box = *panel->children().front()->children().front();
    press(on(box));
    EXPECT_EQ(panel->isShowing(), 1);
    release(on(*panel));
    EXPECT_EQ(panel->isShowing(), 1) << "let go outside";
    click(on(box));
    EXPECT_EQ(panel->isShowing(), 0);
}

TEST_F(WindowTest, CloseBoxIsSquareAtTheRightEndAndDoesNotDrag) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, closable);
    for (const auto& [width, height] : {std::pair(640, 480), {480, 640}, {2560, 1080}}) {
        resizeScreen(width, height);
        const wt::wtWidget& bar = *panel->children().front();
        const wt::Rect box = bar.children().front()->rect();
        EXPECT_NEAR(box.right(), panel->rect().w, 1e-5F);
        EXPECT_NEAR(box.w / wt::screen().pixelX(), box.h / wt::screen().pixelY(), 1.0F);
        const wt::Rect before = panel->rect();
        const Pixel start = on(*bar.children().front());
        press(start);
        move({start.x + 40, start.y + 40});
        release({start.x + 40, start.y + 40});
        expectRect(panel->rect(), before);
    }
}

TEST_F(WindowTest, CloseBoxNeedsATitleBar) {
    const wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, wt::wtWindow::closeBox);
    EXPECT_TRUE(panel->children().empty());
}

TEST_F(WindowTest, MaximisedWindowCoversTheScreenAtEverySizeWithoutATitleBar) {
    wt::wtWindow* panel = window("panel", {-0.6F, -0.5F, 1.0F, 0.85F}, closable);
    panel->resize(1, 1);
    panel->maximize();
    for (const auto& [width, height] : {std::pair(640, 480), {480, 640}, {3840, 2160}, {33, 7}}) {
        resizeScreen(width, height);
        const wt::Rect rect = panel->rect();
        EXPECT_NEAR(rect.x, -1, 1e-5F);
        EXPECT_NEAR(rect.y, -1, 1e-5F);
        EXPECT_NEAR(rect.right(), 1, 1e-5F);
        EXPECT_NEAR(rect.top(), 1, 1e-5F);
    }
    EXPECT_EQ(panel->children().front()->isShowing(), 0);
    EXPECT_TRUE(panel->isMaximized());
    panel->resize(0.2F, 0.2F);
    EXPECT_NEAR(panel->rect().w, 2, 1e-5F) << "the size has no meaning now";
}

TEST_F(WindowTest, WindowGrowsAboutItsMiddleWhereItsWidgetsNeedMoreRoom) {
    wt::wtWindow* panel = window("panel", {-0.05F, -0.05F, 0.1F, 0.1F});
    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    layout->add(new wt::wtButton(panel, "button", {0, 0}, {-1, -1}, "New Game"), attributes(0.01F, 1));
    panel->setLayoutManager(layout);
    panel->recomputeMinSize();
    EXPECT_GT(panel->rect().w, 0.2F);
    EXPECT_NEAR(panel->rect().x + panel->rect().w / 2, 0, 2 * wt::screen().pixelX());
    EXPECT_NEAR(panel->rect().y + panel->rect().h / 2, 0, 2 * wt::screen().pixelY());
    resizeScreen(3840, 2160);
    EXPECT_GE(panel->rect().w, panel->sizeHint().least.x - wt::screen().pixelX());
}

TEST_F(WindowTest, GrownWindowNearAnEdgeStaysOnTheScreen) {
    wt::wtWindow* panel = window("panel", {0.9F, 0.9F, 0.1F, 0.1F}, closable);
    auto* layout = new wt::LinearLayout(wt::bottomToTop);
    layout->add(new wt::wtButton(panel, "button", {0, 0}, {-1, -1}, "New Game"), attributes(0.01F, 1));
    panel->setLayoutManager(layout);
    resizeScreen(screenWidth, screenHeight);
    expectOnScreen(panel->rect());
}

TEST_F(WindowTest, WithoutALayoutWidgetsStandWhereTheyWerePut) {
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1}, draggable);
    const auto* button = new wt::wtButton(panel, "button", {0.1F, 0.2F}, {0.3F, -1}, "Here");
    resizeScreen(screenWidth, screenHeight);
    EXPECT_NEAR(button->rect().x, 0.1F, wt::screen().pixelX());
    EXPECT_NEAR(button->rect().y, 0.2F, wt::screen().pixelY());
    EXPECT_NEAR(button->rect().w, 0.3F, wt::screen().pixelX());
    EXPECT_GT(button->rect().h, 0.05F);
}

TEST_F(WindowTest, TextOnALightBackgroundIsDarkAndOnAnyOtherLight) {
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    EXPECT_EQ(&panel->palette(), &wt::theme().onDark);
    wt::GridGraphic pale(1, 1);
    pale(0, 0) = wt::Polygon(wt::makeQuad({0, 0}, {1, 1}));
    pale(0, 0).setColor(tavi::Vec3<float>(0.9F, 0.9F, 1));
    pale(0, 0).setAlpha(0.9F);
    panel->setBackground(pale);
    EXPECT_EQ(&panel->palette(), &wt::theme().onLight);
    pale(0, 0).setAlpha(0.1F);
    panel->setBackground(pale);
    EXPECT_EQ(&panel->palette(), &wt::theme().onDark) << "the dark game shows through";
    panel->setBackground(wt::GridGraphic());
    EXPECT_EQ(&panel->palette(), &wt::theme().onDark);
}

}  // namespace
