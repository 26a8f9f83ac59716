#include "tools/common/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tools/common/JsonWriter.h"

TEST(Text, FixedNumbersRoundAndLoseTheSignOfNothing) {
    EXPECT_EQ(fixed(1.005, 1), "1.0");
    EXPECT_EQ(fixed(-2.25, 1), "-2.2");
    EXPECT_EQ(fixed(-0.004, 2), "0.00");
    EXPECT_EQ(fixed(12.0, 0), "12");
}

TEST(Text, IllFormedBytesBecomeReplacementCharacters) {
    EXPECT_EQ(cleanUtf8("h\u00E9\u266F\U0001D11E"), "h\u00E9\u266F\U0001D11E");
    EXPECT_EQ(cleanUtf8("a\xFF"
                        "b\xC3"),
              "a\uFFFDb\uFFFD");
    EXPECT_EQ(cleanUtf8("\xC0\x80"), "\uFFFD\uFFFD");            // an overlong form
    EXPECT_EQ(cleanUtf8("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");  // half of a surrogate pair
}

TEST(Text, QuotesShowControlCharactersAndEndInTimeAndPaddingCountsCharacters) {
    EXPECT_EQ(quoted("a\tb\r\n\x01"), "\"a\\tb\\r\\n\\x01\"");
    EXPECT_EQ(quoted("\xFF\u00E9"), "\"\\xFF\u00E9\"");
    EXPECT_EQ(quoted(std::string(40, 'x')), "\"" + std::string(40, 'x') + "\"");
    EXPECT_EQ(quoted(std::string(41, 'x')), "\"" + std::string(40, 'x') + "...\"");
    EXPECT_EQ(characterCount("h\u00E9\U0001D11E\xFF\xC3"), 5u);
    EXPECT_EQ(padRight("\u266F", 3), "\u266F  ");
    EXPECT_EQ(padLeft("\u266F", 3), "  \u266F");
    EXPECT_EQ(padLeft("long", 3), "long");
}

TEST(JsonWriter, NestsAndEscapesAndWritesNullForWhatIsNoNumber) {
    JsonWriter json;
    json.openObject().key("a \"b\"").value("c\\\n\x02").key("list").openArray();
    json.value(1).value(2.5, 2).value(true).value(std::numeric_limits<double>::infinity(), 1);
    json.value(std::nan(""), 1).null().close();
    json.key("none").openObject().close().close();
    EXPECT_EQ(json.text(),
              "{\n  \"a \\\"b\\\"\": \"c\\\\\\u000a\\u0002\",\n  \"list\": [\n    1,\n    2.50,\n    true,\n"
              "    null,\n    null,\n    null\n"
              "  ],\n  \"none\": {}\n}");
}
