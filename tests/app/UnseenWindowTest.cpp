#include <GL/freeglut.h>

#include <cstdlib>
#include <string>

#include "tests/app/WinFixture.h"

namespace {

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
