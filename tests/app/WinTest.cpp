#include "app/Win.h"

#include <gmock/gmock.h>

#include <vector>

#include "audio/AudioInput.h"
#include "tests/app/WinFixture.h"

namespace {

constexpr double aHz = 445.3125;  // in the middle of a bin that the test's table calls an A
constexpr double loud = 0.5;      // amplitude
constexpr int white = 0xffffff;
constexpr int black = 0;
constexpr double aHeight = 10.0 / 7.0;  // world units

class WinTest : public WinFixture {
protected:
    static wt::wtButton* newGame() { return widgets::in<wt::wtButton>("Options", "New Game"); }
    static wt::wtButton* play() { return widgets::in<wt::wtButton>("Play Song", "play_button"); }

    void press(unsigned char key) { fakeglut::state().keyboard(key, 0, 0); }

    std::vector<unsigned char> pixels() const {
        const auto picture = gl->read();
        const auto count = static_cast<std::size_t>(picture.width() * picture.height() * picture.channels());
        return {picture.data(), picture.data() + count};
    }

    std::vector<int> pixelsOfTheScore() const {
        const auto picture = gl->read();
        std::vector<int> samples;
        for (int y = screenHeight - 45; y < screenHeight; ++y) {
            for (int x = 0; x < screenWidth / 3; ++x) {
                samples.push_back(picture.at(x, y, 1));
            }
        }
        return samples;
    }

    /// Whether the staff's bar line of slot 0 stands at a time of the song, seconds.
    bool barLineShowsTime(double seconds) {
        const double x = -0.5 - 2.0 * seconds;
        const double onePixel = 8.28 / screenHeight;
        for (int offset = -1; offset <= 1; ++offset) {
            if (worldPixel(x + offset * onePixel, 2.4) == white) {
                return true;
            }
        }
        return false;
    }
};

TEST_F(WinTest, ConstructionAnnouncesTheToolkitAndBuildsAllMenusAndShowsTheTitleAlone) {
    EXPECT_EQ(printed, "NoteEstimation minDecibel is -65.000000\nWin::Win() initing wt\n");
    EXPECT_EQ(fakeglut::state().initialWidth, 640);
    EXPECT_EQ(fakeglut::state().initialHeight, 480);
    EXPECT_EQ(title()->isShowing(), 1);
    EXPECT_EQ(chooser()->isShowing(), 0);
    EXPECT_EQ(panel()->isShowing(), 0);
    std::vector<std::string> names;
    for (const wt::wtWidget* window : wt::wtWindowManager::windows()) {
        names.push_back(window->name());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Options", "Frequency", "Play Song"}));
}

TEST_F(WinTest, EveryFrameSleepsTenMillisecondsSwapsAndAsksForTheNext) {
    fakeclock::resetSlept();
    frames(3);
    EXPECT_EQ(fakeclock::slept(), 30000);
    EXPECT_EQ(fakeglut::state().redisplays, 3);
    EXPECT_EQ(fakeglut::state().swaps, 3);
}

TEST_F(WinTest, NoAnalysisBeforeASongUnlessThePanelIsOpen) {
    sound(aHz, loud);
    frame();
    EXPECT_EQ(analyses(), 0);
    press('f');
    EXPECT_EQ(panel()->isShowing(), 1);
    frame();
    EXPECT_EQ(analyses(), 1);
    panel()->setShowing(0);
    frame();
    EXPECT_EQ(analyses(), 0);
}

TEST_F(WinTest, MenusLeadFromTitleToChooserToSongAndBackToTheTitleAlone) {
    sound(aHz, loud);
    frame();
    click(*newGame());
    EXPECT_EQ(title()->isShowing(), 0);
    EXPECT_EQ(chooser()->isShowing(), 1);
    frame();
    EXPECT_EQ(analyses(), 0);
    click(*play());
    EXPECT_EQ(chooser()->isShowing(), 0);
    EXPECT_EQ(title()->isShowing(), 0);
    frame();
    EXPECT_EQ(analyses(), 1);
    fakeclock::advance(60.0);
    frame();
    EXPECT_EQ(title()->isShowing(), 1);
    EXPECT_EQ(chooser()->isShowing(), 0);
    frame();
    EXPECT_EQ(analyses(), 0);
}

TEST_F(WinTest, PanelOverASongRunsOneAnalysisPerFrameAndStaysWhenTheSongEnds) {
    sound(aHz, loud);
    win->playSong("short.txt");
    frame();
    EXPECT_EQ(analyses(), 1);
    press('f');
    frame();
    EXPECT_EQ(analyses(), 1);
    fakeclock::advance(10.0);
    frame();
    EXPECT_EQ(title()->isShowing(), 1);
    EXPECT_EQ(analyses(), 1) << "the frame that ends a song has had its analysis";
    EXPECT_EQ(panel()->isShowing(), 1);
}

TEST_F(WinTest, CloseBoxHidesThePanelAndFShowsItAgain) {
    press('f');
    frame();
    click(*widgets::in<wt::wtWidget>("Frequency", "close box"));
    EXPECT_EQ(panel()->isShowing(), 0);
    press('f');
    EXPECT_EQ(panel()->isShowing(), 1);
}

TEST_F(WinTest, ANewSongAndARestartBeginWithAScoreOfZero) {
    const auto scoreAfterAWhile = [this] {
        frames(30);  // what is left of a tint is gone by then
        return pixelsOfTheScore();
    };
    silence();
    win->playSong("gift.txt");
    const auto zero = scoreAfterAWhile();
    fakeclock::advance(1.5);
    const auto awarded = scoreAfterAWhile();
    EXPECT_NE(awarded, zero);
    win->playSong("gift.txt");
    EXPECT_EQ(scoreAfterAWhile(), zero);
    fakeclock::advance(1.5);
    EXPECT_EQ(scoreAfterAWhile(), awarded);
    press('r');
    EXPECT_EQ(scoreAfterAWhile(), zero);
}

TEST_F(WinTest, SongEndsTwoSecondsAfterItsLastSlot) {
    win->playSong("short.txt");
    // Slot 4 begins at 1.75 s of song time, and one slot and four make five.
    fakeclock::advance(2.0 + 2.2);
    frame();
    EXPECT_EQ(title()->isShowing(), 0);
    fakeclock::advance(0.1);
    frame();
    EXPECT_EQ(title()->isShowing(), 1);
}

TEST_F(WinTest, SongTimeIsMinusTwoAtTheStartAndAfterALowerCaseR) {
    win->playSong("scale.txt");
    fakeclock::advance(-0.01);
    frame();
    EXPECT_TRUE(barLineShowsTime(-2.0));
    fakeclock::advance(1.0 - 0.01);
    press('R');
    frame();
    EXPECT_FALSE(barLineShowsTime(-2.0));
    EXPECT_TRUE(barLineShowsTime(-1.0));
    press('r');
    fakeclock::advance(-0.01);
    frame();
    EXPECT_TRUE(barLineShowsTime(-2.0));
}

TEST_F(WinTest, AClockSetForwardByAnHourEndsTheSongAndTheNextOneIsWhole) {
    win->playSong("scale.txt");
    fakeclock::advance(3600.0);
    frame();
    EXPECT_EQ(title()->isShowing(), 1);
    win->playSong("scale.txt");
    frames(100);
    EXPECT_EQ(title()->isShowing(), 0);
    EXPECT_TRUE(barLineShowsTime(-1.0));
}

TEST_F(WinTest, AClockSetBackByAnHourMakesTheSongWaitUntilItIsStartedAgain) {
    win->playSong("scale.txt");
    fakeclock::advance(-3600.0);
    frames(50);
    EXPECT_EQ(title()->isShowing(), 0);
    EXPECT_FALSE(barLineShowsTime(-1.5));
    press('r');
    frames(50);
    EXPECT_TRUE(barLineShowsTime(-1.5));
}

TEST_F(WinTest, ARestartPlaysTheSongAsItsFileIsNow) {
    win->playSong("scale.txt");
    folder->write("Songs/scale.txt", "1 1\nC");
    press('r');
    fakeclock::advance(4.5);
    frame();
    EXPECT_EQ(title()->isShowing(), 1) << "it has one slot";
    std::filesystem::remove_all(folder->path() / "Songs");
    testing::internal::CaptureStderr();
    press('r');
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Song: input is not good.\n");
}

TEST_F(WinTest, RestartBringsBackWhatWasHit) {
    sound(aHz, loud);
    win->playSong("short.txt");
    fakeclock::advance(1.99);
    frames(30);
    EXPECT_EQ(worldPixel(0.2 - 0.6, aHeight), black) << "a mark that was hit fades";
    silence();
    press('r');
    fakeclock::advance(1.99);
    frame();
    EXPECT_EQ(worldPixel(0.2, aHeight), white);
}

TEST_F(WinTest, UpperCaseLettersAndOthersDoNothing) {
    sound(aHz, loud);
    constexpr unsigned char escape = 27;
    for (const unsigned char key :
         {static_cast<unsigned char>('F'), static_cast<unsigned char>('R'), static_cast<unsigned char>('q'),
          static_cast<unsigned char>(' '), escape}) {
        press(key);
        fakeglut::state().keyboardUp('f', 0, 0);
        fakeglut::state().keyboardUp('r', 0, 0);
    }
    frame();
    EXPECT_EQ(panel()->isShowing(), 0);
    EXPECT_EQ(analyses(), 0);
    EXPECT_EQ(title()->isShowing(), 1);
}

TEST_F(WinTest, RBeforeAnySongPlaysTheEmptyOne) {
    sound(aHz, loud);
    testing::internal::CaptureStderr();
    press('r');
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Song: input is not good.\n");
    frame();
    EXPECT_EQ(analyses(), 1);
    EXPECT_EQ(title()->isShowing(), 1) << "r does not hide the title";
}

TEST_F(WinTest, MissingSongIsReportedAndPlayed) {
    testing::internal::CaptureStderr();
    win->playSong("gone.txt");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Song: input is not good.\nCannot load song:Songs/gone.txt\n");
    EXPECT_EQ(title()->isShowing(), 0);
    sound(aHz, loud);
    frame();
    EXPECT_EQ(analyses(), 1);
}

TEST_F(WinTest, DraggingDoesNotMoveTheCamera) {
    silence();
    testing::internal::CaptureStderr();
    win->playSong("gone.txt");
    testing::internal::GetCapturedStderr();
    fakeclock::advance(-600.0);  // the staff stands out of sight, so that frames are alike
    frame();
    const std::vector<unsigned char> before = pixels();
    constexpr int middle = 1;
    fakeglut::state().mouse(middle, 0, 100, 100);
    fakeglut::state().motion(300, 200);
    fakeglut::state().mouse(middle, 1, 300, 200);
    frame();
    EXPECT_TRUE(pixels() == before);
}

}  // namespace
