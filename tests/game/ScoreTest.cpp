#include "game/Score.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

using testing::ElementsAre;

namespace {

class ScoreTest : public testing::Test {
protected:
    ScoreTest() { score.setFont(font, 0.8f); }

    RecordingFont::Text drawn() {
        recorded.forget();
        score.draw();
        return recorded.texts().at(0);
    }
    std::array<float, 4> color() { return drawn().color; }
    void animate(int frames) {
        for (int i = 0; i < frames; ++i) {
            score.animate(0.02);
        }
    }

    RecordingGL gl;
    RecordingFont recorded;
    FFont font{"face.ttf", 24};
    Score score{-5.5f, -4.0f};
};

TEST_F(ScoreTest, ANewScoreDrawsZeroInWhiteAtItsPlace) {
    RecordingFont::Text const text = drawn();
    EXPECT_EQ(text.text, "Score:    0");
    EXPECT_EQ(text.x, -5.5f);
    EXPECT_EQ(text.y, -4.0f);
    EXPECT_EQ(text.boxWidth, -1.0f);
    EXPECT_EQ(text.boxHeight, -1.0f);
    EXPECT_EQ(text.scaleX, 0.8f);
    EXPECT_EQ(text.scaleY, 0.8f);
    EXPECT_THAT(text.color, ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
}

TEST_F(ScoreTest, ItsFontIsACopyWithItsOwnScaleAndColour) {
    font.setScale(3.0f, 3.0f);
    font.setColor(0.0f, 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(drawn().scaleX, 0.8f);
    recorded.forget();
    font.drawString("x", 0.0f, 0.0f, -1.0f, -1.0f);
    EXPECT_EQ(recorded.texts().at(0).scaleX, 3.0f);
    EXPECT_THAT(recorded.texts().at(0).color, ElementsAre(0.0f, 0.0f, 0.0f, 0.0f));
}

TEST_F(ScoreTest, AGainTintsTheTextGreen) {
    score.addToScore(100.0f);
    EXPECT_THAT(color(), ElementsAre(0.85f, 1.0f, 0.85f, 1.0f));
    EXPECT_EQ(drawn().text, "Score:  100");
}

TEST_F(ScoreTest, AGainsTintIsGoneAfter16FramesAndNotBefore) {
    score.addToScore(100.0f);
    animate(15);
    EXPECT_LT(color()[0], 1.0f);
    EXPECT_GT(color()[0], 0.999f);
    EXPECT_EQ(color()[0], color()[2]);
    animate(1);
    EXPECT_THAT(color(), ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
}

TEST_F(ScoreTest, ALossTintsTheTextRed) {
    score.addToScore(-20.0f);
    EXPECT_THAT(color(), ElementsAre(1.0f, 0.75f, 0.75f, 1.0f));
    EXPECT_EQ(drawn().text, "Score:  -20");
}

TEST_F(ScoreTest, ALosssTintIsGoneAfter26FramesAndNotBefore) {
    score.addToScore(-20.0f);
    animate(25);
    EXPECT_LT(color()[1], 1.0f);
    animate(1);
    EXPECT_THAT(color(), ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
}

TEST_F(ScoreTest, TheWayBackToWhiteIsByTheFrameWhateverTheStep) {
    score.addToScore(-20.0f);
    score.animate(1000.0);
    float const afterALongFrame = color()[1];
    score.reset();
    animate(30);
    score.addToScore(-20.0f);
    score.animate(0.0);
    EXPECT_EQ(color()[1], afterALongFrame);
    EXPECT_EQ(afterALongFrame, 0.76f);
}

TEST_F(ScoreTest, ZeroPointsAreALossOfNothing) {
    score.addToScore(0.0f);
    EXPECT_THAT(color(), ElementsAre(1.0f, 0.75f, 0.75f, 1.0f));
    EXPECT_EQ(drawn().text, "Score:    0");
}

TEST_F(ScoreTest, SevenGainsInARowReachPureGreenAndStayThere) {
    for (int i = 0; i < 7; ++i) {
        score.addToScore(100.0f);
    }
    EXPECT_THAT(color(), ElementsAre(0.0f, 1.0f, 0.0f, 1.0f));
    score.addToScore(100.0f);
    EXPECT_THAT(color(), ElementsAre(0.0f, 1.0f, 0.0f, 1.0f));
}

TEST_F(ScoreTest, LossesInARowReachPureRedAndStayThere) {
    for (int i = 0; i < 5; ++i) {
        score.addToScore(-20.0f);
    }
    EXPECT_THAT(color(), ElementsAre(1.0f, 0.0f, 0.0f, 1.0f));
}

TEST_F(ScoreTest, WideNumbersAreNotCut) {
    score.addToScore(123456.7f);
    EXPECT_EQ(drawn().text, "Score:123457");
    score.addToScore(std::ldexp(1.0f, 100));
    EXPECT_EQ(drawn().text, "Score:1267650600228229401496703205376");
}

TEST_F(ScoreTest, ResetZeroesTheValueAndLeavesTheColour) {
    score.addToScore(100.0f);
    score.reset();
    EXPECT_EQ(score.getValue(), 0.0f);
    EXPECT_THAT(color(), ElementsAre(0.85f, 1.0f, 0.85f, 1.0f));
    EXPECT_EQ(drawn().text, "Score:    0");
}

}  // namespace
