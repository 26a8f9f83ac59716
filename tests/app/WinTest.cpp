#include "app/Win.h"

#include <GL/freeglut.h>
#include <gmock/gmock.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "audio/AudioInput.h"
#include "tests/app/WinFixture.h"
#include "tests/support/Ink.h"

namespace {

constexpr double aHz = 445.3125;  // in the middle of a bin that the test's table calls an A
constexpr double loud = 0.5;      // amplitude
constexpr int white = 0xffffff;

class WinTest : public WinFixture {
protected:
    static wt::wtButton* newGame() { return widgets::in<wt::wtButton>("Options", "New Game"); }
    static wt::wtButton* play() { return widgets::in<wt::wtButton>("Play Song", "play_button"); }

    void press(unsigned char key) { fakeglut::state().keyboard(key, 0, 0); }

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
        const auto isWhiteAt = [&](int offset) { return worldPixel(x + offset * onePixel, 2.4) == white; };
        return isWhiteAt(-1) || isWhiteAt(0) || isWhiteAt(1);
    }
};

TEST_F(WinTest, ConstructionAnnouncesTheToolkitAndBuildsAllMenusAndShowsTheTitleAlone) {
    EXPECT_EQ(printed, "NoteEstimation minDecibel is -65.000000\nWin::Win() initing wt\n");
    EXPECT_EQ(fakeglut::state().initialWidth, 640);
    EXPECT_EQ(fakeglut::state().initialHeight, 480);
    EXPECT_EQ(title()->isShowing(), 1);
    EXPECT_EQ(chooser()->isShowing(), 0);
    EXPECT_EQ(panel()->isShowing(), 0);
    EXPECT_EQ(wt::wtWindowManager::windows(), (std::vector<wt::wtWidget*>{title(), panel(), chooser()}));
}

TEST_F(WinTest, NoAnalysisBeforeASongUnlessThePanelIsOpenWhichItsCloseBoxHidesAndFShowsAgain) {
    sound(aHz, loud);
    frame();
    EXPECT_EQ(analyses(), 0);
    press('f');
    EXPECT_EQ(panel()->isShowing(), 1);
    frame();
    EXPECT_EQ(analyses(), 1);
    click(*widgets::in<wt::wtWidget>("Frequency", "close box"));
    EXPECT_EQ(panel()->isShowing(), 0);
    frame();
    EXPECT_EQ(analyses(), 0);
    press('f');
    EXPECT_EQ(panel()->isShowing(), 1);
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
    frameAfter(60.0);
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
    frameAfter(10.0);
    EXPECT_EQ(title()->isShowing(), 1);
    EXPECT_EQ(analyses(), 1) << "the frame that ends a song has had its analysis";
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
    frameAfter(2.0 + 2.2);
    EXPECT_EQ(title()->isShowing(), 0);
    frameAfter(0.1);
    EXPECT_EQ(title()->isShowing(), 1);
}

TEST_F(WinTest, SongTimeIsMinusTwoAtTheStartAndAfterALowerCaseR) {
    win->playSong("scale.txt");
    frameAfter(-0.01);
    EXPECT_TRUE(barLineShowsTime(-2.0));
    fakeclock::advance(1.0 - 0.01);
    press('R');
    frame();
    EXPECT_FALSE(barLineShowsTime(-2.0));
    EXPECT_TRUE(barLineShowsTime(-1.0));
    press('r');
    frameAfter(-0.01);
    EXPECT_TRUE(barLineShowsTime(-2.0));
}

TEST_F(WinTest, AClockSetForwardByAnHourEndsTheSongAndTheNextOneIsWhole) {
    win->playSong("scale.txt");
    frameAfter(3600.0);
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
    frameAfter(4.5);
    EXPECT_EQ(title()->isShowing(), 1) << "it has one slot";
    std::filesystem::remove_all(folder->path() / "Songs");
    testing::internal::CaptureStderr();
    press('r');
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Song: input is not good.\n");
}

TEST_F(WinTest, UpperCaseLettersAndOthersDoNothing) {
    sound(aHz, loud);
    for (const char key : {'F', 'R', 'q', ' ', '\x1b'}) {
        press(static_cast<unsigned char>(key));
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

TEST_F(WinTest, DraggingDoesNotMoveTheCamera) {
    silence();
    testing::internal::CaptureStderr();
    win->playSong("gone.txt");
    testing::internal::GetCapturedStderr();
    fakeclock::advance(-600.0);  // the staff stands out of sight, so that frames are alike
    frame();
    const auto before = gl->read();
    constexpr int middle = 1;
    fakeglut::state().mouse(middle, 0, 100, 100);
    fakeglut::state().motion(300, 200);
    fakeglut::state().mouse(middle, 1, 300, 200);
    frame();
    EXPECT_EQ(largestDifference(gl->read(), before), 0);
}

/// One round of GLUT's main loop after another. A window that cannot be seen gets no frames.
class UnseenWindowTest : public WinFixture {
protected:
    static std::int64_t sleptInRound(bool seen) {
        fakeclock::state().slept = 0;
        if (seen) {
            fakeglut::state().display();
        }
        fakeglut::state().idle();
        return fakeclock::state().slept;
    }
};

TEST_F(UnseenWindowTest, RestsBetweenRoundsOnlyWhileNothingIsDrawnAndTendsTheAudioInputInEach) {
    EXPECT_EQ(sleptInRound(true), 10000) << "the frame's own pause";
    EXPECT_EQ(sleptInRound(false), 20000);
    EXPECT_EQ(sleptInRound(false), 20000);
    EXPECT_EQ(sleptInRound(true), 10000);
    EXPECT_EQ(scriptedaudio::script().tended, 4);
    EXPECT_EQ(fakeglut::state().swaps, 2);
    EXPECT_EQ(fakeglut::state().redisplays, 2) << "each frame asks for the next";
}

TEST_F(UnseenWindowTest, AHeldKeyIsOnePress) {
    EXPECT_EQ(fakeglut::state().keyRepeat, GLUT_KEY_REPEAT_OFF);
}

/// What the environment variable ZANTO_SPECTRUM makes of the panel.
class SpectrumFromTheStartTest : public WinFixture, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override {
        setenv("ZANTO_SPECTRUM", GetParam(), 1);
        testing::internal::CaptureStderr();
        WinFixture::SetUp();
        told = testing::internal::GetCapturedStderr();
        unsetenv("ZANTO_SPECTRUM");
    }

    std::string told;
};

TEST_P(SpectrumFromTheStartTest, OpensThePanelWhenAskedTo) {
    const std::string value = GetParam();
    EXPECT_EQ(panel()->isShowing() != 0, value == "1");
    EXPECT_EQ(told, value == "yes" ? "ZANTO_SPECTRUM: \"yes\" is not one of 0 1. 0 is used.\n" : "");
}

INSTANTIATE_TEST_SUITE_P(Values, SpectrumFromTheStartTest, testing::Values("", "0", "1", "yes"));

}  // namespace
