#include "scene/Globals.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

using testing::ElementsAre;

namespace {

class GlobalsTest : public testing::Test {
protected:
    RecordingFont::Text written(FFont& font) {
        recorded.forget();
        font.drawString("x", 0.0f, 0.0f, -1.0f, -1.0f);
        return recorded.texts().at(0);
    }

    RecordingGL gl;
    RecordingFont recorded;
};

TEST_F(GlobalsTest, ThereIsOneInstanceWithOneFaceVeraAtSize24) {
    EXPECT_EQ(&Globals::getInstance(), &Globals::getInstance());
    const auto isVera = [](const RecordingFont::Face& face) {
        return face.path == "Fonts/Vera.ttf" && face.size == 24;
    };
    const auto& made = RecordingFont::facesMade();
    EXPECT_EQ(std::count_if(made.begin(), made.end(), isVera), 1);
}

TEST_F(GlobalsTest, TheDefaultFontIsWhiteAtScaleOneAndHandedOutByReference) {
    EXPECT_EQ(&Globals::getInstance().getDefaultFont(), &Globals::getInstance().getDefaultFont());
    const RecordingFont::Text text = written(Globals::getInstance().getDefaultFont());
    EXPECT_EQ(text.scaleX, 1.0f);
    EXPECT_EQ(text.scaleY, 1.0f);
    EXPECT_THAT(text.color, ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
}

TEST_F(GlobalsTest, ScoreFontsAreIndependentHandlesOnOneFaceAtHalfScale) {
    Globals& globals = Globals::getInstance();
    const int facesBefore = RecordingFont::facesAlive();
    FFont one = globals.getScoreFont();
    FFont other = globals.getScoreFont();
    EXPECT_EQ(RecordingFont::facesAlive(), facesBefore);

    one.setColor(1.0f, 0.0f, 0.0f, 1.0f);
    one.setScale(4.0f, 4.0f);
    const RecordingFont::Text text = written(other);
    EXPECT_EQ(text.scaleX, 0.5f);
    EXPECT_EQ(text.scaleY, 0.5f);
    EXPECT_THAT(text.color, ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
    EXPECT_EQ(written(globals.getDefaultFont()).scaleX, 1.0f);
}

}  // namespace
