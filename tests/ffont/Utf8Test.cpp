#include "platform/ffont/Utf8.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

namespace {

std::vector<char32_t> decode(const std::string& bytes) {
    std::vector<char32_t> characters;
    const char* text = bytes.c_str();
    while (const char32_t character = nextCharacter(text)) {
        characters.push_back(character);
    }
    EXPECT_EQ(text, bytes.c_str() + bytes.size());
    return characters;
}

// One replacement for each byte.
void expectAllInvalid(const std::string& bytes) {
    const std::vector<char32_t> characters = decode(bytes);
    EXPECT_THAT(characters, SizeIs(bytes.size()));
    EXPECT_THAT(characters, Each(replacementCharacter));
}

}  // namespace

TEST(Utf8, EmptyTextHasNoCharacter) {
    const char* text = "";
    const char* before = text;
    EXPECT_EQ(nextCharacter(text), 0u);
    EXPECT_EQ(text, before);
}

TEST(Utf8, DecodesEveryLength) {
    EXPECT_THAT(decode("A\xC3\xA9\xE4\xB8\xAD\xF0\x9D\x84\x9E"), ElementsAre(U'A', 0xE9, 0x4E2D, 0x1D11E));
}

TEST(Utf8, DecodesTheFirstAndLastCharacterOfEveryLength) {
    EXPECT_THAT(decode("\x01\x7F"), ElementsAre(0x01, 0x7F));
    EXPECT_THAT(decode("\xC2\x80\xDF\xBF"), ElementsAre(0x80, 0x7FF));
    EXPECT_THAT(decode("\xE0\xA0\x80\xEF\xBF\xBF"), ElementsAre(0x800, 0xFFFF));
    EXPECT_THAT(decode("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), ElementsAre(0x10000, 0x10FFFF));
}

TEST(Utf8, DecodesTheNeighboursOfTheSurrogates) {
    EXPECT_THAT(decode("\xED\x9F\xBF\xEE\x80\x80"), ElementsAre(0xD7FF, 0xE000));
}

TEST(Utf8, SurrogatesAreInvalid) {
    expectAllInvalid("\xED\xA0\x80");
    expectAllInvalid("\xED\xBF\xBF");
    expectAllInvalid("\xED\xA0\xB4\xED\xB4\x9E");
}

TEST(Utf8, OverlongFormsAreInvalid) {
    expectAllInvalid("\xC0\x80");
    expectAllInvalid("\xC1\xBF");
    expectAllInvalid("\xE0\x9F\xBF");
    expectAllInvalid("\xF0\x8F\xBF\xBF");
}

TEST(Utf8, NothingIsAboveTheLastCharacter) {
    expectAllInvalid("\xF4\x90\x80\x80");
    expectAllInvalid("\xF5\x80\x80\x80");
    expectAllInvalid("\xFE\xFF");
}

TEST(Utf8, StrayContinuationBytesAreInvalid) {
    expectAllInvalid("\x80\xBF\x80");
}

TEST(Utf8, CutOffSequencesAreInvalidAndReadNoFurther) {
    expectAllInvalid("\xC3");
    expectAllInvalid("\xE4\xB8");
    expectAllInvalid("\xF0\x9D\x84");
}

TEST(Utf8, GoesOnWithTheByteThatBreaksASequence) {
    EXPECT_THAT(decode("\xE4(\xC3\xA9"), ElementsAre(replacementCharacter, U'(', 0xE9));
    EXPECT_THAT(decode("\xFFZ"), ElementsAre(replacementCharacter, U'Z'));
}
