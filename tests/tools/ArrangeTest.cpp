#include "tools/zanto-song/Arrange.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// A voice of (start, length, pitch), in quarter notes and semitones.
SheetVoice voiceOf(std::vector<std::vector<double>> const& notes) {
    SheetVoice voice{"test", {}};
    for (std::vector<double> const& note : notes) {
        voice.notes.push_back(
            {note[0], note[1], static_cast<int>(note[2]), "bar " + std::to_string(voice.notes.size() + 1)});
    }
    return voice;
}

Arrangement arranged(SheetVoice const& voice, SheetMusic const& sheet = {},
                     ArrangeWishes const& wishes = {}) {
    std::string problem;
    std::optional<Arrangement> const arrangement = arrange(voice, sheet, wishes, problem);
    EXPECT_TRUE(arrangement) << problem;
    return arrangement.value_or(Arrangement{});
}

std::string refusal(SheetVoice const& voice, SheetMusic const& sheet = {}, ArrangeWishes const& wishes = {}) {
    std::string problem;
    EXPECT_FALSE(arrange(voice, sheet, wishes, problem));
    return problem;
}

SheetMusic playedBySomebody(double quartersPerMinute = 120.0) {
    SheetMusic sheet;
    sheet.lengthsAreExact = false;
    sheet.quartersPerMinute = quartersPerMinute;
    return sheet;
}

constexpr double c5 = 72;
constexpr double d5 = 74;
constexpr double fSharp5 = 78;
constexpr double g5 = 79;

}  // namespace

TEST(Arrange, quarterNotesAt120BecomeSlots) {
    Arrangement const song = arranged(voiceOf({{0, 1, c5}, {1, 2, d5}, {4, 1, g5}}));
    EXPECT_EQ(song.text(), "120 4\nC\nD2\n\n\nG\n");
    EXPECT_EQ(song.slotQuarters, 1.0);
    EXPECT_EQ(song.semitones, 0);
    EXPECT_EQ(song.kept, 3u);
    EXPECT_THAT(song.lost, IsEmpty());
}

TEST(Arrange, theSlotIsTheFittingNoteValueNearestToTheTempo) {
    SheetMusic slow;
    slow.quartersPerMinute = 60.0;
    SheetMusic fast;
    fast.quartersPerMinute = 240.0;
    SheetVoice const halves = voiceOf({{0, 2, c5}, {2, 2, d5}});
    EXPECT_EQ(arranged(halves, slow).slotQuarters, 0.5);
    EXPECT_EQ(arranged(halves).slotQuarters, 1.0);
    EXPECT_EQ(arranged(halves, fast).slotQuarters, 2.0);
}

TEST(Arrange, shorterNotesMakeTheSlotShorter) {
    EXPECT_EQ(arranged(voiceOf({{0, 1.5, c5}, {1.5, 0.5, d5}})).slotQuarters, 0.5);
    EXPECT_EQ(arranged(voiceOf({{0, 1, c5}, {1, 0.25, d5}})).slotQuarters, 0.25);
    EXPECT_NEAR(arranged(voiceOf({{0, 1.0 / 3, c5}, {1.0 / 3, 2.0 / 3, d5}})).slotQuarters, 1.0 / 3, 1e-9);
}

TEST(Arrange, rhythmsThatFitNoSlotAreRefused) {
    EXPECT_THAT(refusal(voiceOf({{0, 1.0 / 3, c5}, {1.0 / 3, 2.0 / 3, d5}, {1, 0.25, c5}})),
                HasSubstr("--slot"));
    EXPECT_THAT(refusal(voiceOf({{0, 1, c5}, {1.2, 1, d5}})), HasSubstr("fits no even slots"));
}

TEST(Arrange, aSlotThatWasAskedForMovesNotesAndSaysSo) {
    ArrangeWishes wishes;
    wishes.slotQuarters = 1.0;
    Arrangement const song = arranged(voiceOf({{0, 1, c5}, {1.3, 1, d5}}), {}, wishes);
    EXPECT_EQ(song.text(), "120 4\nC\nD\n");
    EXPECT_THAT(song.lost, ElementsAre("bar 2: D5 was moved by 0.30 slots"));
}

TEST(Arrange, playersLengthsNeedNotFit) {
    SheetVoice const detached = voiceOf({{0.01, 0.7, c5}, {0.98, 0.65, d5}, {2.02, 1.6, g5}});
    EXPECT_EQ(arranged(detached, playedBySomebody()).text(), "120 4\nC\nD\nG2\n\n");
    EXPECT_THAT(refusal(detached), HasSubstr("fits no even slots"));
}

TEST(Arrange, notesAreTransposedToNaturalsByTheLeastShift) {
    Arrangement const song = arranged(voiceOf({{0, 1, d5}, {1, 1, fSharp5}, {2, 1, 81}, {3, 1, 85}}));
    EXPECT_EQ(song.semitones, -2);
    EXPECT_EQ(song.text(), "120 4\nC\nE\nG\nB\n");
    // Naturals as they stand stay where they are.
    EXPECT_EQ(arranged(voiceOf({{0, 1, d5}, {1, 1, g5}})).semitones, 0);
}

TEST(Arrange, aTranspositionThatWasAskedForIsKept) {
    ArrangeWishes wishes;
    wishes.semitones = 12;
    EXPECT_EQ(arranged(voiceOf({{0, 1, c5}}), {}, wishes).text(), "120 4\nC\n");
    wishes.semitones = 2;
    EXPECT_EQ(arranged(voiceOf({{0, 1, c5}}), {}, wishes).text(), "120 4\nD\n");
}

TEST(Arrange, notesThatAreNaturalsInNoKeyBecomeRestsAndAreNamed) {
    Arrangement const song = arranged(voiceOf(
        {{0, 1, c5}, {1, 1, 73}, {2, 1, d5}, {3, 1, 76}, {4, 1, 77}, {5, 1, g5}, {6, 1, 81}, {7, 1, 83}}));
    EXPECT_EQ(song.text(), "120 4\nC\n\nD\nE\nF\nG\nA\nB\n");
    EXPECT_EQ(song.kept, 7u);
    EXPECT_THAT(song.lost, ElementsAre("bar 2: C#5 is no natural here and became a rest"));
}

TEST(Arrange, aTuneThatIsMostlyLostIsRefused) {
    ArrangeWishes wishes;
    wishes.semitones = 1;
    EXPECT_THAT(refusal(voiceOf({{0, 1, c5}, {1, 1, d5}, {2, 1, 76}}), {}, wishes),
                HasSubstr("only 1 of its 3 notes"));
}

TEST(Arrange, chordsShareTheirSlot) {
    EXPECT_EQ(arranged(voiceOf({{0, 2, c5}, {0, 1, 76}, {0.02, 1, g5}}), playedBySomebody()).text(),
              "120 4\nC2 E G\n\n");
}

TEST(Arrange, theSameNoteInAnotherOctaveIsWrittenOnce) {
    Arrangement const song = arranged(voiceOf({{0, 1, 60}, {0, 1, c5}}));
    EXPECT_EQ(song.text(), "120 4\nC\n");
    EXPECT_THAT(song.lost, ElementsAre(HasSubstr("bar 2: C5 is the same note in another octave")));
}

TEST(Arrange, aNoteThatBeginsWhileItSoundsCutsTheEarlierOneShort) {
    Arrangement const song = arranged(voiceOf({{0, 4, 60}, {2, 1, c5}}));
    EXPECT_EQ(song.text(), "120 4\nC2\n\nC\n");
    EXPECT_THAT(song.lost, ElementsAre(HasSubstr("bar 2: C5 begins while the same note sounds")));
}

TEST(Arrange, notesPast5SlotsAreWrittenWith5) {
    Arrangement const song = arranged(voiceOf({{0, 8, c5}, {8, 1, d5}}));
    EXPECT_EQ(song.text(), "120 4\nC5\n\n\n\n\n\n\n\nD\n");
    EXPECT_THAT(song.lost, ElementsAre(HasSubstr("bar 1: C5 sounds for 8 slots and was written with 5")));
}

TEST(Arrange, wholeBarsOfRestAtTheBeginningGo) {
    Arrangement const song = arranged(voiceOf({{10, 1, c5}}));
    EXPECT_EQ(song.text(), "120 4\n\n\nC\n");
    EXPECT_THAT(song.lost, ElementsAre("8 slots of rest at the beginning"));
}

TEST(Arrange, aNoteOfNoLengthGetsOneSlot) {
    EXPECT_EQ(arranged(voiceOf({{0, 0, c5}, {1, 1, d5}}), playedBySomebody()).text(), "120 4\nC\nD\n");
}

TEST(Arrange, anEmptyVoiceIsRefused) {
    EXPECT_EQ(refusal(voiceOf({})), "there is no note in it");
}
