#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/game/SongFixture.h"
#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace {

class SongScoringTest : public SongFixture {
protected:
    /// Loads the lines of a song under a header; the last line has no line break.
    void play(const std::string& lines) { ASSERT_TRUE(load("1 1\n" + lines)) << errors; }

    void judge(double t, const std::vector<Notes::NoteID>& notes, float heldSeconds) {
        song.updateScore(score, t, holding(notes, heldSeconds));
    }

    /// The floating numbers in the order of their release, as drawn.
    std::vector<RecordingFont::Text> floating() {
        recorded.forget();
        song.draw(0.0);
        return recorded.texts();
    }
    /// The newest floating number stands where one that was just released at (`x`, `y`) does.
    void expectReleased(const std::string& text, float x, float y) {
        const auto all = floating();
        ASSERT_FALSE(all.empty());
        EXPECT_EQ(all.back().text, text);
        EXPECT_FLOAT_EQ(all.back().x, x + 0.3f);
        EXPECT_EQ(all.back().y, y);
        EXPECT_EQ(all.back().scaleX, 0.5f);
    }

    RecordingGL gl;
    RecordingFont recorded;
};

float justAbove(float seconds) {
    return std::nextafter(seconds, 10.0f);
}

/// The notes that are held for `heldSeconds` at song time `t`.
struct Moment {
    double t;
    std::vector<Notes::NoteID> notes;
    float heldSeconds;
};

struct Example {
    const char* name;
    const char* lines;
    std::vector<Moment> moments;
    float points;
};

class Scoring : public SongScoringTest, public testing::WithParamInterface<Example> {};

TEST_P(Scoring, EarnsAndCostsTheseInAll) {
    play(GetParam().lines);
    for (const Moment& moment : GetParam().moments) {
        judge(moment.t, moment.notes, moment.heldSeconds);
    }
    EXPECT_EQ(score.getValue(), GetParam().points);
}

// 0.95 * 7 * 0.5 - 0.25 in double, then to float; all in float would give another number.
const auto sevenSlotHold = static_cast<float>(-0.25 + 0.5 * 0.95 * 7.0);

// The edges of the rules; SongAgainstPlainTest shows the rules.
const Example examples[] = {
    {"AQuarterSecondBeforeSlot0", "C", {{-0.25, {noteC}, 10.0f}}, 0.0f},
    {"InsideSlot0", "C", {{-0.2, {noteC}, 10.0f}}, 100.0f},
    {"HeldForJustTheThreshold", "C", {{0.1, {noteC}, 0.225f}}, 0.0f},
    {"HeldForMoreThanTheThreshold", "C", {{0.1, {noteC}, justAbove(0.225f)}}, 100.0f},
    {"ALongNotesThreshold", "C7\n\n\n", {{1.0, {noteC}, sevenSlotHold}}, 0.0f},
    {"ALongNoteHeldLongEnough", "C7\n\n\n", {{1.0, {noteC}, justAbove(sevenSlotHold)}}, 700.0f},
    {"ALongNoteInItsOwnSlot", "\nG4\n\n", {{0.5, {noteG}, 2.0f}, {1.0, {noteG}, 2.5f}}, 100.0f},
    // -0.15 s lies just 0.1 s, a fifth of a slot, behind the opening of slot 0 at -0.25 s.
    {"JustAFifthOfASlotIsGrace", "G", {{-0.15, {noteE}, 0.4f}}, 0.0f},
    {"MoreThanAFifthIsNot", "G", {{std::nextafter(-0.15, 0.0), {noteE}, 0.4f}}, -20.0f},
    {"AWrongNoteOf350Milliseconds", "G", {{0.1, {noteE}, 0.35f}}, 0.0f},  // as a float just below
    {"AWrongNoteHeldForLonger", "G", {{0.1, {noteE}, justAbove(0.35f)}}, -20.0f},
    {"ANoteWithoutLengthUnplayed", "Gx", {{0.0, {}, 0.0f}}, 100.0f},
    {"AHugeLengthHeldForLong", "G2147483647\n\n", {{0.5, {noteG}, 1000.0f}}, 0.0f},
    {"AHugeLengthHeldLongEnough", "G2147483647\n\n", {{0.5, {noteG}, 2e9f}}, 100.0f * 2147483648.0f},
    {"AHugeNegativeLengthUnplayed", "G2147483648\n\n", {{0.5, {noteG}, 0.1f}, {0.0, {}, 0.0f}}, 100.0f},
};

INSTANTIATE_TEST_SUITE_P(, Scoring, testing::ValuesIn(examples),
                         [](const auto& example) { return std::string(example.param.name); });

TEST_F(SongScoringTest, AnAwardFloatsWhereItsNoteBeganAndScoringDrawsNothing) {
    play("C\n\nD3\n\n\n\nG2147483647\n\n");
    judge(0.1, {noteC}, 0.25f);
    EXPECT_THAT(gl.primitives(), IsEmpty());
    EXPECT_THAT(gl.errors(), IsEmpty());
    EXPECT_THAT(slots()[0], ElementsAre("C/1!"));
    expectReleased("100", 0.0f, 0.0f);
    judge(1.9, {noteD}, 1.15f);
    EXPECT_THAT(floating(), SizeIs(1));
    judge(1.93, {noteD}, 1.18f);
    expectReleased("300", 2.0f, 0.2857143f);
    judge(3.5, {noteG}, 2e9f);
    EXPECT_EQ(floating().back().text, "2147483647");
}

TEST_F(SongScoringTest, APenaltyFloatsAtTheMarkOfItsIndexAndWhereThereIsNoneAtItsOwnHeight) {
    play("G A B\nG");
    judge(0.1, {noteD}, 0.4f);  // index 1 of the slot is an A
    expectReleased("-20", 0.0f, 0.2857143f * 5.0f);
    judge(0.1, {noteF}, 0.4f);  // index 3 is now the penalty for the D
    expectReleased("-20", 0.0f, 0.2857143f * 1.0f);
    judge(0.6, {noteB}, 0.4f);
    expectReleased("-20", 1.0f, 0.2857143f * 6.0f);
    play("G A");
    judge(0.1, {noteE}, 0.4f);  // index 2 is the penalty itself
    expectReleased("-20", 0.0f, 0.2857143f * 2.0f);
}

TEST_F(SongScoringTest, FloatingNumbersMoveWithTheSongLiveThroughAReloadAndGoAfterFourSeconds) {
    play("C");
    judge(0.1, {noteC}, 0.25f);
    song.animate(1.0);
    EXPECT_FLOAT_EQ(floating().at(0).x, -0.3f);
    EXPECT_EQ(floating().at(0).y, 1.0f);
    play("D");
    song.animate(3.0);
    EXPECT_THAT(floating(), SizeIs(1));
    song.animate(0.01);
    EXPECT_THAT(floating(), IsEmpty());
}

}  // namespace
