#include "tools/zanto-song/TakeAdvice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "game/Song.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/common/DataFolder.h"

namespace {

using Outcome = TakenNote::Outcome;
using Cause = TakenPenalty::Cause;

// Slot 0 opens at 1.75 s.
class TakeAdviceTest : public testing::Test {
protected:
    void load(const std::string& text) {
        path = folder.write("song.txt", text);
        take.frames.resize(800);
        take.slotCount = 8;
    }
    void sound(const Notes::NoteID& note, std::size_t fromFrame, std::size_t toFrame) {
        for (std::size_t frame = fromFrame; frame < toFrame; ++frame) {
            take.frames[frame].counts.at(static_cast<std::size_t>(note)) = 1;
        }
    }
    void tell(std::size_t slot, const Notes::NoteID& note, Outcome outcome,
              std::optional<double> heardSeconds = {}) {
        take.notes.push_back(
            {slot, note, 1, outcome, take.slotOpens(slot), heardSeconds, 0.1, 0.225, 0.0, 0.0, {}, -10.0});
    }
    double judge(const std::vector<HeardFrame>& frames) const {
        Song song;
        EXPECT_TRUE(song.load(path.c_str()));
        return rescore(song, frames);
    }
    // "+100 what", best first.
    std::vector<std::string> advice() {
        take.score = judge(take.frames);
        std::vector<std::string> told;
        for (const Advice& one :
             adviceFor(take, [&](const std::vector<HeardFrame>& frames) { return judge(frames); })) {
            told.push_back("+" + std::to_string(static_cast<int>(one.points)) + " " + one.what);
        }
        return told;
    }
    void expectAvoidable(Cause cause, const Notes::NoteID& note, const std::string& what) {
        take.penalties = {{1, note, cause, cause == Cause::heldOver ? 0u : 2u, 2.6, 0.36, -20.0, {}}};
        EXPECT_THAT(advice(), testing::Contains("+20 " + what + ": 1 penalty"));
    }

    TemporaryFolder folder;
    WorkingFolder data{ZANTO_DATA_FOLDER};
    std::string path;
    Take take;
};

}  // namespace

TEST_F(TakeAdviceTest, TheLeastShiftThatEarnsMostIsTold) {
    load("1 1\nC\n\n\n\n\n");
    sound(0, 206, 236);
    tell(0, 0, Outcome::tooShort, 2.06);
    EXPECT_THAT(advice(), testing::ElementsAre("+100 Play everything 40 ms sooner"));
}

TEST_F(TakeAdviceTest, PenaltiesCouldHaveBeenAvoided) {
    load("1 1\nC\n\nE\n\n\n");
    sound(0, 176, 270);
    tell(0, 0, Outcome::awarded, 1.76);
    expectAvoidable(Cause::heldOver, 0, "Let go of notes sooner");

    take.frames.assign(800, {});
    sound(2, 226, 320);
    expectAvoidable(Cause::early, 2, "Wait for the slot to open");

    take.frames.assign(800, {});
    sound(5, 226, 265);
    expectAvoidable(Cause::notAskedFor, 5, "Leave out what the song does not ask for");
}

TEST_F(TakeAdviceTest, OnlyThreeAreToldBestFirstAndNoneThatEarnsNothing) {
    load("1 1\nC\n\nE\nF\n\n\n");
    sound(0, 176, 186);
    tell(0, 0, Outcome::tooShort, 1.76);
    tell(2, 2, Outcome::otherNotes);
    tell(3, 3, Outcome::noNote);
    sound(5, 276, 375);
    take.penalties = {{2, 5, Cause::notAskedFor, 0, 3.2, 0.36, -20.0, {}},
                      {3, 5, Cause::notAskedFor, 0, 3.4, 0.6, -20.0, {}}};
    EXPECT_THAT(advice(), testing::ElementsAre("+200 Play what was not heard: 2 notes",
                                               "+100 Hold notes to their end: 1 note too short",
                                               "+40 Leave out what the song does not ask for: 2 penalties"));
    take = {};
    load("1 1\nC\n\n\n");
    sound(0, 176, 220);
    tell(0, 0, Outcome::awarded, 1.76);
    EXPECT_TRUE(advice().empty());
}

TEST_F(TakeAdviceTest, TimingIsTheMiddleOfTheNotesThatWereHeard) {
    EXPECT_FALSE(timingOf(take));
    tell(0, 0, Outcome::awarded, 1.70);
    tell(1, 0, Outcome::awarded, 2.29);
    tell(2, 0, Outcome::noNote);
    tell(3, 0, Outcome::tooShort, 3.35);
    EXPECT_NEAR(timingOf(take)->lateSeconds, 0.04, 1e-9);
    EXPECT_NEAR(timingOf(take)->spreadSeconds, 0.06, 1e-9);
}
