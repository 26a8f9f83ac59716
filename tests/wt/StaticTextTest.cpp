#include "platform/wt/wtStaticText.h"

#include "platform/wt/Text.h"
#include "tests/wt/Stage.h"

namespace {

constexpr int centred = 0x24;

using StaticTextTest = Stage;

TEST_F(StaticTextTest, GivesItsTextBackAndOfAGivenWidthAsksForTheSameWhateverTheText) {
    wt::wtStaticText text(nullptr, "text", {0, 0}, {0.6f, 0.1f}, "", centred);
    const wt::SizeHint before = text.sizeHint();
    EXPECT_EQ(text.getText(), "");
    text.setText("440 880 1320 1760 ");
    EXPECT_EQ(text.getText(), "440 880 1320 1760 ");
    EXPECT_EQ(text.sizeHint().preferred, before.preferred);
    EXPECT_EQ(text.flags(), wt::wtWidget::expandX);
}

TEST_F(StaticTextTest, SizeOfMinusOneComesFromTheText) {
    const wt::wtStaticText brief(nullptr, "brief", {0, 0}, {-1, -1}, "A", centred);
    const wt::wtStaticText wordy(nullptr, "wordy", {0, 0}, {-1, -1}, "A line of text", centred);
    EXPECT_GT(wordy.sizeHint().preferred.x, brief.sizeHint().preferred.x);
    const float em = wt::screen().emPixels();
    EXPECT_GE(wordy.sizeHint().preferred.x / wt::screen().pixelX(), wt::text::width("A line of text", em));
    EXPECT_GE(wordy.sizeHint().preferred.y / wt::screen().pixelY(), wt::text::height(em));
}

TEST_F(StaticTextTest, AsksForTheHeightOfItsLineWhateverItWasGiven) {
    const float line = wt::text::height(wt::screen().emPixels());
    for (const float height : {0.001f, 0.1f, 1.0f}) {
        const wt::wtStaticText text(nullptr, "text", {0, 0}, {0.6f, height}, "A", centred);
        EXPECT_NEAR(text.sizeHint().least.y / wt::screen().pixelY(), line, 1);
        EXPECT_NEAR(text.sizeHint().preferred.y / wt::screen().pixelY(), line, 1);
    }
}

TEST_F(StaticTextTest, TextIsMeasuredInPixelsInProportionToItsEm) {
    // The sum of the letters' advances in the face's own table, in 2048ths of an em.
    EXPECT_NEAR(wt::text::width("Choose your song", 14), 14 * 18386.0 / 2048, 0.001);
    EXPECT_NEAR(wt::text::width("Choose your song", 28), 2 * wt::text::width("Choose your song", 14), 1);
    EXPECT_EQ(wt::text::width("", 14), 0);
}

TEST_F(StaticTextTest, TooLongTextIsShortenedToItsRoomWithAnEllipsis) {
    const std::string text = "Fr\u00e8re_Jacques_dans_la_for\u00eat";
    EXPECT_EQ(wt::text::shortened(text, 14, 1000), text);
    const std::string shorter = wt::text::shortened(text, 14, 100);
    EXPECT_LT(shorter.size(), text.size());
    EXPECT_NE(shorter.find("\u2026"), std::string::npos);
    EXPECT_LE(wt::text::width(shorter, 14), 100);
    EXPECT_EQ(wt::text::shortened(text, 14, 1), "");
}

}  // namespace
