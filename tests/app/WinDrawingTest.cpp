#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "audio/AudioInput.h"
#include "tests/app/WinFixture.h"

namespace {

constexpr double cHz = 257.8125;  // in the middle of a bin that the test's table calls a C
constexpr double aHz = 445.3125;  // and one that it calls an A
constexpr double quiet = 0.05;    // amplitude: the strip stays below the labels
constexpr double pixelsPerUnit = 480.0 / 8.284271247461902;
constexpr int white = 0xffffff;

class WinDrawingTest : public WinFixture {
protected:
    void SetUp() override {
        WinFixture::SetUp();
        testing::internal::CaptureStderr();
        win->playSong("gone.txt");  // hides the title
        testing::internal::GetCapturedStderr();
    }

    int column(double x) const { return static_cast<int>(std::lround(screenWidth / 2 + x * pixelsPerUnit)); }
    int row(double y) const { return static_cast<int>(std::lround(screenHeight / 2 - y * pixelsPerUnit)); }

    /// How many pixels of a rectangle of the world are not black.
    int litPixels(double left, double right, double bottom, double top) {
        const auto picture = gl->read();
        int lit = 0;
        for (int y = row(top); y <= row(bottom); ++y) {
            for (int x = column(left); x <= column(right); ++x) {
                lit += picture.at(x, y, 0) + picture.at(x, y, 1) + picture.at(x, y, 2) > 60 ? 1 : 0;
            }
        }
        return lit;
    }

    /// The notes whose names stand in their places on the row of names.
    std::vector<int> labels() {
        std::vector<int> ids;
        for (int id = 0; id < 7; ++id) {
            const double x = id * 0.85 - 2.8;
            if (litPixels(x - 0.05, x + 0.5, -1.55, -1.0) > 10) {
                ids.push_back(id);
            }
        }
        return ids;
    }
};

TEST_F(WinDrawingTest, SilenceIsAFlatWhiteLineFiveUnitsLong) {
    frame();
    EXPECT_EQ(worldPixel(0.0, -2.0), white);
    EXPECT_NEAR(litPixels(-2.5, 2.5, -2.01, -1.99), 5 * pixelsPerUnit, 2);
    EXPECT_EQ(litPixels(-4.0, -2.53, -2.1, -1.9) + litPixels(2.53, 4.0, -2.1, -1.9), 0);
    EXPECT_EQ(litPixels(-2.5, 2.5, -1.9, -1.1) + litPixels(-2.5, 2.5, -2.6, -2.1), 0);
}

TEST_F(WinDrawingTest, FullScaleSampleRisesThreeUnitsAndTheNewestStandRight) {
    std::vector<float> samples(20480, 0.5f);
    scriptedaudio::speak(*audio, samples);
    frame();
    EXPECT_EQ(worldPixel(0.0, -0.5), white);
    EXPECT_EQ(litPixels(-2.4, 2.4, -2.05, -1.95), 0);
    std::fill(samples.begin(), samples.end() - 1024, 0.0f);
    std::fill(samples.end() - 1024, samples.end(), 0.25f);
    scriptedaudio::speak(*audio, samples);
    frame();
    EXPECT_GT(litPixels(1.3, 2.45, -1.3, -1.2), 30);
    EXPECT_EQ(litPixels(-2.5, 1.2, -1.3, -1.2), 0);
}

TEST_F(WinDrawingTest, SeveralNotesAreLabelledSideBySideInOrderUntilTheyAreReleased) {
    sound({cHz, aHz}, quiet);
    frames(8);
    EXPECT_EQ(labels(), (std::vector<int>{0, 5}));
    silence();
    frames(2);
    EXPECT_EQ(labels(), std::vector<int>{});
}

TEST_F(WinDrawingTest, WaveformAndLabelsAreDrawnWithoutASongToo) {
    frameAfter(60.0);
    title()->setShowing(0);
    fakeglut::state().keyboard('f', 0, 0);  // the open panel asks for analyses
    sound(aHz, quiet);
    frames(8);
    panel()->setShowing(0);
    frame();
    EXPECT_EQ(analyses(), 0) << "a song plays";
    EXPECT_EQ(labels(), std::vector<int>{5});
    silence();
    frame();
    EXPECT_EQ(worldPixel(0.0, -2.0), white);
}

TEST_F(WinDrawingTest, TimeLineAndNoteBarsStandAtNow) {
    constexpr int timeLine = 0x0000ff;
    constexpr int noteBar = 0x3333ff;
    constexpr double timeLineX = -0.005;  // a line on a pixel border fills the left one
    sound(aHz, quiet);
    frames(2);
    EXPECT_EQ(worldPixel(timeLineX, -0.4), timeLine);
    EXPECT_EQ(worldPixel(timeLineX, 2.4), timeLine);
    EXPECT_NE(worldPixel(timeLineX, 2.6), timeLine);
    constexpr double aHeight = 10.0 / 7.0;
    EXPECT_EQ(worldPixel(0.02, aHeight + 0.15), noteBar);
    EXPECT_EQ(worldPixel(0.02, aHeight - 0.15), noteBar);
    EXPECT_NE(worldPixel(0.02, aHeight + 0.25), noteBar);
    EXPECT_NE(worldPixel(0.02, 0.1), noteBar) << "no bar at a note that is not heard";
}

}  // namespace
