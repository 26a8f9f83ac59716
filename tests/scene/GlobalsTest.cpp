#include "scene/Globals.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

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

TEST_F(GlobalsTest, TheDefaultFontIsAtScaleOneAndScoreFontsAreIndependentHandlesOnOneFaceAtHalfScale) {
    Globals& globals = Globals::getInstance();
    const int facesBefore = RecordingFont::facesAlive();
    FFont one = globals.getScoreFont();
    FFont other = globals.getScoreFont();
    EXPECT_EQ(RecordingFont::facesAlive(), facesBefore);

    one.setColor(1.0f, 0.0f, 0.0f, 1.0f);
    one.setScale(4.0f, 4.0f);
    FFont& common = globals.getDefaultFont();
    EXPECT_EQ(&common, &globals.getDefaultFont());
    for (const auto& [font, scale] : {std::pair(&other, 0.5f), {&common, 1.0f}}) {
        const RecordingFont::Text text = written(*font);
        EXPECT_EQ(text.scaleX, scale);
        EXPECT_EQ(text.scaleY, scale);
        EXPECT_THAT(text.color, ElementsAre(1.0f, 1.0f, 1.0f, 1.0f));
    }
}

}  // namespace
