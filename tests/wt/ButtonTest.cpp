#include "platform/wt/wtButton.h"

#include <boost/bind/bind.hpp>
#include <cstdlib>
#include <initializer_list>
#include <string>
#include <utility>

#include "tests/wt/Stage.h"

namespace {

class ButtonTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        panel = window("panel", {-0.5F, -0.5F, 1, 1});
        button = new wt::wtButton(panel, "button", {0.2F, 0.2F}, {0.5F, 0.2F}, "Play");
        button->connectButtonPressed([this] { ++fired; });
        move(at(-0.9F, -0.9F));
    }
    static Pixel beside() { return at(0.45F, 0.45F); }

    wt::wtWindow* panel = nullptr;
    wt::wtButton* button = nullptr;
    int fired = 0;
};

TEST_F(ButtonTest, FiresOnReleaseNotOnPress) {
    press(on(*button));
    EXPECT_TRUE(button->isArmed());
    EXPECT_EQ(fired, 0);
    release(on(*button));
    EXPECT_FALSE(button->isArmed());
    EXPECT_EQ(fired, 1);
}

TEST_F(ButtonTest, LetsGoWhenThePointerLeavesAndTakesHoldAgainWhenItReturns) {
    press(on(*button));
    move(beside());
    EXPECT_FALSE(button->isArmed());
    move(on(*button));
    EXPECT_TRUE(button->isArmed());
    move(beside());
    release(beside());
    EXPECT_EQ(fired, 0);
}

TEST_F(ButtonTest, ReleaseOutsideAndALaterOneInsideDoNotFire) {
    press(on(*button));
    release(beside());
    release(on(*button));
    EXPECT_EQ(fired, 0);
}

TEST_F(ButtonTest, ReleaseAfterAPressElsewhereDoesNotFire) {
    press(beside());
    move(on(*button));
    EXPECT_FALSE(button->isArmed());
    release(on(*button));
    EXPECT_EQ(fired, 0);
}

TEST_F(ButtonTest, OnlyTheLeftButtonPresses) {
    for (const int other : std::initializer_list<int>{middleButton, rightButton, wheelUp, wheelDown, 5, -1}) {
        press(on(*button), other);
        release(on(*button), other);
    }
    EXPECT_EQ(fired, 0);
    press(on(*button));
    release(on(*button), rightButton);
    EXPECT_TRUE(button->isArmed());
    release(on(*button));
    EXPECT_EQ(fired, 1);
}

TEST_F(ButtonTest, EdgePixelsBelongToItAndTheirNeighboursDoNot) {
    wt::wtWindowManager::setViewport(screenWidth, screenHeight);
    const float px = 0.5F / (button->rect().w / wt::screen().pixelX());
    const float py = 0.5F / (button->rect().h / wt::screen().pixelY());
    for (const float x : {px, 1 - px}) {
        for (const float y : {py, 1 - py}) {
            fired = 0;
            click(on(*button, x, y));
            EXPECT_EQ(fired, 1) << x << ' ' << y;
        }
    }
    fired = 0;
    click(on(*button, -px, 0.5F));
    click(on(*button, 1 + px, 0.5F));
    click(on(*button, 0.5F, -py));
    click(on(*button, 0.5F, 1 + py));
    EXPECT_EQ(fired, 0);
}

TEST_F(ButtonTest, HoverFollowsThePointerAndPausesWhileAButtonIsHeldElsewhere) {
    move(on(*button));
    EXPECT_TRUE(button->isHovered());
    move(beside());
    EXPECT_FALSE(button->isHovered());
    press(beside());
    move(on(*button));
    EXPECT_FALSE(button->isHovered());
    release(on(*button));
    EXPECT_TRUE(button->isHovered());
}

TEST_F(ButtonTest, SlotsRunInTheOrderOfConnectionAndCanBeDisconnected) {
    std::string order;
    button->connectButtonPressed([&] { order += 'a'; });
    auto second = button->connectButtonPressed([&] { order += 'b'; });
    button->connectButtonPressed([&] { order += 'c'; });
    click(on(*button));
    second.disconnect();
    click(on(*button));
    EXPECT_EQ(order, "abcac");
}

TEST_F(ButtonTest, SlotMayHideItsWindowAndLaterSlotsStillRun) {
    auto* hidden = panel;
    button->connectButtonPressed(boost::bind(&wt::wtWidget::setShowing, hidden, false));
    int later = 0;
    button->connectButtonPressed([&] { later += hidden->isShowing() == 0 ? 1 : 0; });
    click(on(*button));
    EXPECT_EQ(later, 1);
    click(on(*button));
    EXPECT_EQ(later, 1) << "a hidden button gets nothing";
}

TEST_F(ButtonTest, SlotMayDestroyEveryWindow) {
    int later = 0;
    button->connectButtonPressed([] { wt::wtWindowManager::clear(); });
    button->connectButtonPressed([&] { ++later; });
    click(on(*button));
    EXPECT_TRUE(wt::wtWindowManager::windows().empty());
    EXPECT_LE(later, 1);
    click(at(0, 0));
}

TEST_F(ButtonTest, SlotMayEndTheProcess) {
    button->connectButtonPressed([] { std::exit(1); });
    EXPECT_EXIT(click(on(*button)), testing::ExitedWithCode(1), "");
}

TEST_F(ButtonTest, SlotMaySendTheNextEventItself) {
    bool once = true;
    button->connectButtonPressed([&] {
        if (std::exchange(once, false)) {
            click(on(*button));
        }
    });
    click(on(*button));
    EXPECT_EQ(fired, 2);
}

TEST_F(ButtonTest, HidingItDuringAPressLetsGo) {
    press(on(*button));
    panel->setShowing(0);
    EXPECT_FALSE(button->isArmed());
    panel->setShowing(1);
    move(on(*button));
    EXPECT_FALSE(button->isArmed());
    release(on(*button));
    EXPECT_EQ(fired, 0);
}

TEST_F(ButtonTest, DisabledButtonIsDeafAndStillCoversWhatIsBelow) {
    Probe* below = new Probe(panel, {0, 0, 0.01F, 0.01F});
    button->setEnabled(0);
    click(on(*button));
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(below->events.empty());
    button->setEnabled(1);
    click(on(*button));
    EXPECT_EQ(fired, 1);
}

TEST_F(ButtonTest, DisablingItDuringAPressLetsGo) {
    press(on(*button));
    button->setEnabled(0);
    EXPECT_FALSE(button->isArmed());
    release(on(*button));
    EXPECT_EQ(fired, 0);
}

TEST_F(ButtonTest, SizeOfMinusOneComesFromTheText) {
    const wt::wtButton brief(nullptr, "brief", {0, 0}, {-1, -1}, "OK");
    const wt::wtButton wordy(nullptr, "wordy", {0, 0}, {-1, -1}, "Start a new game with everything");
    const float em = wt::screen().emPixels();
    EXPECT_NEAR(brief.sizeHint().preferred.x / wt::screen().pixelX(), wt::theme().buttonLeastWidthEm * em, 1);
    EXPECT_GT(wordy.sizeHint().preferred.x, brief.sizeHint().preferred.x);
    EXPECT_EQ(wordy.sizeHint().preferred.y, brief.sizeHint().preferred.y);
    EXPECT_GT(wordy.sizeHint().preferred.y / wt::screen().pixelY(), em);
    EXPECT_EQ(brief.getText(), "OK");
}

TEST_F(ButtonTest, ChangedTextIsLaidOutAnew) {
    wt::wtButton* free = new wt::wtButton(panel, "free", {0, 0}, {-1, -1}, "A");
    wt::wtWindowManager::setViewport(screenWidth, screenHeight);
    const float before = free->rect().w;
    free->setText("A much longer label");
    move(at(0, 0));
    EXPECT_GT(free->rect().w, before);
}

}  // namespace
