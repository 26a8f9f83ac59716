#include "ui/MainWindow.h"

#include <string>
#include <vector>

#include "tests/support/TemporaryFolder.h"
#include "tests/ui/MenuFixture.h"

namespace {

class MainWindowTest : public MenuFixture {
protected:
    static wt::wtWindow* title() { return widgets::window("Options"); }
    static wt::wtButton* button(const std::string& name) {
        return widgets::in<wt::wtButton>("Options", name);
    }
};

TEST_F(MainWindowTest, ShowsTheTwoButtonsFromTheStart) {
    const MainWindow menu;
    ASSERT_NE(title(), nullptr);
    EXPECT_EQ(title()->isShowing(), 1);
    EXPECT_EQ(title()->children().size(), 2u);
    EXPECT_EQ(button("New Game")->getText(), "New Game");
    EXPECT_EQ(button("Exit")->getText(), "Exit");
}

TEST_F(MainWindowTest, ExitEndsTheProcessWithStatusOne) {
    const MainWindow menu;
    wt::wtWindowManager::displayWidgets();
    EXPECT_EXIT(click(*button("Exit")), testing::ExitedWithCode(1), "");
}

TEST_F(MainWindowTest, NewGameHidesTheTitleBeforeTheCallersSlotRunsUnlessDisconnected) {
    MainWindow menu;
    std::vector<int> showingInSlot;
    menu.connectNewGameSignal([&showingInSlot] { showingInSlot.push_back(title()->isShowing()); });
    menu.connectNewGameSignal([&showingInSlot] { showingInSlot.push_back(-1); }).disconnect();
    wt::wtWindowManager::displayWidgets();
    click(*button("New Game"));
    EXPECT_EQ(showingInSlot, std::vector<int>{0});
}

TEST_F(MainWindowTest, HidesAndShowsAndShowingDoesNotRaiseIt) {
    MainWindow menu;
    auto* other = window("other", {0.0f, 0.0f, 1.0f, 1.0f});
    menu.hide();
    EXPECT_EQ(title()->isShowing(), 0);
    menu.show();
    EXPECT_EQ(title()->isShowing(), 1);
    EXPECT_EQ(wt::wtWindowManager::windows(), (std::vector<wt::wtWidget*>{title(), other}));
}

TEST_F(MainWindowTest, MissingPictureLeavesTheCentrePlainAndPrintsNothing) {
    const TemporaryFolder empty;
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    const MainWindow menu;
    draw();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    expectColor(pixel(screenWidth / 8, screenHeight / 2), pixel(screenWidth * 7 / 8, screenHeight / 8), 0);
}

TEST_F(MainWindowTest, WindowCreatedLaterIsTranslucentAndThrowsNoShadow) {
    EXPECT_FLOAT_EQ(wt::wtDefaults::Window::alpha, 1.0f);
    wt::wtDefaults::Window::shadowOffsX = 0.1f;
    wt::wtDefaults::Window::shadowOffsY = -0.1f;
    const MainWindow menu;
    EXPECT_FLOAT_EQ(wt::wtDefaults::Window::alpha, 0.8f);
    EXPECT_EQ(wt::wtDefaults::Window::shadowOffsX, 0.0f);
    EXPECT_EQ(wt::wtDefaults::Window::shadowOffsY, 0.0f);
    EXPECT_EQ(wt::wtDefaults::Window::shadow_bg.rows(), 1);
    EXPECT_EQ(wt::wtDefaults::Window::shadow_bg.columns(), 1);
    EXPECT_EQ(wt::wtDefaults::Window::shadow_bg(0, 0).fill().a, 0.0f);
    const wt::wtWindow later("later", {0.0f, 0.0f}, {0.5f, 0.5f}, 0);
    wt::wtDefaults::Window::alpha = 0.3f;
    EXPECT_FLOAT_EQ(later.getAlpha(), 0.8f) << "what was the default when it was created";
}

}  // namespace
