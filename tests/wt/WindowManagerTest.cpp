#include "platform/wt/wtWindowManager.h"

#include <gmock/gmock.h>

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

TEST_F(WindowManagerTest, PressGoesToTheTopmostWindowThatIsShownUnderThePointerAndBringsItToTheFront) {
    Probe* below = probeWindow({-0.5f, -0.5f, 1, 1});
    Probe* above = probeWindow({-0.2f, -0.2f, 1, 1});
    click(at(0, 0));
    EXPECT_EQ(above->events.front(), "press");
    EXPECT_TRUE(below->events.empty());
    click(at(-0.4f, -0.4f));
    EXPECT_EQ(wt::wtWindowManager::windows(), (std::vector<wt::wtWidget*>{above, below}));
    above->events.clear();
    click(at(0, 0));
    EXPECT_TRUE(above->events.empty());
    below->setShowing(0);
    move(at(0, 0));
    below->events.clear();
    turn(at(0, 0), wheelUp);
    press(at(0, 0));
    EXPECT_THAT(above->events, testing::IsSupersetOf({"wheel up", "press"}));
    EXPECT_TRUE(below->events.empty()) << "it is hidden";
}

TEST_F(WindowManagerTest, PressedMaximisedWindowStaysBehindThePanels) {
    wt::wtWindow* title = window("title", {-0.6f, -0.5f, 1, 1});
    title->maximize();
    wt::wtWindow* panel = window("panel", {-0.4f, -0.5f, 0.8f, 0.9f}, wt::wtWindow::titleBar);
    click(at(-0.9f, 0.9f));
    EXPECT_EQ(wt::wtWindowManager::windows().back(), panel);
}

TEST_F(WindowManagerTest, PressedWidgetKeepsThePointerUntilTheRelease) {
    Probe* probe = probeWindow({-0.5f, -0.5f, 0.4f, 0.4f});
    Probe* other = probeWindow({0.1f, 0.1f, 0.4f, 0.4f});
    press(at(-0.3f, -0.3f));
    move(at(0.3f, 0.3f));
    move({-5000, 7000});
    release(at(0.3f, 0.3f));
    EXPECT_EQ(probe->events, (Events{"press", "drag", "drag", "release"}));
    EXPECT_EQ(other->events, (Events{"hover"})) << "only after the release";
}

TEST_F(WindowManagerTest, PointsAreMeasuredFromTheWidgetsOwnCorner) {
    wt::wtWindow* panel = window("panel", {-0.5f, -0.5f, 1, 1});
    Probe* probe = new Probe(panel, {0.25f, 0.5f, 0.25f, 0.25f});
    press(at(-0.15f, 0.1f));
    EXPECT_NEAR(probe->lastPoint.x, 0.1f, wt::screen().pixelX());
    EXPECT_NEAR(probe->lastPoint.y, 0.1f, wt::screen().pixelY());
    move(at(-0.35f, -0.1f));
    EXPECT_NEAR(probe->lastPoint.x, -0.1f, wt::screen().pixelX());
    EXPECT_NEAR(probe->lastPoint.y, -0.1f, wt::screen().pixelY());
}

TEST_F(WindowManagerTest, PressOutsideEveryWindowGoesNowhereAndSoDoesItsReleaseOrOneWithoutAPress) {
    Probe* probe = probeWindow({-0.5f, -0.5f, 0.4f, 0.4f});
    press(at(0.9f, 0.9f));
    move(at(-0.3f, -0.3f));
    release(at(-0.3f, -0.3f));
    release(at(-0.3f, -0.3f));
    EXPECT_EQ(probe->events, (Events{"hover"}));
}

TEST_F(WindowManagerTest, LaterChildrenLieAboveEarlierOnesAndAllWithinTheirParent) {
    wt::wtWindow* panel = window("panel", {-0.5f, -0.5f, 1, 1});
    Probe* earlier = new Probe(panel, {0.2f, 0.2f, 0.4f, 0.4f});
    Probe* later = new Probe(panel, {0.3f, 0.3f, 0.4f, 0.4f});
    press(at(-0.1f, -0.1f));
    EXPECT_EQ(later->events, (Events{"press"}));
    EXPECT_TRUE(earlier->events.empty());
    Probe* outside = new Probe(panel, {0.9f, 0.9f, 0.4f, 0.4f});
    press(at(0.6f, 0.6f));
    EXPECT_TRUE(outside->events.empty());
}

TEST_F(WindowManagerTest, PressThatAWidgetDoesNotWantGoesToItsParent) {
    Probe* outer = probeWindow({-0.5f, -0.5f, 1, 1});
    Probe* inner = new Probe(outer, {0.2f, 0.2f, 0.4f, 0.4f});
    inner->takes = false;
    press(at(-0.1f, -0.1f));
    move(at(-0.1f, 0.0f));
    EXPECT_EQ(inner->events, (Events{"press"}));
    EXPECT_EQ(outer->events, (Events{"press", "drag"}));
}

TEST_F(WindowManagerTest, HidingOrDestroyingTheWindowDuringADragTakesThePointerFromIt) {
    Probe* outer = probeWindow({-0.5f, -0.5f, 1, 1});
    Probe* inner = new Probe(outer, {0.2f, 0.2f, 0.4f, 0.4f});
    press(at(-0.1f, -0.1f));
    outer->setShowing(0);
    outer->setShowing(1);
    move(at(0, 0));
    release(at(0, 0));
    EXPECT_EQ(inner->events, (Events{"press", "cancel", "hover"}));
    press(at(0, 0));
    wt::wtWindowManager::clear();
    move(at(0.1f, 0.1f));
    release(at(0.1f, 0.1f));
    EXPECT_TRUE(wt::wtWindowManager::windows().empty());
}

TEST_F(WindowManagerTest, PressWhoseReleaseWasLostIsCancelledByTheNext) {
    Probe* probe = probeWindow({-0.5f, -0.5f, 1, 1});
    press(at(0, 0));
    press(at(0, 0));
    release(at(0, 0));
    EXPECT_EQ(probe->events, (Events{"press", "cancel", "press", "release", "hover"}));
}

TEST_F(WindowManagerTest, HoverEntersLeavesAndFollowsAWindowThatAppears) {
    Probe* below = probeWindow({-0.5f, -0.5f, 1, 1});
    wt::wtWindowManager::displayWidgets();
    EXPECT_TRUE(below->events.empty()) << "before the pointer was seen";
    move(at(0, 0));
    Probe* above = probeWindow({-0.5f, -0.5f, 1, 1});
    wt::wtWindowManager::displayWidgets();
    EXPECT_EQ(below->events, (Events{"hover", "leave"}));
    EXPECT_EQ(above->events, (Events{"hover"}));
    move(at(0.9f, 0.9f));
    EXPECT_EQ(above->events, (Events{"hover", "leave"}));
}

TEST_F(WindowManagerTest, WheelIsOneEventForEachNotch) {
    Probe* probe = probeWindow({-0.5f, -0.5f, 1, 1});
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

}  // namespace
