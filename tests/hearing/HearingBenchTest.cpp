#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"
#include "bench/hearing/Judge.h"
#include "bench/hearing/Page.h"
#include "bench/hearing/Tables.h"
#include "bench/hearing/Voice.h"
#include "tests/support/TemporaryFolder.h"

// That the bench measures what it says.

namespace {

constexpr double pi = 3.14159265358979323846;

std::vector<float> sine(double frequencyHz, double amplitude, double fromSeconds, double toSeconds,
                        double seconds) {
    std::vector<float> sound(static_cast<std::size_t>(seconds * soundRateHz), 0.0f);
    for (std::size_t i = 0; i < sound.size(); ++i) {
        double const t = static_cast<double>(i) / soundRateHz;
        if (t >= fromSeconds && t < toSeconds) {
            sound[i] = static_cast<float>(amplitude * std::sin(2.0 * pi * frequencyHz * t));
        }
    }
    return sound;
}

Take takeOf(int pitch) {
    return {Trial::plain, {pitch}, Touch()};
}

class HearingBench : public testing::Test {
protected:
    void SetUp() override {
        ::unsetenv("ZANTO_MIN_DECIBEL");
        testing::internal::CaptureStdout();
    }
    void TearDown() override { testing::internal::GetCapturedStdout(); }

    std::string const table = readText("notes.txt");
};

}  // namespace

TEST_F(HearingBench, aReplayHoldsTheNotesThatTheGameHoldsWhileItListens) {
    // A scale in which every note fades into the next.
    std::vector<float> sound(static_cast<std::size_t>(4 * soundRateHz), 0.0f);
    for (int note = 0; note < 7; ++note) {
        double const startSeconds = 0.3 + 0.45 * note;
        mix(sound,
            sine(523.25 * std::exp2(note / 6.0), 0.2 / (1 + note), startSeconds, startSeconds + 0.6, 4.0),
            1.0);
    }
    Recording const recording = listen(sound, usualMinDecibel, false);
    std::vector<std::vector<float>> replayed;
    Listener listener(table);
    listener.replay(recording, [&](double, NoteState const& held) {
        std::vector<float> counts;
        for (int note = 0; note < 7; ++note) {
            counts.push_back(held.downCount(note));
        }
        replayed.push_back(counts);
    });

    auto const ring = boost::shared_ptr<RingBuffer>(new RingBuffer(20 * 1024));
    NoteEstimation game;
    std::size_t appended = 0;
    std::size_t framesWithNotes = 0;
    for (std::size_t frame = 0; frame < replayed.size(); ++frame) {
        for (; (appended + 1) * 1024 <= frame * 480; ++appended) {
            ring->append(&sound[appended * 1024], 1024);
        }
        game.update(ring, 0.01);
        for (int note = 0; note < 7; ++note) {
            EXPECT_EQ(game.getNoteState().downCount(note), replayed[frame][static_cast<std::size_t>(note)])
                << "frame " << frame << ", note " << note;
            framesWithNotes += game.getNoteState().isDown(note) ? 1 : 0;
        }
    }
    EXPECT_GT(framesWithNotes, 100u);
}

TEST_F(HearingBench, aPureToneIsRightFromATenthOfASecondOnAndForAsLongAfterItsEnd) {
    Recording const recording = listen(
        sine(523.25, 0.3, attackSeconds, attackSeconds + holdSeconds, takeSeconds), usualMinDecibel, true);
    Listener listener(table);
    Hearing const asC = judge(takeOf(72), recording, listener);
    EXPECT_EQ(asC.right, 1.0);
    EXPECT_EQ(asC.wrong, 0.0);
    EXPECT_EQ(asC.peerRight, 1.0);
    EXPECT_EQ(asC.peerWrong, 0.0);
    ASSERT_TRUE(asC.latencySeconds);
    EXPECT_GT(*asC.latencySeconds, 0.04);
    EXPECT_LT(*asC.latencySeconds, 0.12);
    EXPECT_GT(asC.tailSeconds, 0.08);
    EXPECT_LT(asC.tailSeconds, 0.2);

    Hearing const asD = judge(takeOf(74), recording, listener);
    EXPECT_EQ(asD.right, 0.0);
    EXPECT_EQ(asD.wrong, 1.0);
    EXPECT_EQ(asD.peerWrong, 1.0);
    EXPECT_FALSE(asD.latencySeconds);
}

TEST_F(HearingBench, aChordIsRightForTheShareOfItsNotesThatIsHeard) {
    Recording const recording = listen(
        sine(523.25, 0.3, attackSeconds, attackSeconds + holdSeconds, takeSeconds), usualMinDecibel, true);
    Listener listener(table);
    Hearing const hearing = judge({Trial::chord, {72, 76}, Touch()}, recording, listener);
    EXPECT_EQ(hearing.right, 0.5);
    EXPECT_EQ(hearing.wrong, 0.0);
}

TEST_F(HearingBench, recordingsComeBackFromTheirFileAsTheyWere) {
    TemporaryFolder const folder;
    std::string const path = (folder.path() / "a.takes").string();
    std::vector<Recording> const written = {{{{{45, -20.5f}, {90, -22.25f}}, {}}, {523.25f, 0.0f}}, {}};
    writeRecordings(path, written);
    std::vector<Recording> const read = readRecordings(path);
    ASSERT_EQ(read.size(), 2u);
    ASSERT_EQ(read[0].blocks.size(), 2u);
    ASSERT_EQ(read[0].blocks[0].size(), 2u);
    EXPECT_EQ(read[0].blocks[0][1].bin, 90);
    EXPECT_EQ(read[0].blocks[0][1].levelDb, -22.25f);
    EXPECT_TRUE(read[0].blocks[1].empty());
    EXPECT_EQ(read[0].peerHz, written[0].peerHz);
    EXPECT_TRUE(read[1].blocks.empty());
    EXPECT_TRUE(readRecordings(path + ".none").empty());
}

TEST_F(HearingBench, theSearchFindsTheNoteOfABinThatATableLacks) {
    BinMapSearch search;
    search.add(takeOf(72), listen(sine(523.25, 0.3, 0.2, 1.2, takeSeconds), usualMinDecibel, false));
    BinMap const map = search.best({}, 0.5);
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(map.at(45), 0);  // 527.3 Hz
    // Where nothing speaks for a bin, it stays as it was.
    EXPECT_EQ(search.best({{60, 3}}, 0.5).at(60), 3);
}

TEST_F(HearingBench, aBinMapSurvivesBeingWrittenAsATable) {
    BinMap const map = binMapOf(table);
    EXPECT_GT(map.size(), 50u);
    EXPECT_EQ(binMapOf(tableText(map)), map);
}

TEST_F(HearingBench, aFaithfulPerformanceBeginsEveryNoteAsItsWindowOpens) {
    TemporaryFolder const folder;
    Song song;
    ASSERT_TRUE(song.load(folder.write("song.txt", "1 1\nC2\n\nB").c_str()));
    std::vector<NoteEvent> const notes = performance(song, 5, 0.1);
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(notes[0].pitch, 72);
    EXPECT_DOUBLE_EQ(notes[0].startSeconds, 0.75);  // song time -0.25 s
    EXPECT_DOUBLE_EQ(notes[0].endSeconds, 1.65);
    EXPECT_EQ(notes[1].pitch, 83);
    EXPECT_DOUBLE_EQ(notes[1].startSeconds, 1.75);
}

TEST_F(HearingBench, aQuietRoomHasNoNotesAndAHummingOneHas) {
    Listener listener(table);
    FalseNotes const silent =
        falseNotes(listen(std::vector<float>(2 * soundRateHz, 0.0f), usualMinDecibel, false), listener);
    EXPECT_EQ(silent.perMinute, 0.0);
    EXPECT_EQ(silent.share, 0.0);
    FalseNotes const humming =
        falseNotes(listen(sine(440.0, 0.1, 0.0, 2.0, 2.0), usualMinDecibel, false), listener);
    EXPECT_NEAR(humming.perMinute, 30.0, 1.0);  // one note in two seconds
    EXPECT_NEAR(humming.longOnesPerMinute, 30.0, 1.0);
    EXPECT_GT(humming.share, 0.9);
}

TEST_F(HearingBench, aPageWithAnUnknownFigureIsRefused) {
    EXPECT_EQ(fillIn("a {{b}} c", {{"b", "1"}}), "a 1 c");
    EXPECT_THROW(fillIn("a {{x}} c", {{"b", "1"}}), std::runtime_error);
    EXPECT_THROW(fillIn("a {{b", {{"b", "1"}}), std::runtime_error);
}
