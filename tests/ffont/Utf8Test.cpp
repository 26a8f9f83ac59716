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

TEST(Utf8, DecodesTheFirstAndLastCharacterOfEveryLength) {
    EXPECT_THAT(decode("\x01\x7F"), ElementsAre(0x01, 0x7F));
    EXPECT_THAT(decode("\xC2\x80\xDF\xBF"), ElementsAre(0x80, 0x7FF));
    EXPECT_THAT(decode("\xE0\xA0\x80\xEF\xBF\xBF"), ElementsAre(0x800, 0xFFFF));
    EXPECT_THAT(decode("\xED\x9F\xBF\xEE\x80\x80"), ElementsAre(0xD7FF, 0xE000)) << "around the surrogates";
    EXPECT_THAT(decode("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), ElementsAre(0x10000, 0x10FFFF));
}

TEST(Utf8, EveryByteOfWhatIsNoCharacterIsInvalid) {
    for (const char* const bytes : {
             "\xED\xA0\x80", "\xED\xBF\xBF", "\xED\xA0\xB4\xED\xB4\x9E",  // surrogates
             "\xC0\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",  // too long for what they say
             "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xFE\xFF", "\x80\xBF\x80",  // too large; not a start
             "\xC3", "\xE4\xB8", "\xF0\x9D\x84"                                   // cut off
         }) {
        expectAllInvalid(bytes);
    }
}

TEST(Utf8, GoesOnWithTheByteThatBreaksASequence) {
    EXPECT_THAT(decode("\xE4(\xC3\xA9"), ElementsAre(replacementCharacter, U'(', 0xE9));
    EXPECT_THAT(decode("\xFFZ"), ElementsAre(replacementCharacter, U'Z'));
}
