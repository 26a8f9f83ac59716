#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

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
    void play(std::string const& lines) { ASSERT_TRUE(load("1 1\n" + lines)) << errors; }

    void judge(double t, std::vector<Notes::NoteID> const& notes, float heldSeconds) {
        song.updateScore(score, t, holding(notes, heldSeconds));
    }

    /// The floating numbers in the order of their release, as drawn.
    std::vector<RecordingFont::Text> floating() {
        recorded.forget();
        song.draw(0.0);
        return recorded.texts();
    }
    /// The newest floating number stands where one that was just released at (`x`, `y`) does.
    void expectReleased(std::string const& text, float x, float y) {
        auto const all = floating();
        ASSERT_FALSE(all.empty());
        EXPECT_EQ(all.back().text, text);
        EXPECT_FLOAT_EQ(all.back().x, x + 0.3f);
        EXPECT_EQ(all.back().y, y);
        EXPECT_EQ(all.back().scaleX, 0.5f);
    }

    RecordingGL gl;
    RecordingFont recorded;
};

TEST_F(SongScoringTest, NothingIsJudgedBeforeSlot0) {
    play("C");
    judge(-0.3, {noteC, noteD}, 10.0f);  // slot round(-0.6)
    judge(-2.0, {noteC, noteD}, 10.0f);
    EXPECT_EQ(score.getValue(), 0.0f);
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1")));
    EXPECT_THAT(floating(), IsEmpty());
}

TEST_F(SongScoringTest, Slot0OpensAQuarterSecondBeforeItsCentre) {
    play("C");
    judge(-0.25, {noteC}, 10.0f);  // slot round(-0.5), half away from zero: -1
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(-0.2, {noteC}, 10.0f);  // slot round(-0.4)
    EXPECT_EQ(score.getValue(), 100.0f);
}

TEST_F(SongScoringTest, NothingIsJudgedAfterTheLastSlot) {
    play("C8");
    judge(0.5, {noteC, noteD}, 10.0f);
    EXPECT_EQ(score.getValue(), 0.0f);
    EXPECT_THAT(floating(), IsEmpty());
}

TEST_F(SongScoringTest, ANoteHeldLongEnoughIsAwardedOnce) {
    play("C");
    judge(0.1, {noteC}, 0.25f);
    EXPECT_EQ(score.getValue(), 100.0f);
    EXPECT_THAT(slots(), ElementsAre(ElementsAre("C/1!")));
    expectReleased("100", 0.0f, 0.0f);

    judge(0.1, {noteC}, 0.25f);
    EXPECT_EQ(score.getValue(), 100.0f);
    EXPECT_THAT(floating(), SizeIs(1));
}

TEST_F(SongScoringTest, ANoteHeldTooShortIsNotAwardedThenOrInLaterSlots) {
    play("C\n\n");
    judge(0.1, {noteC}, 0.2f);
    judge(0.2, {noteC}, 0.2f);
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(0.3, {noteC}, 0.3f);  // slot 1: the note has ended
    EXPECT_EQ(score.getValue(), 0.0f);
    EXPECT_THAT(slots()[0], ElementsAre("C/1"));
}

TEST_F(SongScoringTest, TheHoldMustBeStrictlyLongerThanTheThreshold) {
    play("C");
    judge(0.1, {noteC}, 0.225f);
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(0.1, {noteC}, std::nextafter(0.225f, 1.0f));
    EXPECT_EQ(score.getValue(), 100.0f);
}

TEST_F(SongScoringTest, ALongNoteEarnsByTheSlotOnceItsHoldIsLongEnough) {
    play("\n\nD3\n\n\n\n");
    double awardedAt = 0.0;
    for (int frame = 1; awardedAt == 0.0 && frame < 150; ++frame) {
        double const t = 0.75 + 0.01 * frame;
        judge(t, {noteD}, static_cast<float>(t - 0.75));
        if (score.getValue() > 0.0f) {
            awardedAt = t;
        }
    }
    EXPECT_NEAR(awardedAt, 1.925, 0.011);  // held for 1.175 s
    EXPECT_EQ(score.getValue(), 300.0f);
    EXPECT_THAT(slots()[2], ElementsAre("D/3!"));
    expectReleased("300", 2.0f, 0.2857143f);
}

TEST_F(SongScoringTest, ALongNoteHeldLongEnoughInItsOwnSlotEarnsAFlat100) {
    play("\nG4\n\n");
    judge(0.5, {noteG}, 2.0f);
    EXPECT_EQ(score.getValue(), 100.0f);
    expectReleased("100", 1.0f, 0.2857143f * 4.0f);
    judge(1.0, {noteG}, 2.5f);
    EXPECT_EQ(score.getValue(), 100.0f);
}

TEST_F(SongScoringTest, ANoteIsJudgedUpToFourSlotsAfterItsOwn) {
    play("G8\n\n\n\n\n\n\n");
    judge(2.0, {noteG}, 10.0f);  // slot 4
    EXPECT_EQ(score.getValue(), 800.0f);
}

TEST_F(SongScoringTest, ANoteThatBeganMoreThanFourSlotsAgoIsJudgedNoMore) {
    play("G8\n\n\n\n\n\n\n");
    judge(2.5, {noteG}, 10.0f);  // slot 5, where nobody expects a G any longer
    EXPECT_EQ(score.getValue(), -20.0f);
    EXPECT_THAT(slots()[0], ElementsAre("G/8"));
    EXPECT_THAT(slots()[5], ElementsAre("G/1x"));
}

TEST_F(SongScoringTest, AnEndedNoteIsNotExpectedAnyMore) {
    play("C2\n\n\n");
    judge(0.55, {noteC}, 0.4f);  // slot 1: still sounding
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(1.0, {noteC}, 0.4f);  // slot 2
    EXPECT_EQ(score.getValue(), -20.0f);
}

TEST_F(SongScoringTest, ANoteThatWasHitIsExpectedForAsLongAsItSounds) {
    play("C3\n\n\n");
    judge(0.1, {noteC}, 5.0f);
    judge(0.5, {noteC}, 5.0f);
    judge(1.0, {noteC}, 5.0f);
    EXPECT_EQ(score.getValue(), 100.0f);
}

TEST_F(SongScoringTest, EveryNoteOfAChordIsAwarded) {
    play("C E G");
    judge(0.1, {noteC, noteE, noteG}, 0.3f);
    EXPECT_EQ(score.getValue(), 300.0f);
    EXPECT_THAT(slots()[0], ElementsAre("C/1!", "E/1!", "G/1!"));
    EXPECT_THAT(floating(), SizeIs(3));
}

TEST_F(SongScoringTest, AWrongNoteIsPenalisedOnceInASlot) {
    play("\n\n\n\n\nG\n");
    judge(2.5, {noteE}, 0.4f);
    EXPECT_EQ(score.getValue(), -20.0f);
    EXPECT_THAT(slots()[5], ElementsAre("G/1", "E/1x"));
    expectReleased("-20", 5.0f, 0.2857143f * 2.0f);
    Song::NoteMark const& penalty = song.getSlots()[5].back();
    EXPECT_TRUE(penalty.hit);
    EXPECT_EQ(penalty.brightness, 1.0f);

    judge(2.52, {noteE}, 0.42f);
    EXPECT_EQ(score.getValue(), -20.0f);
    EXPECT_THAT(floating(), SizeIs(1));
    judge(3.0, {noteE}, 0.9f);  // the next slot
    EXPECT_EQ(score.getValue(), -40.0f);
    EXPECT_THAT(slots()[6], ElementsAre("E/1x"));
}

TEST_F(SongScoringTest, ASlotsFirstFifthIsAGracePeriod) {
    play("\n\n\n\n\nG");
    judge(2.3, {noteE}, 0.4f);
    judge(2.34, {noteE}, 0.44f);
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(2.36, {noteE}, 0.46f);
    EXPECT_EQ(score.getValue(), -20.0f);
}

TEST_F(SongScoringTest, AWrongNoteHeldUpTo350MillisecondsIsForgiven) {
    play("G");
    judge(0.1, {noteE}, 0.35f);  // as a float just below
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(0.1, {noteE}, 0.351f);
    EXPECT_EQ(score.getValue(), -20.0f);
}

TEST_F(SongScoringTest, AnExpectedNoteHeldTooShortIsNoWrongNote) {
    play("G4\n");
    judge(0.2, {noteG}, 0.4f);
    judge(0.5, {noteG}, 0.7f);
    EXPECT_EQ(score.getValue(), 0.0f);
    EXPECT_THAT(slots()[0], ElementsAre("G/4"));
}

TEST_F(SongScoringTest, EveryWrongNoteOfASlotIsPenalisedInOrder) {
    play("G");
    judge(0.1, {noteB, noteC, noteA, noteD, noteE, noteF}, 0.4f);
    EXPECT_EQ(score.getValue(), -120.0f);
    EXPECT_THAT(slots()[0], ElementsAre("G/1", "C/1x", "D/1x", "E/1x", "F/1x", "A/1x", "B/1x"));
}

TEST_F(SongScoringTest, APenaltyFloatsAtItsOwnHeightWhenTheSlotHasTooFewMarks) {
    play("G");
    judge(0.1, {noteB}, 0.4f);
    expectReleased("-20", 0.0f, 0.2857143f * 6.0f);
}

TEST_F(SongScoringTest, APenaltyFloatsAtTheMarkOfItsIndexWhereThereIsOne) {
    play("G A B");
    judge(0.1, {noteD}, 0.4f);  // index 1 of the slot is an A
    expectReleased("-20", 0.0f, 0.2857143f * 5.0f);
    judge(0.1, {noteF}, 0.4f);  // index 3 is now the penalty for the D
    expectReleased("-20", 0.0f, 0.2857143f * 1.0f);
}

TEST_F(SongScoringTest, APenaltyOfIndexEqualToTheCountIsItself) {
    play("G A");
    judge(0.1, {noteE}, 0.4f);
    expectReleased("-20", 0.0f, 0.2857143f * 2.0f);
}

TEST_F(SongScoringTest, ANoteWithoutLengthIsAwardedUnplayed) {
    play("Gx");
    judge(0.0, {}, 0.0f);
    EXPECT_EQ(score.getValue(), 100.0f);
}

TEST_F(SongScoringTest, AHugeLengthIsNeitherReachedNorOverflows) {
    play("G2147483647\n\n\n\n");
    for (double t = 0.0; t < 2.2; t += 0.05) {
        judge(t, {noteG}, 1000.0f);
    }
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(2.0, {noteG}, 2e9f);
    EXPECT_EQ(score.getValue(), 100.0f * 2147483648.0f);
    EXPECT_EQ(floating().back().text, "2147483647");
}

TEST_F(SongScoringTest, AHugeNegativeLengthIsAwardedAtOnceAndNeverSoundsLater) {
    play("G2147483648\n\n");
    judge(0.5, {noteG}, 0.1f);
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(0.0, {}, 0.0f);
    EXPECT_EQ(score.getValue(), 100.0f);
}

TEST_F(SongScoringTest, AThresholdIsRoundedAsStated) {
    // 0.95 * 7 * 0.5 - 0.25 in double, then to float; all in float would give another number.
    play("C7\n\n\n");
    auto const threshold = static_cast<float>(-0.25 + 0.5 * 0.95 * 7.0);
    judge(1.0, {noteC}, threshold);
    EXPECT_EQ(score.getValue(), 0.0f);
    judge(1.0, {noteC}, std::nextafter(threshold, 10.0f));
    EXPECT_EQ(score.getValue(), 700.0f);
}

TEST_F(SongScoringTest, ATimeBeyondAllSlotsIsOutsideTheSong) {
    play("C");
    for (double const t :
         {1e300, -1e300, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        judge(t, {noteC, noteD}, 10.0f);
    }
    EXPECT_EQ(score.getValue(), 0.0f);
    EXPECT_TRUE(song.complete(1e300));
    EXPECT_FALSE(song.complete(-1e300));
    EXPECT_FALSE(song.complete(std::numeric_limits<double>::quiet_NaN()));
}

TEST_F(SongScoringTest, ASongIsCompleteFromItsSlotCountPlusFourOn) {
    play("C\nD\nE");
    EXPECT_FALSE(song.complete(3.24));  // slot 6
    EXPECT_TRUE(song.complete(3.25));   // slot 7
    EXPECT_FALSE(song.complete(-2.0));
}

TEST_F(SongScoringTest, ASongWithoutSlotsIsNeverJudgedAndCompleteFromSlot4On) {
    judge(0.0, {noteC}, 10.0f);
    judge(0.1, {noteC}, 10.0f);
    EXPECT_EQ(score.getValue(), 0.0f);
    EXPECT_FALSE(song.complete(1.74));
    EXPECT_TRUE(song.complete(1.75));
}

TEST_F(SongScoringTest, FloatingNumbersMoveWithTheSongAndGoAfterFourSeconds) {
    play("C");
    judge(0.1, {noteC}, 0.25f);
    song.animate(1.0);
    EXPECT_FLOAT_EQ(floating().at(0).x, -0.3f);
    EXPECT_EQ(floating().at(0).y, 1.0f);
    song.animate(3.0);
    EXPECT_THAT(floating(), SizeIs(1));
    song.animate(0.01);
    EXPECT_THAT(floating(), IsEmpty());
}

TEST_F(SongScoringTest, FloatingNumbersLiveThroughAReload) {
    play("C");
    judge(0.1, {noteC}, 0.25f);
    play("D");
    EXPECT_THAT(floating(), SizeIs(1));
    CapturedErrors const captured;
    EXPECT_FALSE(song.load("nowhere"));
    EXPECT_THAT(floating(), SizeIs(1));
}

TEST_F(SongScoringTest, ScoringNeedsNoContextBeyondAFontHandle) {
    play("C");
    judge(0.1, {noteC}, 0.25f);
    EXPECT_THAT(gl.primitives(), IsEmpty());
    EXPECT_THAT(gl.errors(), IsEmpty());
}

}  // namespace
