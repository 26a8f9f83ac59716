#include "game/ScoreAnnotation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

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

TEST_F(ScoreAnnotationTest, AnAwardHasTheFontsColourAndScaleAndALossIsRed) {
    font.setColor(0.25f, 0.5f, 0.75f, 0.5f);
    font.setScale(0.5f, 0.25f);
    for (const int value : {300, 0, -20}) {
        ScoreAnnotation annotation(5.0f, 0.5f, font, value);
        const RecordingFont::Text text = drawn(annotation);
        EXPECT_EQ(text.text, std::to_string(value));
        EXPECT_EQ(text.color, value < 0 ? (std::array<float, 4>{1.0f, 0.0f, 0.0f, 1.0f})
                                        : (std::array<float, 4>{0.25f, 0.5f, 0.75f, 0.5f}));
        EXPECT_EQ(text.scaleX, 0.5f);
        EXPECT_EQ(text.scaleY, 0.25f);
        EXPECT_EQ(text.boxWidth, 100.0f);
        EXPECT_EQ(text.boxHeight, 100.0f);
    }
    recorded.forget();
    font.drawString("x", 0.0f, 0.0f, -1.0f, -1.0f);
    EXPECT_THAT(recorded.texts().at(0).color, ElementsAre(0.25f, 0.5f, 0.75f, 0.5f)) << "the red is its own";
}

TEST_F(ScoreAnnotationTest, FollowsItsFormulaToTheLastBit) {
    ScoreAnnotation annotation(7.0f, 0.2857143f, font, 100);
    EXPECT_EQ(drawn(annotation).x, 7.3f);
    EXPECT_EQ(drawn(annotation).y, 0.2857143f);
    float age = 0.0f;
    for (int frame = 0; frame < 200; ++frame) {
        const double dt = 0.013 + 0.0001 * frame;
        annotation.animate(dt);
        age = static_cast<float>(static_cast<double>(age) + dt);
        const float squared = age * age;
        const float y =
            static_cast<float>(static_cast<double>(0.2857143f) + 0.5 * static_cast<double>(squared) +
                               0.5 * static_cast<double>(age));
        const float x = static_cast<float>(0.3 * std::cos(M_PI * static_cast<double>(age)) + 7.0);
        ASSERT_EQ(drawn(annotation).x, x) << "frame " << frame;
        ASSERT_EQ(drawn(annotation).y, y) << "frame " << frame;
    }
}

}  // namespace
