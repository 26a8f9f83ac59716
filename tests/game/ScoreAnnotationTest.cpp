#include "game/ScoreAnnotation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

using testing::ElementsAre;

namespace {

class ScoreAnnotationTest : public testing::Test {
protected:
    RecordingFont::Text drawn(ScoreAnnotation& annotation) {
        recorded.forget();
        annotation.draw();
        return recorded.texts().at(0);
    }

    RecordingGL gl;
    RecordingFont recorded;
    FFont font{"face.ttf", 24};
};

TEST_F(ScoreAnnotationTest, ALossIsRed) {
    ScoreAnnotation annotation(5.0f, 0.5f, font, -20);
    EXPECT_EQ(drawn(annotation).text, "-20");
    EXPECT_THAT(drawn(annotation).color, ElementsAre(1.0f, 0.0f, 0.0f, 1.0f));
}

TEST_F(ScoreAnnotationTest, AnAwardHasTheFontsColour) {
    font.setColor(0.25f, 0.5f, 0.75f, 0.5f);
    for (int const value : {300, 0}) {
        ScoreAnnotation annotation(5.0f, 0.5f, font, value);
        EXPECT_EQ(drawn(annotation).text, std::to_string(value));
        EXPECT_THAT(drawn(annotation).color, ElementsAre(0.25f, 0.5f, 0.75f, 0.5f));
    }
}

TEST_F(ScoreAnnotationTest, ItsRedIsItsOwn) {
    ScoreAnnotation annotation(5.0f, 0.5f, font, -20);
    annotation.draw();
    recorded.forget();
    font.drawString("x", 0.0f, 0.0f, -1.0f, -1.0f);
    EXPECT_THAT(recorded.texts().at(0).color, ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
}

TEST_F(ScoreAnnotationTest, KeepsTheFontsScaleAndDrawsInABoxOf100) {
    font.setScale(0.5f, 0.25f);
    ScoreAnnotation annotation(5.0f, 0.5f, font, 100);
    EXPECT_EQ(drawn(annotation).scaleX, 0.5f);
    EXPECT_EQ(drawn(annotation).scaleY, 0.25f);
    EXPECT_EQ(drawn(annotation).boxWidth, 100.0f);
    EXPECT_EQ(drawn(annotation).boxHeight, 100.0f);
}

TEST_F(ScoreAnnotationTest, StartsToTheRightSwaysToTheLeftAndRises) {
    ScoreAnnotation annotation(5.0f, 0.5f, font, 100);
    EXPECT_EQ(drawn(annotation).x, 5.3f);
    EXPECT_EQ(drawn(annotation).y, 0.5f);
    annotation.animate(1.0);
    EXPECT_EQ(drawn(annotation).x, 4.7f);
    EXPECT_EQ(drawn(annotation).y, 1.5f);
    annotation.animate(1.0);
    EXPECT_EQ(drawn(annotation).x, 5.3f);
    EXPECT_EQ(drawn(annotation).y, 0.5f + 2.0f + 1.0f);
}

TEST_F(ScoreAnnotationTest, FollowsItsFormulaToTheLastBit) {
    ScoreAnnotation annotation(7.0f, 0.2857143f, font, 100);
    float age = 0.0f;
    for (int frame = 0; frame < 200; ++frame) {
        double const dt = 0.013 + 0.0001 * frame;
        annotation.animate(dt);
        age = static_cast<float>(static_cast<double>(age) + dt);
        float const squared = age * age;
        float const y =
            static_cast<float>(static_cast<double>(0.2857143f) + 0.5 * static_cast<double>(squared) +
                               0.5 * static_cast<double>(age));
        float const x = static_cast<float>(0.3 * std::cos(M_PI * static_cast<double>(age)) + 7.0);
        ASSERT_EQ(drawn(annotation).x, x) << "frame " << frame;
        ASSERT_EQ(drawn(annotation).y, y) << "frame " << frame;
    }
}

TEST_F(ScoreAnnotationTest, LivesALittleOverFourSeconds) {
    ScoreAnnotation annotation(0.0f, 0.0f, font, 100);
    EXPECT_FALSE(annotation.isComplete());
    for (int second = 0; second < 4; ++second) {
        annotation.animate(1.0);
        EXPECT_FALSE(annotation.isComplete());
    }
    annotation.animate(1e-9);
    EXPECT_TRUE(annotation.isComplete());
}

}  // namespace
