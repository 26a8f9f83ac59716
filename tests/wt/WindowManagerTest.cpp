#include "platform/wt/wtWindowManager.h"

#include <memory>
#include <string>
#include <vector>

#include "tests/wt/Stage.h"

namespace {

using Events = std::vector<std::string>;

class WindowManagerTest : public Stage {
protected:
    /// A window that is all probe.
    static Probe* probeWindow(const wt::Rect& rect) {
        auto* probe = new Probe(nullptr, rect);
        wt::wtWindowManager::appendWidget(probe);
        return probe;
    }
};

TEST_F(WindowManagerTest, PressGoesToTheTopmostWindowUnderThePointer) {
    Probe* below = probeWindow({-0.5F, -0.5F, 1, 1});
    Probe* above = probeWindow({-0.2F, -0.2F, 1, 1});
    press(at(0, 0));
    EXPECT_EQ(above->events, (Events{"press"}));
    EXPECT_TRUE(below->events.empty());
}

TEST_F(WindowManagerTest, PressedWindowComesToTheFront) {
    Probe* below = probeWindow({-0.5F, -0.5F, 1, 1});
    Probe* above = probeWindow({-0.2F, -0.2F, 1, 1});
    click(at(-0.4F, -0.4F));
    EXPECT_EQ(wt::wtWindowManager::windows(), (std::vector<wt::wtWidget*>{above, below}));
    above->events.clear();
    press(at(0, 0));
    EXPECT_TRUE(above->events.empty());
}

TEST_F(WindowManagerTest, PressedMaximisedWindowStaysBehindThePanels) {
    wt::wtWindow* title = window("title", {-0.6F, -0.5F, 1, 1});
    title->maximize();
    wt::wtWindow* panel = window("panel", {-0.4F, -0.5F, 0.8F, 0.9F}, wt::wtWindow::titleBar);
    click(at(-0.9F, 0.9F));
    EXPECT_EQ(wt::wtWindowManager::windows().back(), panel);
}

TEST_F(WindowManagerTest, PressedWidgetKeepsThePointerUntilTheRelease) {
    Probe* probe = probeWindow({-0.5F, -0.5F, 0.4F, 0.4F});
    Probe* other = probeWindow({0.1F, 0.1F, 0.4F, 0.4F});
    press(at(-0.3F, -0.3F));
    move(at(0.3F, 0.3F));
    move({-5000, 7000});
    release(at(0.3F, 0.3F));
    EXPECT_EQ(probe->events, (Events{"press", "drag", "drag", "release"}));
    EXPECT_EQ(other->events, (Events{"hover"})) << "only after the release";
}

TEST_F(WindowManagerTest, PointsAreMeasuredFromTheWidgetsOwnCorner) {
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    Probe* probe = new Probe(panel, {0.25F, 0.5F, 0.25F, 0.25F});
    press(at(-0.15F, 0.1F));
    EXPECT_NEAR(probe->lastPoint.x, 0.1F, wt::screen().pixelX());
    EXPECT_NEAR(probe->lastPoint.y, 0.1F, wt::screen().pixelY());
    move(at(-0.35F, -0.1F));
    EXPECT_NEAR(probe->lastPoint.x, -0.1F, wt::screen().pixelX());
    EXPECT_NEAR(probe->lastPoint.y, -0.1F, wt::screen().pixelY());
}

TEST_F(WindowManagerTest, PressOutsideEveryWindowGoesNowhereAndSoDoesItsRelease) {
    Probe* probe = probeWindow({-0.5F, -0.5F, 0.4F, 0.4F});
    press(at(0.9F, 0.9F));
    move(at(-0.3F, -0.3F));
    release(at(-0.3F, -0.3F));
    EXPECT_EQ(probe->events, (Events{"hover"}));
}

TEST_F(WindowManagerTest, LaterChildrenLieAboveEarlierOnes) {
    wt::wtWindow* panel = window("panel", {-0.5F, -0.5F, 1, 1});
    Probe* earlier = new Probe(panel, {0.2F, 0.2F, 0.4F, 0.4F});
    Probe* later = new Probe(panel, {0.3F, 0.3F, 0.4F, 0.4F});
    press(at(-0.1F, -0.1F));
    EXPECT_EQ(later->events, (Events{"press"}));
    EXPECT_TRUE(earlier->events.empty());
}

TEST_F(WindowManagerTest, PressThatAWidgetDoesNotWantGoesToItsParent) {
    Probe* outer = probeWindow({-0.5F, -0.5F, 1, 1});
    Probe* inner = new Probe(outer, {0.2F, 0.2F, 0.4F, 0.4F});
    inner->takes = false;
    press(at(-0.1F, -0.1F));
    move(at(-0.1F, 0.0F));
    EXPECT_EQ(inner->events, (Events{"press"}));
    EXPECT_EQ(outer->events, (Events{"press", "drag"}));
}

TEST_F(WindowManagerTest, ChildOutsideItsParentCannotBePressedThere) {
    Probe* outer = probeWindow({-0.5F, -0.5F, 0.5F, 0.5F});
    Probe* inner = new Probe(outer, {0.4F, 0.4F, 0.4F, 0.4F});
    press(at(0.2F, 0.2F));
    EXPECT_TRUE(inner->events.empty());
}

TEST_F(WindowManagerTest, HiddenWindowGetsNothingAndWhatIsBelowGetsAll) {
    Probe* below = probeWindow({-0.5F, -0.5F, 1, 1});
    Probe* above = probeWindow({-0.5F, -0.5F, 1, 1});
    above->setShowing(0);
    press(at(0, 0));
    turn(at(0, 0), wheelUp);
    EXPECT_TRUE(above->events.empty());
    EXPECT_EQ(below->events, (Events{"press"}));
}

TEST_F(WindowManagerTest, HidingTheWindowDuringADragTakesThePointerFromIt) {
    Probe* outer = probeWindow({-0.5F, -0.5F, 1, 1});
    Probe* inner = new Probe(outer, {0.2F, 0.2F, 0.4F, 0.4F});
    press(at(-0.1F, -0.1F));
    outer->setShowing(0);
    outer->setShowing(1);
    move(at(0, 0));
    release(at(0, 0));
    EXPECT_EQ(inner->events, (Events{"press", "cancel", "hover"}));
}

TEST_F(WindowManagerTest, PressWhoseReleaseWasLostIsCancelledByTheNext) {
    Probe* probe = probeWindow({-0.5F, -0.5F, 1, 1});
    press(at(0, 0));
    press(at(0, 0));
    release(at(0, 0));
    EXPECT_EQ(probe->events, (Events{"press", "cancel", "press", "release", "hover"}));
}

TEST_F(WindowManagerTest, ReleaseWithoutAPressDoesNothing) {
    Probe* probe = probeWindow({-0.5F, -0.5F, 1, 1});
    release(at(0, 0));
    EXPECT_EQ(probe->events, (Events{"hover"}));
}

TEST_F(WindowManagerTest, HoverEntersLeavesAndFollowsAWindowThatAppears) {
    Probe* below = probeWindow({-0.5F, -0.5F, 1, 1});
    move(at(0, 0));
    Probe* above = probeWindow({-0.5F, -0.5F, 1, 1});
    wt::wtWindowManager::displayWidgets();
    EXPECT_EQ(below->events, (Events{"hover", "leave"}));
    EXPECT_EQ(above->events, (Events{"hover"}));
    move(at(0.9F, 0.9F));
    EXPECT_EQ(above->events, (Events{"hover", "leave"}));
}

TEST_F(WindowManagerTest, NothingIsHoveredBeforeThePointerWasSeen) {
    Probe* probe = probeWindow({-1, -1, 2, 2});
    wt::wtWindowManager::displayWidgets();
    EXPECT_TRUE(probe->events.empty());
}

TEST_F(WindowManagerTest, WheelIsOneEventForEachNotch) {
    Probe* probe = probeWindow({-0.5F, -0.5F, 1, 1});
    turn(at(0, 0), wheelUp);
    turn(at(0, 0), wheelDown);
    EXPECT_EQ(probe->events, (Events{"wheel up", "hover", "wheel down", "hover"}));
}

TEST_F(WindowManagerTest, RaiseCountsFromTheFront) {
    Probe* a = probeWindow({0, 0, 1, 1});
    Probe* b = probeWindow({0, 0, 1, 1});
    Probe* c = probeWindow({0, 0, 1, 1});
    using Order = std::vector<wt::wtWidget*>;
    wt::wtWindowManager::raiseWidget(a, 0);
    EXPECT_EQ(wt::wtWindowManager::windows(), (Order{b, c, a}));
    wt::wtWindowManager::raiseWidget(b, 1);
    EXPECT_EQ(wt::wtWindowManager::windows(), (Order{c, b, a}));
    wt::wtWindowManager::raiseWidget(a, 99);
    EXPECT_EQ(wt::wtWindowManager::windows(), (Order{a, c, b}));
    wt::wtWindowManager::raiseWidget(c, -5);
    EXPECT_EQ(wt::wtWindowManager::windows(), (Order{a, b, c}));
    const Probe stranger(nullptr, {0, 0, 1, 1});
    wt::wtWindowManager::raiseWidget(const_cast<Probe*>(&stranger), 0);
    wt::wtWindowManager::raiseWidget(nullptr, 0);
    EXPECT_EQ(wt::wtWindowManager::windows(), (Order{a, b, c}));
}

TEST_F(WindowManagerTest, InitStartsWithoutWindows) {
    probeWindow({0, 0, 1, 1});
    wt::wtWindowManager::init(800, 600, false);
    EXPECT_TRUE(wt::wtWindowManager::windows().empty());
    EXPECT_EQ(wt::screen().width, 800);
}

TEST_F(WindowManagerTest, PointerFollowsTheSizeOfTheScreen) {
    Probe* probe = probeWindow({0.5F, -1, 0.5F, 2});
    press({600, 240});
    release({600, 240});
    EXPECT_EQ(probe->events.front(), "press");
    probe->events.clear();
    wt::wtWindowManager::setViewport(1280, 960);
    press({600, 240});
    EXPECT_TRUE(probe->events.empty() || probe->events.front() == "leave");
}

TEST_F(WindowManagerTest, WindowDestroyedDuringADragIsForgotten) {
    probeWindow({-0.5F, -0.5F, 1, 1});
    press(at(0, 0));
    wt::wtWindowManager::clear();
    move(at(0.1F, 0.1F));
    release(at(0.1F, 0.1F));
    EXPECT_TRUE(wt::wtWindowManager::windows().empty());
}

TEST_F(WindowManagerTest, ThereIsNothingToDrawOrAnimateWithoutAContextAndNothingBreaks) {
    Probe* probe = probeWindow({-0.5F, -0.5F, 1, 1});
    wt::wtWindowManager::displayWidgets();
    wt::wtWindowManager::animate();
    EXPECT_EQ(wt::screen().width, screenWidth) << "without a viewport the old one stays";
    press(at(0, 0));
    EXPECT_EQ(probe->events.back(), "press");
}

}  // namespace
