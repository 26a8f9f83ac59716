#include "tools/zanto-song/TakePage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>
#include <vector>

namespace {

using testing::HasSubstr;

ShownTake shownTake(const std::string& name) {
    ShownTake shown;
    shown.named.recording = name;
    shown.named.take.slotCount = 2;
    shown.named.take.score = 80.0;
    shown.named.take.notes = {
        {0, 0, 1, TakenNote::Outcome::awarded, 1.75, 1.738, 0.23, 0.225, 2.0, 100.0, {}, -10.0}};
    shown.named.take.penalties = {{1, 0, TakenPenalty::Cause::heldOver, 0, 2.5, 0.36, -20.0, {}}};
    return shown;
}

std::vector<std::string> tagsOf(const std::string& html) {
    const std::regex tag("<(/?[a-z0-9]+)[^>]*?(/?)>");
    std::vector<std::string> tags;
    for (std::sregex_iterator found(html.begin(), html.end(), tag), end; found != end; ++found) {
        if ((*found)[2].length() == 0 && (*found)[1] != "meta") {
            tags.push_back((*found)[1]);
        }
    }
    return tags;
}

}  // namespace

// How it looks and what its script does is tested in a browser.
TEST(TakePage, IsWholeInItselfWithARowAndASectionForEachTake) {
    ShownTake first = shownTake("folder/\"a\" & <b>.wav");
    first.advice = {{"Let go of notes sooner: 1 penalty", 20.0}};
    first.sound = "data:audio/mpeg;base64,AAAA";
    ShownTake second = shownTake("c.wav");
    second.named.take.notes.clear();
    const std::string html = htmlReport("A & B", {first, second});
    for (const char* const part :
         {"<title>A &amp; B</title>", "<td data-value=\"1\">1 of 1</td>",
          "<th scope=\"row\" data-value=\"&quot;a&quot; &amp; &lt;b&gt;.wav\"><a href=\"#take-1\">",
          "<td data-value=\"0.0120\">12 ms early, ± 0 ms</td>", "<td data-value=\"\">not heard</td>",
          "+20</span> Let go of notes sooner: 1 penalty</li>", "src=\"data:audio/mpeg;base64,AAAA\"",
          "<section id=\"take-2\">", "Nothing: no single change would have earned more."}) {
        EXPECT_THAT(html, HasSubstr(part));
    }
    EXPECT_FALSE(std::regex_search(html, std::regex("(src|href|url)[=(]\"?(https?:|//|file:)")));

    std::vector<std::string> open;
    for (const std::string& tag : tagsOf(html.substr(0, html.find("<script>")))) {
        if (tag.front() != '/') {
            open.push_back(tag);
            continue;
        }
        ASSERT_FALSE(open.empty());
        ASSERT_EQ("/" + open.back(), tag);
        open.pop_back();
    }
    EXPECT_THAT(open, testing::ElementsAre("html", "body"));
}
