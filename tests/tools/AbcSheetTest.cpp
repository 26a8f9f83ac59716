#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/tools/NotesOf.h"
#include "tests/tools/Outcome.h"
#include "tools/zanto-song/SheetMusic.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A tune in C with quarter notes, four to the bar, unless `header` says otherwise.
SheetMusic tune(const std::string& body, const std::string& header = "") {
    return readAbc("X:1\nM:4/4\nL:1/4\n" + header + "K:C\n" + body + "\n", "");
}

// The pitches of the first voice, one after the other.
std::string pitches(const SheetMusic& sheet) {
    std::string all;
    for (const SheetNote& note : sheet.voices.at(0).notes) {
        all += std::to_string(note.pitch) + " ";
    }
    return all;
}

std::vector<std::string> first(const SheetMusic& sheet) {
    return notesOf(sheet.voices.at(0));
}

}  // namespace

TEST(AbcSheet, ATuneWithItsTempoKeyAndPlaces) {
    const SheetMusic sheet = readAbc("X:1\nT:Tune\nM:3/4\nQ:1/8=180\nL:1/4\nK:G\nD|G2 A|F [Gd]2|]\n", "");
    ASSERT_EQ(sheet.voices.size(), 1u);
    EXPECT_EQ(sheet.voices[0].name, "Tune");
    EXPECT_DOUBLE_EQ(sheet.quartersPerMinute, 90.0);
    EXPECT_TRUE(sheet.lengthsAreExact);
    EXPECT_THAT(first(sheet), ElementsAre("62@0+100", "67@100+200", "69@300+100", "66@400+100", "67@500+200",
                                          "74@500+200"));
    EXPECT_EQ(sheet.voices[0].notes[0].place, "upbeat");
    EXPECT_EQ(sheet.voices[0].notes[2].place, "bar 1, beat 3");
    EXPECT_EQ(sheet.voices[0].notes[5].place, "bar 2, beat 2");
    EXPECT_THAT(sheet.lost, IsEmpty());
    EXPECT_THAT(sheet.remarks, IsEmpty());
}

TEST(AbcSheet, LengthsTupletsBrokenRhythmsTiesAndOverlays) {
    const std::vector<std::pair<const char*, std::vector<std::string>>> cases = {
        {"C/ D3/2 E// F/4", {"60@0+50", "62@50+150", "64@200+25", "65@225+25"}},
        {"C>D E<<F", {"60@0+150", "62@150+50", "64@200+25", "65@225+175"}},
        {"C z/ x/ y D Z E", {"60@0+100", "62@200+100", "64@700+100"}},
        {"(3CDE F", {"60@0+67", "62@67+67", "64@133+67", "65@200+100"}},
        {"(3:2:2C2D E", {"60@0+133", "62@133+67", "64@200+100"}},
        {"(5:4CDEFG A", {"60@0+80", "62@80+80", "64@160+80", "65@240+80", "67@320+80", "69@400+100"}},
        {"C-C D-|D E", {"60@0+200", "62@200+200", "64@400+100"}},
        {"[CE]-[CE] [C-E][CE]/2", {"60@0+200", "64@0+200", "60@200+150", "64@200+100", "64@300+50"}},
        {"[C2E]/ +GB+", {"60@0+100", "64@0+50", "67@100+100", "71@100+100"}},
        {"(C D) .E .(FG) ~A [|] c'2 $ B,,",
         {"60@0+100", "62@100+100", "64@200+100", "65@300+100", "67@400+100", "69@500+100", "84@600+200",
          "47@800+100"}},
        {"C [L:1/8] D E [M:none] F\nL:1/2\nG",
         {"60@0+100", "62@100+50", "64@150+50", "65@200+50", "67@250+200"}},
    };
    for (const auto& [body, notes] : cases) {
        EXPECT_EQ(first(tune(body)), notes) << body;
    }
    const SheetMusic overlaid = tune("C2 D2 & E4 | F4");
    ASSERT_EQ(overlaid.voices.size(), 2u);
    EXPECT_THAT(notesOf(overlaid.voices[0]), ElementsAre("60@0+200", "62@200+200", "65@400+400"));
    EXPECT_THAT(notesOf(overlaid.voices[1]), ElementsAre("64@0+400"));
    EXPECT_THAT(first(readAbc("X:1\nM:6/8\nL:1/8\nK:C\n(2CD EFG\n", "")),
                ElementsAre("60@0+75", "62@75+75", "64@150+50", "65@200+50", "67@250+50"));
}

TEST(AbcSheet, KeysAndAccidentals) {
    const std::vector<std::pair<const char*, const char*>> keys = {
        {"D", "60 62 64 66 67 69 71 73 "},       {"Eb", "60 62 63 65 67 68 70 72 "},
        {"Ador", "60 62 64 66 67 69 71 72 "},    {"F# minor", "60 62 64 66 68 69 71 73 "},
        {"C ^f _B", "60 62 64 66 67 69 70 72 "}, {"D exp _b", "60 62 64 65 67 69 70 72 "},
        {"HP", "60 62 64 66 67 69 71 73 "},      {"none", "60 62 64 65 67 69 71 72 "},
        {"D bass", "60 62 64 66 67 69 71 73 "},  {"D treble-8", "48 50 52 54 55 57 59 61 "},
    };
    for (const auto& [key, expected] : keys) {
        std::string heard = pitches(tune(std::string("[K:") + key + "] CDEF GABc"));
        // The first letter is a C in each of them, sharp where the last one is.
        heard.replace(0, 2, expected, 2);
        EXPECT_EQ(heard, expected) << key;
    }
    EXPECT_EQ(pitches(tune("^C C c | C _B B =B B")), "61 61 73 60 70 70 71 71 ");
    EXPECT_EQ(pitches(tune("^C-|C C __B ^^A")), "61 60 69 71 ");  // the tie keeps it
    EXPECT_EQ(pitches(tune("^C C c", "I:propagate-accidentals octave\n")), "61 61 72 ");
    EXPECT_EQ(pitches(tune("^C C", "%%propagate-accidentals not\n")), "61 60 ");
}

TEST(AbcSheet, WhatIsForThePlayerIsLeftOutAndCounted) {
    const SheetMusic sheet = tune(
        "%%MIDI program 73\n%%MIDI drum d2zd 38 38\n"
        "\"Am\"~A .B !trill!c +trill+d | {ag}e ^/f Hg \"^slowly\"Ta | {/b}A4 [Q:1/4=99] |]",
        "Q:1/4=120\nU: h = !fermata!\n%%MIDI drumon\n");
    EXPECT_EQ(pitches(sheet), "69 71 72 74 76 79 81 69 ");
    EXPECT_THAT(first(sheet), testing::Contains("74@300+100"));
    EXPECT_THAT(sheet.lost, ElementsAre("4 ornaments", "1 staccato dot", "2 groups of grace notes",
                                        "1 chord symbol", "1 other sign over the notes", "1 quarter tone",
                                        "2 MIDI instructions", "1 tempo change"));
    EXPECT_EQ(sheet.voices.at(0).instrument, "flute");
    EXPECT_THAT(tune("C4|\nV:2 clef=perc\nDEFG|").lost, ElementsAre("4 notes of drums"));
}

TEST(AbcSheet, RepeatsEndingsJumpsAndPartsAreWrittenOut) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"|:C:|D|", "60 60 62 "},
        {"C|:D|E:|F", "60 62 64 62 64 65 "},
        {"C|D:|E|F:|", "60 62 60 62 64 65 64 65 "},
        {"C:|D::E:|", "60 60 62 62 64 64 "},
        {"|:C|1 D:|2 E|F|]", "60 62 60 64 65 "},
        {"|:C [1,3 D :|[2 E :|] F|", "60 62 60 64 60 62 65 "},
        {"|:C|1,2 D:|3 E|F|", "60 62 60 62 60 64 65 "},
        {"C|1 D|E:|2 F||G|A:|", "60 62 64 60 65 67 69 67 69 "},
        {"|:C|[\"1.\" D:|[\"2.\" E|]", "60 62 60 64 "},
        {"|::C::|D", "60 60 60 62 "},
        {"C||D:|E", "60 62 62 64 "},
        {"C|!fine!D|E|!D.C.!F|]", "60 62 64 65 60 62 "},
        {"C|\"Fine\"D|E F!D.C.!|]", "60 62 64 65 60 62 "},
        {"C|SD!fine!|E|F!D.S.!|]", "60 62 64 65 62 "},
        {"C|D O|E \"D.C. al Coda\"|OF|G|]", "60 62 64 60 62 65 67 "},
        {"C|D|!coda!E !D.C.!|!coda!F|", "60 62 64 60 62 65 "},
        {"C|D \"To Coda\"|E \"D. C. al Coda\"|\"Coda\"F|G:|", "60 62 64 60 62 65 67 65 67 "},
        // After a jump only the last endings, and a jump at a repeat's end after the last round.
        {"|:C|1 D:|2 E||F!fine!:|G \"da capo\"|", "60 62 60 64 65 65 67 60 64 65 "},
        {"C|D!D.C.!:|E", "60 62 60 62 60 62 64 "},
        {"\"Dsus4\"C \"D\"D|\"finely\"E \"d.c. tomorrow\"F|", "60 62 64 65 "},
        {"P:A\nC|\nP:B\nD:|", "60 62 62 60 "},
        {"C : D | : E", "60 62 64 "},
    };
    for (const auto& [body, expected] : cases) {
        const std::string header = std::string(body).rfind("P:", 0) == 0 ? "P:A(B)A\n" : "";
        EXPECT_EQ(pitches(tune(body, header)), expected) << body;
    }
    EXPECT_EQ(failureOf([] { tune("|:C:|D \"dal segno\""); }),
              "it says \"dal segno\", and there is no segno before it");
    EXPECT_EQ(failureOf([] { tune("C \"al coda\"|D!D.C.!|"); }),
              "it says \"to coda\", and there is no coda behind it");
    EXPECT_THAT(tune("C|!fine!D|E!D.C.!|F|]").lost,
                ElementsAre("bar 3, to which no repeat and no jump leads"));
    const SheetMusic duet = tune("V:1\n|:C D:|\nV:2\nE F|\n");
    EXPECT_THAT(notesOf(duet.voices.at(1)),
                ElementsAre("64@0+100", "65@100+100", "64@200+100", "65@300+100"));
}

TEST(AbcSheet, VoicesHaveTheirNamesKeysAndPitches) {
    const SheetMusic sheet = tune("V:T\nF [V:2] F2\nK:G\nF\n[V:T]F\n",
                                  "V:T name=\"T\u00E9nor\" octave=-1\nV:2 nm=Cor transpose=-7\n");
    ASSERT_EQ(sheet.voices.size(), 2u);
    EXPECT_EQ(sheet.voices[0].name, "T\u00E9nor");
    EXPECT_THAT(notesOf(sheet.voices[0]), ElementsAre("53@0+100", "53@100+100"));
    EXPECT_EQ(sheet.voices[1].name, "Cor");
    EXPECT_THAT(notesOf(sheet.voices[1]), ElementsAre("58@0+200", "59@200+100"));
}

TEST(AbcSheet, WhatIsWrongIsToldAndTheRestRead) {
    const std::vector<std::pair<const char*, const char*>> cases = {
        {"|:C D|]", "a repeat that begins has no end (:|)"},
        {"|:C|1D|2E|]", "an ending has no sign to go back (:|); it was taken as there"},
        {"C ? D", "line 5: \"?\" means nothing here"},
        {"J:x\nC", "line 5: the field J: is unknown"},
        {"C \"Am D", "line 5: a text between the notes has no end (\"); the rest of the line is not read"},
        {"C {Am D", "line 5: a group of grace notes has no end (}); the rest of the line is not read"},
        {"C [K:D", "line 5: a field between notes has no end (])"},
        {"C [K:Q] [M:x] D", "line 5: K:Q is no key"},
        {"m: ~G3 = G{A}G{F}G\nC", "line 5: the macro m:~G3 = G{A}G{F}G is not carried out"},
        {"C (1D", "line 5: a group of 1 notes is none"},
        {"C\n\nD|E|", "line 7: this is behind the empty line that ends the tune"},
        {"V:1\nC|D|\nV:2\nE", "the parts have different numbers of bars: each was read on its own"},
    };
    for (const auto& [body, remark] : cases) {
        const SheetMusic sheet = tune(body);
        EXPECT_THAT(sheet.remarks, testing::Contains(HasSubstr(remark))) << body;
        EXPECT_EQ(sheet.voices.at(0).notes[0].pitch, 60);
    }
    EXPECT_THAT(readAbc("X:1\nC D|\n", "").remarks,
                ElementsAre("line 2: the notes begin without a key (K:)"));
    EXPECT_THAT(tune("C", "Q:fast 4\nL:x\nP:March\n").remarks,
                ElementsAre("line 5: L:x is no length", "line 6: P:March is no order of parts",
                            "line 7: Q:fast 4 is no tempo"));
    EXPECT_LT(tune("C" + std::string(100000, '?')).remarks.size(), 200u);
    EXPECT_EQ(failureOf([] { tune("P:A\nC", "P:(((A1000)1000)1000)\n"); }), "");
    for (const char* const body :
         {"C Z9999 Z9999 Z9999 D", "C1000000000 D", "C D z1000000000", "Z1000000000 C"}) {
        EXPECT_EQ(failureOf([&] { tune(body); }), "it is longer than 100000 quarter notes or 200000 notes");
    }
}

TEST(AbcSheet, OneTuneOfSeveralIsChosenByItsNumber) {
    const std::string book =
        "L:1/4\n\nX:01\nT:First % of two\nK:C\n{e}C D\n\nSome text.\n\nX: 2\nT:\u00C9tude\nK:C\nE F G\n\n"
        "X:2\n%\nT:Second \u201Etwo\u201C\nK:C\nA\n";
    EXPECT_EQ(failureOf([&] { readAbc(book, ""); }),
              "there are several tunes in it; choose one with --tune and its number:\n    1 (First)\n"
              "    2.1 (\u00C9tude)\n    2.2 (Second \u201Etwo\u201C)");
    EXPECT_THAT(failureOf([&] { readAbc(book, "3"); }), HasSubstr("there is no tune 3 in it; choose one of"));
    EXPECT_THAT(failureOf([&] { readAbc(book, "2"); }), HasSubstr("there is no tune 2 in it; choose one of"));
    EXPECT_THAT(first(readAbc(book, "2.1")), ElementsAre("64@0+100", "65@100+100", "67@200+100"));
    EXPECT_THAT(readAbc(book, "2.1").lost, IsEmpty());  // the grace note is the first tune's
    EXPECT_EQ(readAbc(book, "2.2").voices.at(0).name, "Second \u201Etwo\u201C");
    EXPECT_THAT(failureOf([] { readAbc("just text\n", ""); }), HasSubstr("no tune in it"));
}

TEST(AbcSheet, EveryEncodingIsRead) {
    const std::string text = "X:1\r\nT:\u00C9tude\r\nK:C\r\nC\r\n";
    std::string little = "\xFF\xFE";
    std::string big = "\xFE\xFF";
    for (const char16_t unit : u"X:1\nT:\u00C9tude\nK:C\nC\n") {
        little += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
        big += {static_cast<char>(unit >> 8), static_cast<char>(unit & 0xFF)};
    }
    for (const std::string& contents :
         {text, "\xEF\xBB\xBF" + text, little, big, std::string("X:1\rT:\xC9tude\rK:C\rC\r")}) {
        EXPECT_EQ(readAbc(contents, "").voices.at(0).name, "\u00C9tude");
    }
}
