#include "ui/MainWindow.h"

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

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

TEST_F(MainWindowTest, NewGameStandsAboveExit) {
    constexpr float onePixel = 2.0f / screenWidth;  // screen units
    const MainWindow menu;
    wt::wtWindowManager::displayWidgets();
    EXPECT_GT(button("New Game")->rect().y, button("Exit")->rect().top());
    EXPECT_NEAR(button("New Game")->rect().x + button("New Game")->rect().w / 2,
                button("Exit")->rect().x + button("Exit")->rect().w / 2, onePixel);
}

TEST_F(MainWindowTest, ExitEndsTheProcessWithStatusOne) {
    const MainWindow menu;
    wt::wtWindowManager::displayWidgets();
    EXPECT_EXIT(click(*button("Exit")), testing::ExitedWithCode(1), "");
}

TEST_F(MainWindowTest, NewGameHidesTheTitleBeforeTheCallersSlotRuns) {
    MainWindow menu;
    std::vector<int> showingInSlot;
    menu.connectNewGameSignal([&showingInSlot] { showingInSlot.push_back(title()->isShowing()); });
    wt::wtWindowManager::displayWidgets();
    click(*button("New Game"));
    EXPECT_EQ(showingInSlot, std::vector<int>{0});
}

TEST_F(MainWindowTest, NewGameSlotCanBeDisconnected) {
    MainWindow menu;
    int calls = 0;
    menu.connectNewGameSignal([&calls] { ++calls; }).disconnect();
    wt::wtWindowManager::displayWidgets();
    click(*button("New Game"));
    EXPECT_EQ(calls, 0);
    EXPECT_EQ(title()->isShowing(), 0);
}

TEST_F(MainWindowTest, HidesAndShows) {
    MainWindow menu;
    menu.hide();
    EXPECT_EQ(title()->isShowing(), 0);
    menu.show();
    EXPECT_EQ(title()->isShowing(), 1);
}

TEST_F(MainWindowTest, WindowCreatedLaterIsTranslucentAndThrowsNoShadow) {
    wt::wtDefaults::Window::alpha = 1.0f;
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
    EXPECT_FLOAT_EQ(later.getAlpha(), 0.8f);
}

TEST_F(MainWindowTest, CoversTheScreenWhateverItsSize) {
    const MainWindow menu;
    for (const auto& [width, height] : {std::pair{640, 480}, std::pair{1920, 1080}, std::pair{480, 640}}) {
        wt::wtWindowManager::setViewport(width, height);
        const wt::Rect rect = title()->rect();
        EXPECT_NEAR(rect.x, -1.0f, 1e-5);
        EXPECT_NEAR(rect.y, -1.0f, 1e-5);
        EXPECT_NEAR(rect.w, 2.0f, 1e-5);
        EXPECT_NEAR(rect.h, 2.0f, 1e-5);
    }
}

/// How many different colours a picture shows.
std::size_t colours(const tavi::Image<unsigned char>& picture) {
    std::vector<int> seen;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            seen.push_back((picture.at(x, y, 0) << 16) | (picture.at(x, y, 1) << 8) | picture.at(x, y, 2));
        }
    }
    std::sort(seen.begin(), seen.end());
    return static_cast<std::size_t>(std::unique(seen.begin(), seen.end()) - seen.begin());
}

TEST_F(MainWindowTest, DrawsTheTitlePictureUprightInAFrame) {
    const MainWindow menu;
    wt::wtWindowManager::displayWidgets();
    const auto screen = gl.read();
    tavi::Image<unsigned char> picture(0, 0, 0);
    ASSERT_TRUE(picture.read("Images/title.png"));

    // A frame of 0.05 screen units around the picture; compared in blocks, away from the buttons.
    constexpr int frameX = screenWidth / 40;
    constexpr int frameY = screenHeight / 40;
    constexpr int blocks = 8;
    double upright = 0.0;
    double flipped = 0.0;
    for (int block = 0; block < blocks; ++block) {
        const int y = frameY + (screenHeight - 2 * frameY) * (2 * block + 1) / (2 * blocks);
        const int x = frameX + (screenWidth - 2 * frameX) / 8;
        const int pictureX = picture.width() / 8;
        const int pictureY = picture.height() * (2 * block + 1) / (2 * blocks);
        for (int channel = 0; channel < 3; ++channel) {
            const double drawn = screen.at(x, y, channel);
            upright += std::abs(drawn - 0.8 * picture.at(pictureX, pictureY, channel));
            flipped += std::abs(drawn - 0.8 * picture.at(pictureX, picture.height() - 1 - pictureY, channel));
        }
    }
    EXPECT_LT(upright, flipped);
    EXPECT_GT(colours(screen), 500u);
    // The frame is one colour all the way round.
    for (int x = 2; x < screenWidth - 2; ++x) {
        for (int channel = 0; channel < 3; ++channel) {
            ASSERT_EQ(screen.at(x, 3, channel), screen.at(3, screenHeight / 2, channel)) << x;
            ASSERT_EQ(screen.at(x, screenHeight - 4, channel), screen.at(3, screenHeight / 2, channel)) << x;
        }
    }
}

}  // namespace
