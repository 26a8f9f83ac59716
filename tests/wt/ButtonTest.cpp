#include "platform/wt/wtButton.h"

#include <initializer_list>
#include <utility>

#include "tests/wt/Stage.h"

namespace {

class ButtonTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        panel = window("panel", {-0.5f, -0.5f, 1, 1});
        button = new wt::wtButton(panel, "button", {0.2f, 0.2f}, {0.5f, 0.2f}, "Play");
        button->connectButtonPressed([this] { ++fired; });
        move(at(-0.9f, -0.9f));
    }
    static Pixel beside() { return at(0.45f, 0.45f); }

    wt::wtWindow* panel = nullptr;
    wt::wtButton* button = nullptr;
    int fired = 0;
};

TEST_F(ButtonTest, FiresOnlyWherePressAndReleaseAreOnItAndLetsGoWhileThePointerIsElsewhere) {
    press(on(*button));
    move(beside());
    EXPECT_FALSE(button->isArmed());
    move(on(*button));
    EXPECT_TRUE(button->isArmed());
    release(beside());
    release(on(*button));
    press(beside());
    move(on(*button));
    EXPECT_FALSE(button->isArmed());
    release(on(*button));
    EXPECT_EQ(fired, 0);
}

TEST_F(ButtonTest, FiresOnReleaseOfTheLeftButtonOnly) {
    for (const int other : std::initializer_list<int>{middleButton, rightButton, wheelUp, wheelDown, 5, -1}) {
        press(on(*button), other);
        release(on(*button), other);
    }
    EXPECT_EQ(fired, 0);
    press(on(*button));
    release(on(*button), rightButton);
    EXPECT_TRUE(button->isArmed());
    EXPECT_EQ(fired, 0);
    release(on(*button));
    EXPECT_FALSE(button->isArmed());
    EXPECT_EQ(fired, 1);
}

TEST_F(ButtonTest, EdgePixelsBelongToItAndTheirNeighboursDoNot) {
    wt::wtWindowManager::setViewport(screenWidth, screenHeight);
    const float px = 0.5f / (button->rect().w / wt::screen().pixelX());
    const float py = 0.5f / (button->rect().h / wt::screen().pixelY());
    int clicks = 0;
    for (const float x : {px, 1 - px}) {
        for (const float y : {py, 1 - py}) {
            click(on(*button, x, y));
            EXPECT_EQ(fired, ++clicks) << x << ' ' << y;
        }
        click(on(*button, x < px * 2 ? -px : 1 + px, 0.5f));
        click(on(*button, 0.5f, x < px * 2 ? -py : 1 + py));
        EXPECT_EQ(fired, clicks);
    }
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

TEST_F(ButtonTest, SlotMayDestroyEveryWindow) {
    int later = 0;
    button->connectButtonPressed([] { wt::wtWindowManager::clear(); });
    button->connectButtonPressed([&] { ++later; });
    click(on(*button));
    EXPECT_TRUE(wt::wtWindowManager::windows().empty());
    EXPECT_EQ(later, 1);
    click(at(0, 0));
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

TEST_F(ButtonTest, HidingOrDisablingItDuringAPressLetsGo) {
    press(on(*button));
    panel->setShowing(0);
    EXPECT_FALSE(button->isArmed());
    panel->setShowing(1);
    move(on(*button));
    EXPECT_FALSE(button->isArmed());
    release(on(*button));
    press(on(*button));
    button->setEnabled(0);
    EXPECT_FALSE(button->isArmed());
    release(on(*button));
    EXPECT_EQ(fired, 0);
}

TEST_F(ButtonTest, DisabledButtonIsDeafAndStillCoversWhatIsBelow) {
    Probe* below = new Probe(panel, {0, 0, 0.01f, 0.01f});
    button->setEnabled(0);
    click(on(*button));
    EXPECT_EQ(fired, 0);
    EXPECT_TRUE(below->events.empty());
    button->setEnabled(1);
    click(on(*button));
    EXPECT_EQ(fired, 1);
}

TEST_F(ButtonTest, SizeOfMinusOneComesFromTheTextAndFollowsIt) {
    const wt::wtButton brief(nullptr, "brief", {0, 0}, {-1, -1}, "OK");
    const wt::wtButton wordy(nullptr, "wordy", {0, 0}, {-1, -1}, "Start a new game with everything");
    const float em = wt::screen().emPixels();
    EXPECT_NEAR(brief.sizeHint().preferred.x / wt::screen().pixelX(), wt::theme().buttonLeastWidthEm * em, 1);
    EXPECT_GT(wordy.sizeHint().preferred.x, brief.sizeHint().preferred.x);
    EXPECT_EQ(wordy.sizeHint().preferred.y, brief.sizeHint().preferred.y);
    EXPECT_GT(wordy.sizeHint().preferred.y / wt::screen().pixelY(), em);
    EXPECT_EQ(brief.getText(), "OK");

    wt::wtButton* free = new wt::wtButton(panel, "free", {0, 0}, {-1, -1}, "A");
    wt::wtWindowManager::setViewport(screenWidth, screenHeight);
    const float before = free->rect().w;
    free->setText("A much longer label");
    move(at(0, 0));
    EXPECT_GT(free->rect().w, before);
}

}  // namespace
