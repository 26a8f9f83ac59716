#include "tools/zanto-song/Take.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "audio/QuietDescriptor.h"
#include "audio/RingBuffer.h"
#include "game/Score.h"
#include "game/Song.h"
#include "tests/support/TemporaryFolder.h"
#include "tools/common/DataFolder.h"
#include "tools/zanto-song/Performance.h"
#include "tools/zanto-song/Render.h"

namespace {

using Outcome = TakenNote::Outcome;
using Cause = TakenPenalty::Cause;

constexpr double c5Hz = 523.25;
constexpr double cSharp5Hz = 554.37;
constexpr double d5Hz = 587.33;
constexpr double e5Hz = 659.26;

constexpr const char* variedSong = "1 1\nC\nE\nG2\n\nC E\n\nF3\n\n\nD\nC\n";

class Samples : public SampleSource {
public:
    explicit Samples(const std::vector<float>& samples_) : samples(samples_) {}

    std::size_t read(float* into, std::size_t count) override {
        const std::size_t taken = std::min(count, samples.size() - used);
        std::copy_n(samples.data() + used, taken, into);
        used += taken;
        return taken;
    }

private:
    const std::vector<float>& samples;
    std::size_t used = 0;
};

// Notes that are awarded or not held long enough, and penalties for those that ring on, are shown by the
// example of the documentation, and that equal recordings give equal reports.
class TakeTest : public testing::Test {
protected:
    // A recording of sines; what is not filled is silence.
    struct Tone {
        double fromSeconds;
        double toSeconds;
        double frequencyHz;
        double amplitude = 0.3;
    };
    static std::vector<float> sines(double seconds, const std::vector<Tone>& tones) {
        std::vector<float> recording(static_cast<std::size_t>(seconds * SampleSource::sampleRate));
        for (const Tone& tone : tones) {
            const auto begin = static_cast<std::size_t>(tone.fromSeconds * SampleSource::sampleRate);
            const auto end = static_cast<std::size_t>(tone.toSeconds * SampleSource::sampleRate);
            for (std::size_t index = begin; index < end; ++index) {
                const double angle = 6.283185307179586 * tone.frequencyHz *
                                     static_cast<double>(index - begin) / SampleSource::sampleRate;
                recording.at(index) += static_cast<float>(tone.amplitude * std::sin(angle));
            }
        }
        return recording;
    }

    std::vector<float> rendered(const PlayingStyle& style) const {
        Renderer renderer(perform(song, style), songSeconds(song), *findInstrument("flute"));
        std::vector<float> recording(static_cast<std::size_t>(songSeconds(song) * Renderer::sampleRate));
        EXPECT_EQ(renderer.next(recording), recording.size());
        return recording;
    }

    void load(const std::string& text) { EXPECT_TRUE(song.load(folder.write("song.txt", text).c_str())); }
    Take play(const std::vector<float>& recording, double startSeconds = 0.0) {
        const QuietDescriptor quiet(1);
        Samples source(recording);
        return playTake(song, source, startSeconds);
    }
    Take play(const std::string& text, const std::vector<float>& recording, double startSeconds = 0.0) {
        load(text);
        return play(recording, startSeconds);
    }

    TemporaryFolder folder;
    WorkingFolder data{ZANTO_DATA_FOLDER};
    Song song;
};

}  // namespace

TEST_F(TakeTest, TheSongMayBeginLaterInTheRecordingAndOutlastIt) {
    const std::vector<float> recording = sines(8.0, {{4.05, 4.5, c5Hz}});
    EXPECT_EQ(play("1 1\nC\n", recording).score, 0.0);
    const Take take = play("1 1\nC\n", recording, 2.3);
    EXPECT_EQ(take.score, 100.0);
    EXPECT_DOUBLE_EQ(take.notes[0].dueSeconds, 4.05);
    EXPECT_NEAR(*take.notes[0].heardSeconds, 4.1, 0.06);
    EXPECT_EQ(take.frames.at(200).counts[0], 1);
    EXPECT_NEAR(take.frames.at(200).levelsDb[0], -10.5, 1.0);
    const Take longer = play("1 1\nC\n\nE\n", sines(2.3, {{1.75, 2.2, c5Hz}}));
    EXPECT_EQ(longer.notes[0].outcome, Outcome::awarded);
    EXPECT_EQ(longer.notes[1].outcome, Outcome::recordingOver);
    EXPECT_TRUE(play("1 1\n", sines(1.0, {{0.0, 1.0, c5Hz}})).notes.empty());
}

TEST_F(TakeTest, TheScoreIsTheSumOfWhatIsToldAndWhatTheGamesOwnStepsGive) {
    for (const PlayingStyle& style : {PlayingStyle{4, -0.2, 0.0}, PlayingStyle{5, -0.05, 0.05}}) {
        load(variedSong);
        const std::vector<float> recording = rendered(style);
        const Take take = play(recording);
        double sum = 0.0;
        int awarded = 0;
        for (const TakenNote& note : take.notes) {
            sum += note.points;
            awarded += note.outcome == Outcome::awarded ? 1 : 0;
        }
        for (const TakenPenalty& penalty : take.penalties) {
            sum += penalty.points;
        }
        EXPECT_EQ(take.score, sum);

        load(variedSong);
        const QuietDescriptor quiet(1);
        NoteEstimation estimation;
        const auto ring = boost::make_shared<RingBuffer>(20480u);
        Score score(0.0f, 0.0f);
        std::size_t delivered = 0;
        for (int frame = 0; !song.complete(frame / 100.0 - 2.0); ++frame) {
            for (; delivered + 1024 <= static_cast<std::size_t>(frame) * 480; delivered += 1024) {
                ring->append(recording.data() + delivered, 1024);
            }
            estimation.update(ring, 0.01);
            song.updateScore(score, frame / 100.0 - 2.0, estimation.getNoteState());
        }
        EXPECT_EQ(take.score, static_cast<double>(score.getValue()));
        load(variedSong);
        EXPECT_EQ(rescore(song, take.frames), take.score);
        // An octave low, late and without a gap there are awards, misses and penalties.
        EXPECT_GT(awarded, style.octave == 4 ? 0 : 3);
        EXPECT_TRUE(style.octave != 4 || (!take.penalties.empty() && awarded < 8));
    }
}

TEST_F(TakeTest, NotesThatAreNotHeardSayWhatWas) {
    struct Case {
        std::vector<Tone> tones;
        Outcome outcome;
        double loudestDb;
        std::vector<Notes::NoteID> others;
    };
    const double silentDb = -std::numeric_limits<double>::infinity();
    const std::vector<Case> cases = {
        {{{1.7, 2.0, d5Hz}, {2.0, 2.1, e5Hz}}, Outcome::otherNotes, -10.5, {1, 2}},
        {{{1.5, 2.6, cSharp5Hz}}, Outcome::noNote, -10.5, {}},
        {{{1.5, 2.6, c5Hz, 0.0001}}, Outcome::tooSoft, -80.0, {}},
        {{}, Outcome::tooSoft, silentDb, {}},
    };
    for (const Case& example : cases) {
        const Take take = play("1 1\nC\n", sines(4.0, example.tones));
        const TakenNote& note = take.notes[0];
        EXPECT_EQ(note.outcome, example.outcome);
        EXPECT_TRUE(note.loudestDb == example.loudestDb || std::abs(note.loudestDb - example.loudestDb) < 1.5)
            << note.loudestDb;
        EXPECT_EQ(note.others, example.others);
        EXPECT_EQ(take.minDecibel, -65.0);
    }
}

TEST_F(TakeTest, PenaltiesForNotesThatComeEarlyOrThatNothingAsksFor) {
    const Take early = play("1 1\n\nE2\n\n", sines(5.0, {{1.7, 3.2, e5Hz}}));
    ASSERT_EQ(early.penalties.size(), 1u);
    EXPECT_EQ(early.penalties[0].cause, Cause::early);
    EXPECT_EQ(early.penalties[0].causeSlot, 1u);
    // Another note, and the same one again, which is no ringing on.
    for (const double frequencyHz : {d5Hz, c5Hz}) {
        const Take take = play("1 1\nC\n\n\n\n", sines(5.0, {{1.75, 2.2, c5Hz}, {2.8, 3.2, frequencyHz}}));
        ASSERT_EQ(take.penalties.size(), 1u);
        EXPECT_EQ(take.penalties[0].slot, 2u);
        EXPECT_EQ(take.penalties[0].note, frequencyHz == d5Hz ? 1 : 0);
        EXPECT_EQ(take.penalties[0].cause, Cause::notAskedFor);
    }
}
