// What a face does without an OpenGL context: measure, shorten, report, and stay harmless.

#include "platform/ffont/FFontData.h"

#include <functional>
#include <limits>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"

using testing::HasSubstr;

namespace {

const char* const vera = "Fonts/Vera.ttf";
const float emAt24 = 0.6f;
const float rounding = 1e-5F;

std::string printedWhen(const std::function<void()>& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(FFontData, Size24HasAnEmOfThreeFifthsOfAUnitAndLengthsGrowWithSizeAndScale) {
    const FFontData face(vera, 24);
    EXPECT_NEAR(face.measureString("A", 1.0f), emAt24 * 1401 / 2048, rounding);
    EXPECT_NEAR(face.ascender(), emAt24 * 1901 / 2048, rounding);
    EXPECT_NEAR(face.descender(), -emAt24 * 483 / 2048, rounding);
    const FFontData doubled(vera, 48);
    EXPECT_FLOAT_EQ(doubled.measureString("Score", 1.0f), 2 * face.measureString("Score", 1.0f));
    EXPECT_FLOAT_EQ(face.measureString("Score", 0.5f), face.measureString("Score", 1.0f) / 2);
    EXPECT_FLOAT_EQ(doubled.ascender(), 2 * face.ascender());
}

TEST(FFontData, KernedPairsAreNarrowerThanTheirLetters) {
    const FFontData face(vera, 24);
    const float apart = face.measureString("A", 1.0f) + face.measureString("V", 1.0f);
    EXPECT_NEAR(face.measureString("AV", 1.0f), apart - emAt24 * 131 / 2048, rounding);
    EXPECT_FLOAT_EQ(face.measureString("HH", 1.0f), 2 * face.measureString("H", 1.0f));
}

TEST(FFontData, EveryCharacterIsOneGlyphAndMissingOnesAndBadBytesHaveTheWidthOfABox) {
    const FFontData face(vera, 24);
    EXPECT_EQ(face.measureString("", 1.0f), 0.0f);
    EXPECT_EQ(face.measureString(nullptr, 1.0f), 0.0f);
    EXPECT_FLOAT_EQ(face.measureString("\xC3\xA9", 1.0f), face.measureString("e", 1.0f));
    const float box = face.measureString("\xE4\xB8\xAD", 1.0f);
    EXPECT_GT(box, 0.0f);
    EXPECT_FLOAT_EQ(face.measureString("\xFF", 1.0f), box);
    EXPECT_FLOAT_EQ(face.measureString("\xC0\x80", 1.0f), 2 * box);
}

TEST(FFontData, StyleFactorsStartAtOneAndScaleWhatTheyName) {
    FFontData face(vera, 24);
    const float width = face.measureString("AV", 1.0f);
    const float apart = face.measureString("A", 1.0f) + face.measureString("V", 1.0f);
    const float height = face.ascender();
    TextStyle style;
    const auto expectSize = [&](float expectedWidth, float expectedHeight) {
        face.setStyle(style);
        EXPECT_FLOAT_EQ(face.measureString("AV", 1.0f), expectedWidth);
        EXPECT_FLOAT_EQ(face.ascender(), expectedHeight);
    };
    expectSize(width, height);
    style.kerning = 0.0f;
    expectSize(apart, height);
    style.spacing = 1.5f;
    expectSize(1.5f * apart, height);
    style.width = 2.0f;
    expectSize(3.0f * apart, height);
    style.height = 2.0f;
    expectSize(3.0f * apart, 2.0f * height);
}

TEST(FFontData, ShortenedTextIsTheLongestThatFits) {
    const FFontData face(vera, 24);
    const std::string text = "Choose your song";
    const float whole = face.measureString(text.c_str(), 1.0f);
    EXPECT_EQ(face.shortenString(text.c_str(), 1.0f, whole), text);
    for (int part = 0; part < 100; ++part) {
        const float width = whole * static_cast<float>(part) / 100;
        const std::string shown = face.shortenString(text.c_str(), 1.0f, width);
        EXPECT_LE(face.measureString(shown.c_str(), 1.0f), width);
        if (shown.empty()) {
            EXPECT_GT(face.measureString("\xE2\x80\xA6", 1.0f), width);
            continue;
        }
        const std::string kept = shown.substr(0, shown.size() - 3);
        EXPECT_EQ(text.compare(0, kept.size(), kept), 0);
        const bool blankIsNext = text[kept.size()] == ' ';
        const std::string longer = text.substr(0, kept.size() + (blankIsNext ? 2 : 1)) + "\xE2\x80\xA6";
        EXPECT_GT(face.measureString(longer.c_str(), 1.0f), width) << shown;
    }
}

TEST(FFontData, ShorteningCutsBetweenCharacters) {
    const FFontData face(vera, 24);
    const float width = face.measureString("\xC3\xA9\xC3\xA9\xE2\x80\xA6", 1.0f);
    EXPECT_EQ(face.shortenString("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", 1.0f, width + rounding),
              "\xC3\xA9\xC3\xA9\xE2\x80\xA6");
}

TEST(FFontData, ShorteningLeavesNoBlankBeforeTheEllipsisAndFitsNothingIntoNoNumber) {
    const FFontData face(vera, 24);
    const float width = face.measureString("ab \xE2\x80\xA6", 1.0f);
    EXPECT_EQ(face.shortenString("ab WWWW", 1.0f, width), "ab\xE2\x80\xA6");
    EXPECT_EQ(face.shortenString("text", 1.0f, std::numeric_limits<float>::quiet_NaN()), "");
    EXPECT_EQ(face.shortenString("", 1.0f, 0.0f), "");
    EXPECT_EQ(face.shortenString(nullptr, 1.0f, 1.0f), "");
}

TEST(FFontData, ReportsAFileThatIsNoFontOnceWithPathAndReason) {
    const TemporaryFolder folder;
    const std::string first = printedWhen([] { FFontData("no/such/font.ttf", 24); });
    EXPECT_EQ(first, "Cannot read font no/such/font.ttf: No such file or directory\n");
    EXPECT_EQ(printedWhen([] { FFontData("no/such/font.ttf", 12); }), "");
    folder.write("notes.ttf", "C 261.63\n");
    EXPECT_THAT(printedWhen([] { FFontData("notes.ttf", 24); }), HasSubstr("Cannot read font notes.ttf: "));
}

TEST(FFontData, DrawingWithoutAContextStillAdvances) {
    FFontData face(vera, 24);
    const std::string printed = printedWhen([&] {
        float x = 1.0f;
        float y = 2.0f;
        const float advance = face.drawString("Score", x, y, 0.8f, 0.3f, 100.0f, 10.0f);
        EXPECT_EQ(advance, face.measureString("Score", 0.8f));
        EXPECT_EQ(x, 1.0f + advance);
        EXPECT_EQ(y, 2.0f);
        EXPECT_EQ(face.drawString(nullptr, x, y, 1.0f, 1.0f, -1.0f, -1.0f), 0.0f);
    });
    EXPECT_EQ(printed, "");
}

TEST(FFontData, WithoutAPathOrASizeOrAfterReleaseNothingIsLoadedDrawnMovedOrShortened) {
    FFontData released(vera, 24);
    released.release();
    EXPECT_EQ(released.getSize(), 0u);
    const std::string printed = printedWhen([&] {
        FFontData pathless(nullptr, 7);
        FFontData sizeless(vera, 0);
        EXPECT_EQ(pathless.getSize(), 7u);
        for (FFontData* face : {&released, &pathless, &sizeless}) {
            EXPECT_EQ(face->measureString("text", 1.0f), 0.0f);
            EXPECT_EQ(face->ascender(), 0.0f);
            float x = 1.0f;
            float y = 2.0f;
            EXPECT_EQ(face->drawString("text", x, y, 1.0f, 1.0f, -1.0f, -1.0f), 0.0f);
            EXPECT_EQ(x, 1.0f);
            EXPECT_EQ(y, 2.0f);
            EXPECT_EQ(face->shortenString("text", 1.0f, -1.0f), "text");
            face->release();
        }
    });
    EXPECT_EQ(printed, "");
}

TEST(FFontData, InitLoadsAgainInPlaceOfTheFaceBefore) {
    FFontData face(vera, 24);
    EXPECT_EQ(face.getSize(), 24u);
    const float width = face.measureString("text", 1.0f);
    face.init(vera, 48);
    EXPECT_EQ(face.getSize(), 48u);
    EXPECT_FLOAT_EQ(face.measureString("text", 1.0f), 2 * width);
    face.init(nullptr, 48);
    EXPECT_EQ(face.measureString("text", 1.0f), 0.0f);
    face.release();
    face.init(vera, 24);
    EXPECT_EQ(face.measureString("text", 1.0f), width);
}
