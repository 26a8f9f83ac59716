#include "scene/FFont.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

using testing::ElementsAre;

namespace {

class FFontTest : public testing::Test {
protected:
    RecordingGL gl;
    RecordingFont recorded;
    int facesBefore = RecordingFont::facesAlive();

    int facesOfThisTest() const { return RecordingFont::facesAlive() - facesBefore; }
};

TEST_F(FFontTest, LoadsThePathAtTheSizeAndWritesInOpaqueWhiteAtScaleOne) {
    FFont font("some/face.ttf", 17);
    EXPECT_EQ(facesOfThisTest(), 1);
    EXPECT_EQ(RecordingFont::facesMade().back().path, "some/face.ttf");
    EXPECT_EQ(RecordingFont::facesMade().back().size, 17u);
    font.drawString("Hello", 1.5f, -2.5f, 100.0f, 10.0f);
    ASSERT_EQ(recorded.texts().size(), 1u);
    const RecordingFont::Text& text = recorded.texts()[0];
    EXPECT_EQ(text.text, "Hello");
    EXPECT_EQ(text.x, 1.5f);
    EXPECT_EQ(text.y, -2.5f);
    EXPECT_EQ(text.scaleX, 1.0f);
    EXPECT_EQ(text.scaleY, 1.0f);
    EXPECT_EQ(text.boxWidth, 100.0f);
    EXPECT_EQ(text.boxHeight, 10.0f);
    EXPECT_THAT(text.color, ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
}

TEST_F(FFontTest, GivesBackWhatTheFaceReturnsAndLeavesItsColourTheCurrentOne) {
    FFont font("face.ttf", 24);
    font.setColor(0.25f, 0.5f, 0.75f, 0.125f);
    EXPECT_EQ(font.drawString("abc", 3.0f, 0.0f, -1.0f, -1.0f), RecordingFont::advance("abc"));
    EXPECT_THAT(gl.color(), ElementsAre(0.25f, 0.5f, 0.75f, 0.125f));
}

TEST_F(FFontTest, ACopyStaysDrawableWhenTheFirstHandleIsGone) {
    {
        auto first = std::make_unique<FFont>("face.ttf", 24);
        FFont copy(*first);
        first.reset();
        EXPECT_EQ(facesOfThisTest(), 1);
        copy.drawString("still here", 0.0f, 0.0f, -1.0f, -1.0f);
        EXPECT_EQ(recorded.texts().size(), 1u);
    }
    EXPECT_EQ(facesOfThisTest(), 0);
}

TEST_F(FFontTest, ACopyTakesOverScaleAndColourAndThenGoesItsOwnWay) {
    FFont first("face.ttf", 24);
    first.setScale(2.0f, 3.0f);
    first.setColor(0.5f, 0.5f, 0.5f, 0.5f);
    FFont constructed(first);
    const FFont faceless(nullptr, 24);
    FFont assigned(faceless);
    EXPECT_EQ(facesOfThisTest(), 1);
    assigned = first;
    first.setScale(9.0f, 9.0f);
    first.setColor(0.0f, 0.0f, 0.0f, 0.0f);

    for (FFont* copy : {&constructed, &assigned}) {
        recorded.forget();
        copy->drawString("x", 0.0f, 0.0f, -1.0f, -1.0f);
        const RecordingFont::Text& text = recorded.texts().at(0);
        EXPECT_EQ(text.scaleX, 2.0f);
        EXPECT_EQ(text.scaleY, 3.0f);
        EXPECT_THAT(text.color, ElementsAre(0.5f, 0.5f, 0.5f, 0.5f));
    }
    EXPECT_EQ(facesOfThisTest(), 1);
}

TEST_F(FFontTest, AssignmentFreesTheFaceThatNobodyElseHoldsAndToItselfChangesNothing) {
    {
        FFont font("one.ttf", 24);
        font = FFont("other.ttf", 24);
        EXPECT_EQ(facesOfThisTest(), 1);
        font.setScale(2.0f, 3.0f);
        const FFont& itself = font;
        font = itself;
        EXPECT_EQ(facesOfThisTest(), 1);
        font.drawString("x", 0.0f, 0.0f, -1.0f, -1.0f);
        EXPECT_EQ(recorded.texts().at(0).scaleY, 3.0f);
    }
    EXPECT_EQ(facesOfThisTest(), 0);
}

}  // namespace
