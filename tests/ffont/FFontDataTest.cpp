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
const float emAt24 = 0.6F;
const float rounding = 1e-5F;

std::string printedWhen(const std::function<void()>& action) {
    testing::internal::CaptureStderr();
    action();
    return testing::internal::GetCapturedStderr();
}

}  // namespace

TEST(FFontData, WithoutAPathOrASizeNothingIsLoaded) {
    const std::string printed = printedWhen([] {
        for (const FFontData* face :
             {new FFontData(nullptr, 24), new FFontData(vera, 0), new FFontData(nullptr, 0)}) {
            EXPECT_EQ(face->measureString("text", 1.0F), 0.0F);
            EXPECT_EQ(face->lineHeight(), 0.0F);
            delete face;
        }
    });
    EXPECT_EQ(printed, "");
}

TEST(FFontData, RecordsItsSize) {
    EXPECT_EQ(FFontData(vera, 24).getSize(), 24u);
    EXPECT_EQ(FFontData(nullptr, 7).getSize(), 7u);
}

TEST(FFontData, Size24HasAnEmOfThreeFifthsOfAUnit) {
    const FFontData face(vera, 24);
    EXPECT_NEAR(face.measureString("A", 1.0F), emAt24 * 1401 / 2048, rounding);
    EXPECT_NEAR(face.ascender(), emAt24 * 1901 / 2048, rounding);
    EXPECT_NEAR(face.descender(), -emAt24 * 483 / 2048, rounding);
    EXPECT_NEAR(face.lineHeight(), emAt24 * 2384 / 2048, rounding);
}

TEST(FFontData, LengthsGrowWithSizeAndScale) {
    const FFontData face(vera, 24);
    const FFontData doubled(vera, 48);
    EXPECT_FLOAT_EQ(doubled.measureString("Score", 1.0F), 2 * face.measureString("Score", 1.0F));
    EXPECT_FLOAT_EQ(face.measureString("Score", 0.5F), face.measureString("Score", 1.0F) / 2);
    EXPECT_FLOAT_EQ(doubled.lineHeight(), 2 * face.lineHeight());
}

TEST(FFontData, KernedPairsAreNarrowerThanTheirLetters) {
    const FFontData face(vera, 24);
    const float apart = face.measureString("A", 1.0F) + face.measureString("V", 1.0F);
    EXPECT_NEAR(face.measureString("AV", 1.0F), apart - emAt24 * 131 / 2048, rounding);
    EXPECT_FLOAT_EQ(face.measureString("HH", 1.0F), 2 * face.measureString("H", 1.0F));
}

TEST(FFontData, EmptyTextAndNoTextHaveNoWidth) {
    const FFontData face(vera, 24);
    EXPECT_EQ(face.measureString("", 1.0F), 0.0F);
    EXPECT_EQ(face.measureString(nullptr, 1.0F), 0.0F);
}

TEST(FFontData, AccentedLettersAreOneGlyph) {
    const FFontData face(vera, 24);
    EXPECT_FLOAT_EQ(face.measureString("\xC3\xA9", 1.0F), face.measureString("e", 1.0F));
}

TEST(FFontData, MissingCharactersAndBadBytesHaveTheWidthOfABox) {
    const FFontData face(vera, 24);
    const float box = face.measureString("\xE4\xB8\xAD", 1.0F);
    EXPECT_GT(box, 0.0F);
    EXPECT_FLOAT_EQ(face.measureString("\xFF", 1.0F), box);
    EXPECT_FLOAT_EQ(face.measureString("\xC0\x80", 1.0F), 2 * box);
}

TEST(FFontData, StyleFactorsStartAtOneAndScaleWhatTheyName) {
    FFontData face(vera, 24);
    const float width = face.measureString("AV", 1.0F);
    const float apart = face.measureString("A", 1.0F) + face.measureString("V", 1.0F);
    const float height = face.ascender();
    TextStyle style;
    face.setStyle(style);
    EXPECT_EQ(face.measureString("AV", 1.0F), width);
    style.kerning = 0.0F;
    face.setStyle(style);
    EXPECT_FLOAT_EQ(face.measureString("AV", 1.0F), apart);
    style.spacing = 1.5F;
    face.setStyle(style);
    EXPECT_FLOAT_EQ(face.measureString("AV", 1.0F), 1.5F * apart);
    style.width = 2.0F;
    face.setStyle(style);
    EXPECT_FLOAT_EQ(face.measureString("AV", 1.0F), 3.0F * apart);
    EXPECT_EQ(face.ascender(), height);
    style.height = 2.0F;
    face.setStyle(style);
    EXPECT_FLOAT_EQ(face.ascender(), 2.0F * height);
}

TEST(FFontData, ShortensOnlyWhatIsTooWide) {
    const FFontData face(vera, 24);
    const float whole = face.measureString("Twinkle, Twinkle", 0.5F);
    EXPECT_EQ(face.shortenString("Twinkle, Twinkle", 0.5F, whole), "Twinkle, Twinkle");
    EXPECT_EQ(face.shortenString("Twinkle, Twinkle", 0.5F, whole * 0.999F), "Twinkle, Twin\xE2\x80\xA6");
    EXPECT_EQ(face.shortenString("", 0.5F, 0.0F), "");
    EXPECT_EQ(face.shortenString(nullptr, 0.5F, 1.0F), "");
}

TEST(FFontData, ShortenedTextIsTheLongestThatFits) {
    const FFontData face(vera, 24);
    const std::string text = "Choose your song";
    const float whole = face.measureString(text.c_str(), 1.0F);
    for (int part = 0; part < 100; ++part) {
        const float width = whole * static_cast<float>(part) / 100;
        const std::string shown = face.shortenString(text.c_str(), 1.0F, width);
        EXPECT_LE(face.measureString(shown.c_str(), 1.0F), width);
        if (shown.empty()) {
            EXPECT_GT(face.measureString("\xE2\x80\xA6", 1.0F), width);
            continue;
        }
        const std::string kept = shown.substr(0, shown.size() - 3);
        EXPECT_EQ(text.compare(0, kept.size(), kept), 0);
        const bool blankIsNext = text[kept.size()] == ' ';
        const std::string longer = text.substr(0, kept.size() + (blankIsNext ? 2 : 1)) + "\xE2\x80\xA6";
        EXPECT_GT(face.measureString(longer.c_str(), 1.0F), width) << shown;
    }
}

TEST(FFontData, ShorteningCutsBetweenCharacters) {
    const FFontData face(vera, 24);
    const float width = face.measureString("\xC3\xA9\xC3\xA9\xE2\x80\xA6", 1.0F);
    EXPECT_EQ(face.shortenString("\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9", 1.0F, width + rounding),
              "\xC3\xA9\xC3\xA9\xE2\x80\xA6");
}

TEST(FFontData, ShorteningLeavesNoBlankBeforeTheEllipsis) {
    const FFontData face(vera, 24);
    const float width = face.measureString("ab \xE2\x80\xA6", 1.0F);
    EXPECT_EQ(face.shortenString("ab WWWW", 1.0F, width), "ab\xE2\x80\xA6");
}

TEST(FFontData, NothingFitsAWidthThatIsNoNumber) {
    const FFontData face(vera, 24);
    EXPECT_EQ(face.shortenString("text", 1.0F, std::numeric_limits<float>::quiet_NaN()), "");
}

TEST(FFontData, WithoutAFaceShorteningHasNothingToGoBy) {
    EXPECT_EQ(FFontData(nullptr, 24).shortenString("text", 1.0F, -1.0F), "text");
}

TEST(FFontData, ReportsAMissingFileOnceWithPathAndReason) {
    const TemporaryFolder folder;
    const std::string first = printedWhen([] { FFontData("no/such/font.ttf", 24); });
    EXPECT_EQ(first, "Cannot read font no/such/font.ttf: No such file or directory\n");
    EXPECT_EQ(printedWhen([] { FFontData("no/such/font.ttf", 12); }), "");
    EXPECT_THAT(printedWhen([] { FFontData("no/other/font.ttf", 24); }), HasSubstr("no/other/font.ttf"));
}

TEST(FFontData, ReportsAFolderAndAFileThatIsNoFont) {
    const TemporaryFolder folder;
    folder.write("notes.ttf", "C 261.63\n");
    EXPECT_EQ(printedWhen([] { FFontData(".", 24); }), "Cannot read font .: Is a directory\n");
    EXPECT_THAT(printedWhen([] { FFontData("notes.ttf", 24); }), HasSubstr("Cannot read font notes.ttf: "));
}

TEST(FFontData, WithoutAFaceNothingIsDrawnOrMoved) {
    FFontData face(nullptr, 24);
    float x = 1.0F;
    float y = 2.0F;
    EXPECT_EQ(face.drawString("text", x, y, 1.0F, 1.0F, -1.0F, -1.0F), 0.0F);
    EXPECT_EQ(x, 1.0F);
    EXPECT_EQ(y, 2.0F);
}

TEST(FFontData, DrawingWithoutAContextStillAdvances) {
    FFontData face(vera, 24);
    const std::string printed = printedWhen([&] {
        float x = 1.0F;
        float y = 2.0F;
        const float advance = face.drawString("Score", x, y, 0.8F, 0.3F, 100.0F, 10.0F);
        EXPECT_EQ(advance, face.measureString("Score", 0.8F));
        EXPECT_EQ(x, 1.0F + advance);
        EXPECT_EQ(y, 2.0F);
        EXPECT_EQ(face.drawString(nullptr, x, y, 1.0F, 1.0F, -1.0F, -1.0F), 0.0F);
    });
    EXPECT_EQ(printed, "");
}

TEST(FFontData, ReleaseLeavesNothingToDrawWith) {
    FFontData face(vera, 24);
    face.release();
    EXPECT_EQ(face.getSize(), 0u);
    float x = 1.0F;
    float y = 2.0F;
    EXPECT_EQ(face.drawString("text", x, y, 1.0F, 1.0F, -1.0F, -1.0F), 0.0F);
    EXPECT_EQ(x, 1.0F);
    face.release();
}

TEST(FFontData, InitLoadsAgainInPlaceOfTheFaceBefore) {
    FFontData face(vera, 24);
    const float width = face.measureString("text", 1.0F);
    face.init(vera, 48);
    EXPECT_EQ(face.getSize(), 48u);
    EXPECT_FLOAT_EQ(face.measureString("text", 1.0F), 2 * width);
    face.init(nullptr, 48);
    EXPECT_EQ(face.measureString("text", 1.0F), 0.0F);
    face.release();
    face.init(vera, 24);
    EXPECT_EQ(face.measureString("text", 1.0F), width);
}
