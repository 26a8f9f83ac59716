#include "tools/zanto-song/Arrange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "tests/tools/Outcome.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr double c5 = 72;
constexpr double d5 = 74;
constexpr double fSharp5 = 78;
constexpr double g5 = 79;

// A voice of (start, length, pitch), in quarter notes and semitones.
SheetVoice voiceOf(const std::vector<std::vector<double>>& notes) {
    SheetVoice voice{"test", {}};
    for (const std::vector<double>& note : notes) {
        voice.notes.push_back(
            {note[0], note[1], static_cast<int>(note[2]), "bar " + std::to_string(voice.notes.size() + 1)});
    }
    return voice;
}

std::vector<std::string> textsOf(const std::vector<Loss>& losses) {
    std::vector<std::string> texts;
    for (const Loss& loss : losses) {
        texts.push_back(loss.text);
    }
    return texts;
}

// Sixteen quarter notes up and down, and then more, with starts from there.
SheetVoice scaleAnd(const std::vector<std::vector<double>>& more) {
    std::vector<std::vector<double>> notes;
    for (int at = 0; at < 16; ++at) {
        notes.push_back({1.0 * at, 1.0, at % 2 == 0 ? c5 : g5});
    }
    for (const std::vector<double>& note : more) {
        notes.push_back({16.0 + note[0], note[1], note[2]});
    }
    return voiceOf(notes);
}

std::string refusal(const SheetVoice& voice, const ArrangeWishes& wishes = {}) {
    return failureOf([&] { arrange(voice, {}, wishes); });
}

SheetMusic at(double quartersPerMinute, bool lengthsAreExact = true) {
    SheetMusic sheet;
    sheet.lengthsAreExact = lengthsAreExact;
    sheet.quartersPerMinute = quartersPerMinute;
    return sheet;
}

}  // namespace

TEST(Arrange, TheSlotIsTheFittingNoteValueNearestToTheTempo) {
    struct Case {
        std::vector<std::vector<double>> notes;
        double quartersPerMinute;
        double slotQuarters;
    };
    const std::vector<Case> cases = {
        {{{0, 2, c5}, {2, 2, d5}}, 60.0, 0.5},
        {{{0, 2, c5}, {2, 2, d5}}, 120.0, 1.0},
        {{{0, 2, c5}, {2, 2, d5}}, 240.0, 2.0},
        {{{0, 1.5, c5}, {1.5, 0.5, d5}}, 120.0, 0.5},
        {{{0, 1, c5}, {1, 0.25, d5}}, 120.0, 0.25},
        {{{0, 1.0 / 3, c5}, {1.0 / 3, 2.0 / 3, d5}}, 120.0, 1.0 / 3},
    };
    for (const auto& [notes, quartersPerMinute, slotQuarters] : cases) {
        EXPECT_DOUBLE_EQ(arrange(voiceOf(notes), at(quartersPerMinute), {}).slotQuarters, slotQuarters);
    }
}

TEST(Arrange, RhythmsThatFitNoSlotAreRefusedUnlessASlotWasAskedFor) {
    EXPECT_EQ(
        refusal(voiceOf({{0, 1.0 / 3, c5}, {1.0 / 3, 2.0 / 3, d5}, {1, 0.25, c5}})),
        "its rhythm fits no even slots: at least 1 of its 3 notes stands in the way; if you know better, say "
        "what note a slot is, as in --slot 1/8");
    EXPECT_THAT(refusal(voiceOf({{0, 1, c5}, {1.2, 1, d5}})), HasSubstr("fits no even slots"));
    const Arrangement song = arrange(voiceOf({{0, 1, c5}, {1.3, 1, d5}}), {}, {1.0, {}});
    EXPECT_EQ(songText(song.slots), "120 4\nC\nD\n");
    EXPECT_THAT(textsOf(song.lost), ElementsAre("bar 2: D5 was moved by 0.30 slots"));
    // A player's lengths need not fit.
    const SheetVoice detached = voiceOf({{0.01, 0.7, c5}, {0.98, 0.65, d5}, {2.02, 1.6, g5}});
    EXPECT_EQ(songText(arrange(detached, at(120.0, false), {}).slots), "120 4\nC\nD\nG2\n");
    EXPECT_THAT(refusal(detached), HasSubstr("fits no even slots"));
}

// A dotted pair that is rounded is shown by the example of the documentation.
TEST(Arrange, ANoteTooManyForTheSlotsIsLeftOut) {
    const std::string scale = "120 4\nC\nG\nC\nG\nC\nG\nC\nG\nC\nG\nC\nG\nC\nG\nC\nG\n";
    // Of a triplet in the time of two slots one note is too many.
    const SheetVoice triplet = scaleAnd(
        {{0, 2.0 / 3, d5}, {2.0 / 3, 2.0 / 3, c5}, {4.0 / 3, 2.0 / 3, d5}, {2, 1, g5}, {3, 0.25, c5}});
    EXPECT_EQ(refusal(triplet),
              "its rhythm fits no even slots: 4 of its 21 notes stand in the way of 1/4; --round moves them, "
              "or say "
              "what note a slot is, as in --slot 1/8");
    const Arrangement three = arrange(triplet, {}, {1.0, {}});
    EXPECT_EQ(songText(three.slots), scale + "D\nC\nG\nC\n");
    EXPECT_THAT(textsOf(three.lost),
                testing::Contains("bar 19: D5 finds no slot of its own and was left out"));
}

TEST(Arrange, NotesAreTransposedToNaturalsByTheLeastShiftOrAsAskedFor) {
    const Arrangement song = arrange(voiceOf({{0, 1, d5}, {1, 1, fSharp5}, {2, 1, 81}, {3, 1, 85}}), {}, {});
    EXPECT_EQ(song.semitones, -2);
    EXPECT_EQ(songText(song.slots), "120 4\nC\nE\nG\nB\n");
    // Naturals as they stand stay where they are.
    EXPECT_EQ(arrange(voiceOf({{0, 1, d5}, {1, 1, g5}}), {}, {}).semitones, 0);
    const SheetVoice tune = voiceOf({{0, 1, c5}, {1, 1, d5}, {2, 1, 76}});
    EXPECT_EQ(songText(arrange(tune, {}, {{}, 12}).slots), "120 4\nC\nD\nE\n");
    EXPECT_EQ(songText(arrange(voiceOf({{0, 1, c5}}), {}, {{}, 2}).slots), "120 4\nD\n");
    EXPECT_EQ(refusal(tune, {{}, 1}),
              "only 1 of its 3 notes would find a place; what is left would not be the tune");
}

TEST(Arrange, WhatFindsNoPlaceOfItsOwnIsNamed) {
    struct Case {
        std::vector<std::vector<double>> notes;
        const char* text;
        const char* lost;
    };
    const std::vector<Case> cases = {
        {{{0, 2, c5}, {0, 1, 76}, {0.02, 1, g5}}, "C2 E G\n", ""},
        {{{0, 0, c5}, {1, 1, d5}}, "C\nD\n", ""},
        {{{0, 1, 60}, {0, 1, c5}}, "C\n", "bar 2: C5 is the same note in another octave"},
        {{{0, 4, 60}, {2, 1, c5}}, "C2\n\nC\n", "bar 2: C5 begins while the same note sounds"},
        {{{0, 8, c5}, {8, 1, d5}},
         "C5\n\n\n\n\n\n\n\nD\n",
         "bar 1: C5 sounds for 8 slots and was written with 5"},
        {{{0, 1e18, c5}}, "C5\n\n\n\n", "bar 1: C5 sounds for 80000 slots"},
        {{{10, 1, c5}}, "\n\nC\n", "8 slots of rest at the beginning"},
        {{{0, 1, c5}, {1, 2, d5}, {4, 1, g5}}, "C\nD2\n\n\nG\n", ""},
        {{{0, 1, c5}, {1, 1, 73}, {2, 1, d5}, {3, 1, 76}, {4, 1, 77}, {5, 1, g5}, {6, 1, 81}, {7, 1, 83}},
         "C\n\nD\nE\nF\nG\nA\nB\n",
         "bar 2: C#5 is no natural here and became a rest"},
    };
    for (const Case& example : cases) {
        const Arrangement song = arrange(voiceOf(example.notes), at(120.0, false), {});
        EXPECT_EQ(songText(song.slots), std::string("120 4\n") + example.text);
        EXPECT_EQ(song.lost.size(), std::string(example.lost).empty() ? 0u : 1u) << example.text;
        EXPECT_THAT(textsOf(song.lost), testing::Each(HasSubstr(example.lost)));
    }
}

TEST(Arrange, MusicForDaysOrWithoutANoteIsRefused) {
    EXPECT_EQ(refusal(voiceOf({})), "there is no note in it");
    for (const double start : {80000.0, 1e9, 1e300, HUGE_VAL, std::nan("")}) {
        EXPECT_EQ(refusal(voiceOf({{0, 1, c5}, {start, 1, d5}}), {1.0, {}}),
                  "bar 2 would come after more than 80000 slots, which is 11 hours");
    }
}
