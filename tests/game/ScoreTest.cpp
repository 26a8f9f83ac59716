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
            score.animate(i % 2 == 0 ? 1000.0 : 0.0);  // whatever the step
        }
    }

    RecordingGL gl;
    RecordingFont recorded;
    FFont font{"face.ttf", 24};
    Score score{-5.5f, -4.0f};
};

TEST_F(ScoreTest, ANewScoreDrawsZeroInWhiteAtItsPlace) {
    const RecordingFont::Text text = drawn();
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

/// Points in a row, and the red, green and blue and the text that they leave.
struct Example {
    const char* name;
    std::vector<float> points;
    std::array<float, 4> color;
    const char* text;
};

class Tint : public ScoreTest, public testing::WithParamInterface<Example> {};

TEST_P(Tint, AndTextAreThese) {
    for (const float points : GetParam().points) {
        score.addToScore(points);
    }
    EXPECT_EQ(color(), GetParam().color);
    EXPECT_EQ(drawn().text, GetParam().text);
}

const Example examples[] = {
    {"AGainIsGreen", {100}, {0.85f, 1.0f, 0.85f, 1.0f}, "Score:  100"},
    {"TheLeastGainTooAndItIsNotShown", {0.25f}, {0.85f, 1.0f, 0.85f, 1.0f}, "Score:    0"},
    {"ALossIsRed", {-20}, {1.0f, 0.75f, 0.75f, 1.0f}, "Score:  -20"},
    {"ZeroIsALossOfNothing", {0}, {1.0f, 0.75f, 0.75f, 1.0f}, "Score:    0"},
    {"GainsReachPureGreen", std::vector<float>(7, 100.0f), {0.0f, 1.0f, 0.0f, 1.0f}, "Score:  700"},
    {"AndStayThere", std::vector<float>(8, 100.0f), {0.0f, 1.0f, 0.0f, 1.0f}, "Score:  800"},
    {"LossesReachPureRed", std::vector<float>(5, -20.0f), {1.0f, 0.0f, 0.0f, 1.0f}, "Score: -100"},
    {"WideNumbersAreNotCut", {123456.7f}, {0.85f, 1.0f, 0.85f, 1.0f}, "Score:123457"},
    {"NorTheWidest",
     {std::ldexp(1.0f, 100)},
     {0.85f, 1.0f, 0.85f, 1.0f},
     "Score:1267650600228229401496703205376"},
};

INSTANTIATE_TEST_SUITE_P(, Tint, testing::ValuesIn(examples),
                         [](const auto& example) { return std::string(example.param.name); });

TEST_F(ScoreTest, ATintIsGoneAfter16FramesForAGainAnd26ForALossAndNotBefore) {
    score.addToScore(100.0f);
    animate(15);
    EXPECT_LT(color()[0], 1.0f);
    EXPECT_GT(color()[0], 0.999f);
    EXPECT_EQ(color()[0], color()[2]);
    animate(1);
    EXPECT_THAT(color(), ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
    score.addToScore(-20.0f);
    animate(25);
    EXPECT_LT(color()[1], 1.0f);
    animate(1);
    EXPECT_THAT(color(), ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
}

TEST_F(ScoreTest, ResetZeroesTheValueAndLeavesTheColour) {
    score.addToScore(100.0f);
    score.reset();
    EXPECT_EQ(score.getValue(), 0.0f);
    EXPECT_THAT(color(), ElementsAre(0.85f, 1.0f, 0.85f, 1.0f));
    EXPECT_EQ(drawn().text, "Score:    0");
}

}  // namespace
