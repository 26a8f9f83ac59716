#include "tools/zanto-song/Take.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cmath>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"
#include "game/Score.h"
#include "game/Song.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/common/DataFolder.h"
#include "tools/common/QuietStream.h"
#include "tools/zanto-song/Performance.h"
#include "tools/zanto-song/Render.h"
#include "tools/zanto-song/TakeReport.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Outcome = TakenNote::Outcome;
using Cause = TakenPenalty::Cause;

constexpr double c5Hz = 523.25;
constexpr double cSharp5Hz = 554.37;
constexpr double d5Hz = 587.33;
constexpr double e5Hz = 659.26;

constexpr char const* variedSong = "1 1\nC\nE\nG2\n\nC E\n\nF3\n\n\nD\nC\n";

class TakeTest : public testing::Test {
protected:
    // A recording of sines; what is not filled is silence.
    struct Tone {
        double fromSeconds;
        double toSeconds;
        double frequencyHz;
        double amplitude = 0.3;
    };
    static SoundRecording sines(double seconds, std::vector<Tone> const& tones) {
        SoundRecording recording;
        recording.samples.resize(static_cast<std::size_t>(seconds * SoundRecording::sampleRate));
        for (Tone const& tone : tones) {
            auto const begin = static_cast<std::size_t>(tone.fromSeconds * SoundRecording::sampleRate);
            auto const end = static_cast<std::size_t>(tone.toSeconds * SoundRecording::sampleRate);
            for (std::size_t index = begin; index < end; ++index) {
                double const angle = 6.283185307179586 * tone.frequencyHz *
                                     static_cast<double>(index - begin) / SoundRecording::sampleRate;
                recording.samples.at(index) += static_cast<float>(tone.amplitude * std::sin(angle));
            }
        }
        return recording;
    }

    static SoundRecording rendered(Song const& song, PlayingStyle const& style) {
        Renderer renderer(perform(song, style), songSeconds(song), *findInstrument("flute"));
        SoundRecording recording;
        std::vector<float> block(4096);
        while (std::size_t const count = renderer.next(block)) {
            recording.samples.insert(recording.samples.end(), block.begin(),
                                     block.begin() + static_cast<std::ptrdiff_t>(count));
        }
        return recording;
    }

    Song& load(std::string const& text) {
        EXPECT_TRUE(song.load(folder.write("song.txt", text).c_str()));
        return song;
    }

    Take play(std::string const& text, SoundRecording const& recording, double startSeconds = 0.0) {
        load(text);
        return play(recording, startSeconds);
    }
    Take play(SoundRecording const& recording, double startSeconds = 0.0) {
        QuietDescriptor const quiet(1);
        return playTake(song, recording, startSeconds);
    }

    TemporaryFolder folder;
    WorkingFolder data{ZANTO_DATA_FOLDER};
    Song song;
};

double sumOf(Take const& take) {
    double sum = 0.0;
    for (TakenNote const& note : take.notes) {
        sum += note.points;
    }
    for (TakenPenalty const& penalty : take.penalties) {
        sum += penalty.points;
    }
    return sum;
}

}  // namespace

TEST_F(TakeTest, aFaithfulPerformanceIsAwardedNoteByNote) {
    std::string const text = "1 1\nC\nE\nG3\n\n\n";
    Take const take = play(text, rendered(load(text), {5, 0.0, 0.1}));
    ASSERT_EQ(take.notes.size(), 3u);
    for (TakenNote const& note : take.notes) {
        EXPECT_EQ(note.outcome, Outcome::awarded);
        EXPECT_GT(note.heldSeconds, note.neededSeconds);
        EXPECT_NEAR(*note.heardSeconds, note.dueSeconds + 0.08, 0.02);
        EXPECT_GT(note.awardedSeconds, *note.heardSeconds + note.neededSeconds - 0.02);
    }
    EXPECT_EQ(take.notes[0].points, 100.0);
    EXPECT_EQ(take.notes[2].points, 300.0);
    EXPECT_THAT(take.penalties, IsEmpty());
    EXPECT_EQ(take.score, 500.0);
}

TEST_F(TakeTest, timesAreThoseOfTheRecording) {
    Take const take = play("1 1\nC\n\nE\n", sines(5.0, {{1.75, 2.2, c5Hz}, {2.75, 3.2, e5Hz}}));
    EXPECT_DOUBLE_EQ(take.notes[0].dueSeconds, 1.75);
    EXPECT_DOUBLE_EQ(take.notes[1].dueSeconds, 2.75);
    EXPECT_NEAR(*take.notes[1].heardSeconds, 2.8, 0.06);
    EXPECT_EQ(take.score, 200.0);
}

TEST_F(TakeTest, theSongMayBeginLaterInTheRecording) {
    SoundRecording const recording = sines(8.0, {{4.05, 4.5, c5Hz}});
    EXPECT_EQ(play("1 1\nC\n", recording).score, 0.0);
    Take const take = play("1 1\nC\n", recording, 2.3);
    EXPECT_EQ(take.score, 100.0);
    EXPECT_DOUBLE_EQ(take.notes[0].dueSeconds, 4.05);
}

TEST_F(TakeTest, theScoreIsTheSumOfWhatIsTold) {
    // Played late and without a gap, an octave low: with awards, misses and penalties.
    Take const take = play(variedSong, rendered(load(variedSong), {4, -0.2, 0.0}));
    EXPECT_EQ(take.score, sumOf(take));
    EXPECT_THAT(take.penalties, testing::Not(IsEmpty()));
    auto const isAwarded = [](TakenNote const& note) { return note.outcome == Outcome::awarded; };
    EXPECT_TRUE(std::any_of(take.notes.begin(), take.notes.end(), isAwarded));
    EXPECT_FALSE(std::all_of(take.notes.begin(), take.notes.end(), isAwarded));
}

TEST_F(TakeTest, theScoreIsWhatTheGamesOwnStepsGive) {
    SoundRecording const recording = rendered(load(variedSong), {5, -0.05, 0.05});
    double const told = play(recording).score;

    load(variedSong);
    QuietDescriptor const quiet(1);
    NoteEstimation estimation;
    auto const ring = boost::make_shared<RingBuffer>(20480u);
    Score score(0.0f, 0.0f);
    std::size_t delivered = 0;
    for (int frame = 0; !song.complete(frame / 100.0 - 2.0); ++frame) {
        for (; delivered + 1024 <= static_cast<std::size_t>(frame) * 480; delivered += 1024) {
            ring->append(recording.samples.data() + delivered, 1024);
        }
        estimation.update(ring, 0.01);
        song.updateScore(score, frame / 100.0 - 2.0, estimation.getNoteState());
    }
    EXPECT_EQ(told, static_cast<double>(score.getValue()));
    EXPECT_GT(told, 300.0);
}

TEST_F(TakeTest, aNoteThatIsNotHeldLongEnough) {
    Take const take = play("1 1\nC3\n\n\n", sines(5.0, {{1.75, 2.25, c5Hz}}));
    ASSERT_EQ(take.notes[0].outcome, Outcome::tooShort);
    EXPECT_NEAR(take.notes[0].heldSeconds, 0.5, 0.1);
    EXPECT_NEAR(take.notes[0].neededSeconds, 1.175, 1e-9);
    EXPECT_EQ(take.notes[0].points, 0.0);
}

TEST_F(TakeTest, otherNotesInPlaceOfTheOneThatIsDue) {
    Take const take = play("1 1\nC\n", sines(4.0, {{1.7, 2.0, d5Hz}, {2.0, 2.1, e5Hz}}));
    EXPECT_EQ(take.notes[0].outcome, Outcome::otherNotes);
    EXPECT_THAT(take.notes[0].others, ElementsAre(1, 2));
}

TEST_F(TakeTest, aSoundThatIsNoneOfTheSevenNotes) {
    Take const take = play("1 1\nC\n", sines(4.0, {{1.5, 2.6, cSharp5Hz}}));
    EXPECT_EQ(take.notes[0].outcome, Outcome::noNote);
    EXPECT_NEAR(take.notes[0].loudestDb, 20.0 * std::log10(0.3), 1.5);
}

TEST_F(TakeTest, aSoundBelowTheLeastLevel) {
    Take const take = play("1 1\nC\n", sines(4.0, {{1.5, 2.6, c5Hz, 0.0001}}));
    EXPECT_EQ(take.notes[0].outcome, Outcome::tooSoft);
    EXPECT_NEAR(take.notes[0].loudestDb, -80.0, 1.5);
    EXPECT_EQ(take.minDecibel, -65.0);
}

TEST_F(TakeTest, silence) {
    Take const take = play("1 1\nC\n", sines(4.0, {}));
    EXPECT_EQ(take.notes[0].outcome, Outcome::tooSoft);
    EXPECT_TRUE(std::isinf(take.notes[0].loudestDb));
    EXPECT_EQ(take.score, 0.0);
}

TEST_F(TakeTest, notesAfterTheEndOfTheRecording) {
    Take const take = play("1 1\nC\n\nE\n", sines(2.3, {{1.75, 2.2, c5Hz}}));
    EXPECT_EQ(take.notes[0].outcome, Outcome::awarded);
    EXPECT_EQ(take.notes[1].outcome, Outcome::recordingOver);
}

TEST_F(TakeTest, aPenaltyForANoteThatRingsOn) {
    Take const take = play("1 1\nC\n\nE\n", sines(5.0, {{1.75, 2.7, c5Hz}}));
    ASSERT_EQ(take.penalties.size(), 1u);
    EXPECT_EQ(take.penalties[0].slot, 1u);
    EXPECT_EQ(take.penalties[0].note, 0);
    EXPECT_EQ(take.penalties[0].cause, Cause::heldOver);
    EXPECT_EQ(take.penalties[0].causeSlot, 0u);
    EXPECT_NEAR(take.penalties[0].atSeconds, 2.36, 0.011);
    EXPECT_EQ(take.penalties[0].points, -20.0);
    ASSERT_EQ(take.penalties[0].peaksHz.size(), 1u);
    EXPECT_NEAR(take.penalties[0].peaksHz[0], c5Hz, 12.0);
}

TEST_F(TakeTest, aPenaltyForANoteThatComesEarly) {
    Take const take = play("1 1\n\nE2\n\n", sines(5.0, {{1.7, 3.2, e5Hz}}));
    ASSERT_EQ(take.penalties.size(), 1u);
    EXPECT_EQ(take.penalties[0].cause, Cause::early);
    EXPECT_EQ(take.penalties[0].causeSlot, 1u);
}

TEST_F(TakeTest, aPenaltyForANoteThatNothingAsksFor) {
    Take const take = play("1 1\nC\n\n\nC\n", sines(5.0, {{1.75, 2.2, c5Hz}, {2.75, 3.2, d5Hz}}));
    ASSERT_EQ(take.penalties.size(), 1u);
    EXPECT_EQ(take.penalties[0].slot, 2u);
    EXPECT_EQ(take.penalties[0].note, 1);
    EXPECT_EQ(take.penalties[0].cause, Cause::notAskedFor);
}

TEST_F(TakeTest, playingANoteAgainWhereItIsNotAskedForIsNoRingingOn) {
    Take const take = play("1 1\nC\n\n\n\n", sines(5.0, {{1.75, 2.2, c5Hz}, {2.8, 3.2, c5Hz}}));
    ASSERT_EQ(take.penalties.size(), 1u);
    EXPECT_EQ(take.penalties[0].cause, Cause::notAskedFor);
}

TEST_F(TakeTest, aSongWithoutSlotsGivesAnEmptyTake) {
    Take const take = play(sines(1.0, {{0.0, 1.0, c5Hz}}));
    EXPECT_THAT(take.notes, IsEmpty());
    EXPECT_EQ(take.score, 0.0);
}

TEST_F(TakeTest, equalRecordingsGiveEqualReportsByteForByte) {
    std::vector<std::string> reports[2];
    for (auto& report : reports) {
        SoundRecording const recording = rendered(load(variedSong), {4, -0.1, 0.0});
        std::vector<NamedTake> const takes = {{"a.wav", play(recording)}};
        report = {textReport("s", takes), jsonReport("s", takes), csvReport("s", takes)};
    }
    EXPECT_EQ(reports[0], reports[1]);
    EXPECT_GT(reports[0][0].size(), 500u);
}
