#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "analysis/NoteEstimation.h"
#include "audio/RingBuffer.h"
#include "bench/hearing/Judge.h"
#include "bench/hearing/SongRun.h"
#include "bench/hearing/Synth.h"
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
        const double t = static_cast<double>(i) / soundRateHz;
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

    const std::string table = readText("notes.txt");
};

}  // namespace

TEST_F(HearingBench, AReplayHoldsTheNotesThatTheGameHoldsWhileItListens) {
    // A scale in which every note fades into the next.
    std::vector<float> sound(static_cast<std::size_t>(4 * soundRateHz), 0.0f);
    for (int note = 0; note < 7; ++note) {
        const double startSeconds = 0.3 + 0.45 * note;
        mix(sound,
            sine(523.25 * std::exp2(note / 6.0), 0.2 / (1 + note), startSeconds, startSeconds + 0.6, 4.0),
            1.0);
    }
    const Recording recording = listen(sound, usualMinDecibel);
    std::vector<std::vector<float>> replayed;
    Listener listener(table);
    listener.replay(recording, [&](double, const NoteState& held) {
        std::vector<float> counts;
        for (int note = 0; note < 7; ++note) {
            counts.push_back(held.downCount(note));
        }
        replayed.push_back(counts);
    });

    const auto ring = boost::shared_ptr<RingBuffer>(new RingBuffer(20 * 1024));
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

TEST_F(HearingBench, AReplayHoldsTheNotesThatTheFineEarHears) {
    std::vector<float> sound(static_cast<std::size_t>(4 * soundRateHz), 0.0f);
    for (int note = 0; note < 7; ++note) {
        const double startSeconds = 0.3 + 0.45 * note;
        mix(sound, sine(130.81 * std::exp2(note / 6.0), 0.2, startSeconds, startSeconds + 0.6, 4.0), 1.0);
    }
    const Recording recording = listen(sound, usualMinDecibel);
    NoteEstimation game(NoteEstimation::Ear::fine);
    const auto ring = boost::shared_ptr<RingBuffer>(new RingBuffer(20 * 1024));
    std::size_t appended = 0;
    std::size_t frame = 0;
    std::size_t framesWithNotes = 0;
    Listener::fine().replay(recording, [&](double seconds, const NoteState& held) {
        EXPECT_NEAR(seconds, 0.01 * static_cast<double>(frame), 1e-9);
        for (; (appended + 1) * 1024 <= frame * 480; ++appended) {
            ring->append(&sound[appended * 1024], 1024);
        }
        game.update(ring, 0.01);
        for (int note = 0; note < 7; ++note) {
            EXPECT_EQ(game.getNoteState().downCount(note), held.downCount(note))
                << frame << ", note " << note;
            framesWithNotes += held.isDown(note) ? 1 : 0;
        }
        ++frame;
    });
    EXPECT_EQ(frame, 399u);
    EXPECT_GT(framesWithNotes, 100u);
}

TEST_F(HearingBench, APureToneIsRightFromATenthOfASecondOnAndForAsLongAfterItsEnd) {
    const Recording recording =
        listen(sine(523.25, 0.3, attackSeconds, attackSeconds + holdSeconds, takeSeconds), usualMinDecibel);
    Listener listener(table);
    const Hearing asC = judge(takeOf(72), recording, listener);
    EXPECT_EQ(asC.right, 1.0);
    EXPECT_EQ(asC.wrong, 0.0);
    ASSERT_TRUE(asC.latencySeconds);
    EXPECT_GT(*asC.latencySeconds, 0.04);
    EXPECT_LT(*asC.latencySeconds, 0.12);
    EXPECT_GT(asC.tailSeconds, 0.08);
    EXPECT_LT(asC.tailSeconds, 0.2);

    const Hearing asD = judge(takeOf(74), recording, listener);
    EXPECT_EQ(asD.right, 0.0);
    EXPECT_EQ(asD.wrong, 1.0);
    EXPECT_FALSE(asD.latencySeconds);

    Listener peer = Listener::peer();
    EXPECT_EQ(judge(takeOf(72), recording, peer).right, 1.0);
    EXPECT_EQ(judge(takeOf(74), recording, peer).wrong, 1.0);
}

TEST_F(HearingBench, LettingGoIsTimedFromTheNextNote) {
    Take take = takeOf(74);
    take.trial = Trial::legato;
    take.before = 72;
    ASSERT_EQ(take.notes().size(), 2u);
    EXPECT_DOUBLE_EQ(take.notes()[0].endSeconds, take.attack());
    std::vector<float> sound = sine(523.25, 0.3, attackSeconds, take.attack() + 0.2, take.seconds());
    mix(sound, sine(587.33, 0.3, take.attack(), take.attack() + holdSeconds, take.seconds()), 1.0);
    Listener listener(table);
    const Hearing hearing = judge(take, listen(sound, usualMinDecibel), listener);
    EXPECT_GT(hearing.tailSeconds, 0.25);
    EXPECT_LT(hearing.tailSeconds, 0.4);
    ASSERT_TRUE(hearing.latencySeconds);
    EXPECT_LT(*hearing.latencySeconds, 0.15);

    take.trial = Trial::ringing;
    EXPECT_DOUBLE_EQ(take.notes()[0].endSeconds, take.notes()[1].endSeconds);
    // The first one ends after a quarter of the time that counts.
    EXPECT_LT(judge(take, listen(sound, usualMinDecibel), listener).right, 0.9);
}

TEST_F(HearingBench, ANoteThatDiesAwayIsLateAsSoftAsItHasBecome) {
    std::vector<float> sound = sine(440.0, 0.5, attackSeconds, attackSeconds + 0.5, takeSeconds);
    mix(sound, sine(440.0, 0.05, attackSeconds + 0.5, takeSeconds, takeSeconds), 1.0);
    EXPECT_NEAR(lateLevelDb(sound, attackSeconds), -20.0, 0.1);
    EXPECT_NEAR(lateLevelDb(sine(440.0, 0.5, 0.2, 0.7, takeSeconds), attackSeconds), -100.0, 1e-9);
}

TEST_F(HearingBench, AChordIsRightForTheShareOfItsNotesThatIsHeard) {
    const Recording recording =
        listen(sine(523.25, 0.3, attackSeconds, attackSeconds + holdSeconds, takeSeconds), usualMinDecibel);
    Listener listener(table);
    const Hearing hearing = judge({Trial::chord, {72, 76}, Touch()}, recording, listener);
    EXPECT_EQ(hearing.right, 0.5);
    EXPECT_EQ(hearing.wrong, 0.0);
}

TEST_F(HearingBench, ATakeBeginsInSilenceAfterALoudOneInARoom) {
    Synth synth("/usr/share/sounds/sf2/FluidR3_GM.sf2");
    Touch loud;
    loud.velocity = loudVelocity;
    loud.room = true;
    constexpr int churchOrgan = 19;
    const std::vector<NoteEvent> notes = {{60, attackSeconds, attackSeconds + holdSeconds}};
    // A note that still sounds at the end, then one whose release does, then the reverberation alone.
    for (const double seconds : {0.8, 1.25, 2.0}) {
        synth.render(churchOrgan, notes, loud, seconds);
        const std::vector<float> next = synth.render(churchOrgan, notes, loud, takeSeconds);
        float peak = 0.0f;
        for (std::size_t i = 0; i < static_cast<std::size_t>((attackSeconds - 0.01) * soundRateHz); ++i) {
            peak = std::max(peak, std::abs(next[i]));
        }
        EXPECT_LT(peak, 1e-4f) << "after " << seconds << " s";
    }
}

TEST_F(HearingBench, RecordingsComeBackFromTheirFileAsTheyWere) {
    const TemporaryFolder folder;
    const std::string path = (folder.path() / "a.takes").string();
    const std::vector<Recording> written = {{{{{45, -20.5f}, {90, -22.25f}}, {}}, {1, 127}, {2, 0}, -6.5f},
                                            {}};
    writeRecordings(path, written);
    const std::vector<Recording> read = readRecordings(path);
    ASSERT_EQ(read.size(), 2u);
    ASSERT_EQ(read[0].blocks.size(), 2u);
    ASSERT_EQ(read[0].blocks[0].size(), 2u);
    EXPECT_EQ(read[0].blocks[0][1].bin, 90);
    EXPECT_EQ(read[0].blocks[0][1].levelDb, -22.25f);
    EXPECT_TRUE(read[0].blocks[1].empty());
    EXPECT_EQ(read[0].fineNotes, written[0].fineNotes);
    EXPECT_EQ(read[0].peerNotes, written[0].peerNotes);
    EXPECT_EQ(read[0].lateDb, -6.5f);
    EXPECT_TRUE(read[1].blocks.empty());
    EXPECT_TRUE(readRecordings(path + ".none").empty());
}

TEST_F(HearingBench, TheSearchFindsTheNoteOfABinThatATableLacks) {
    BinMapSearch search;
    search.add(takeOf(72), listen(sine(523.25, 0.3, 0.2, 1.2, takeSeconds), usualMinDecibel));
    const BinMap map = search.best({}, 0.5);
    EXPECT_EQ(map.size(), 1u);
    EXPECT_EQ(map.at(45), 0);  // 527.3 Hz
    // Where nothing speaks for a bin, it stays as it was.
    EXPECT_EQ(search.best({{60, 3}}, 0.5).at(60), 3);
}

TEST_F(HearingBench, ABinMapSurvivesBeingWrittenAsATable) {
    const BinMap map = binMapOf(table);
    EXPECT_GT(map.size(), 50u);
    EXPECT_EQ(binMapOf(tableText(map)), map);
}

TEST_F(HearingBench, AFaithfulPerformanceBeginsEveryNoteAsItsWindowOpens) {
    const TemporaryFolder folder;
    Song song;
    ASSERT_TRUE(song.load(folder.write("song.txt", "1 1\nC2\n\nB").c_str()));
    const std::vector<NoteEvent> notes = performance(song, 5, 0.1);
    ASSERT_EQ(notes.size(), 2u);
    EXPECT_EQ(notes[0].pitch, 72);
    EXPECT_DOUBLE_EQ(notes[0].startSeconds, 0.75);  // song time -0.25 s
    EXPECT_DOUBLE_EQ(notes[0].endSeconds, 1.65);
    EXPECT_EQ(notes[1].pitch, 83);
    EXPECT_DOUBLE_EQ(notes[1].startSeconds, 1.75);
}

TEST_F(HearingBench, AQuietRoomHasNoNotesAndAHummingOneHas) {
    Listener listener(table);
    const FalseNotes silent =
        falseNotes(listen(std::vector<float>(2 * soundRateHz, 0.0f), usualMinDecibel), listener);
    EXPECT_EQ(silent.perMinute, 0.0);
    EXPECT_EQ(silent.share, 0.0);
    const FalseNotes humming = falseNotes(listen(sine(440.0, 0.1, 0.0, 2.0, 2.0), usualMinDecibel), listener);
    EXPECT_NEAR(humming.perMinute, 30.0, 1.0);  // one note in two seconds
    EXPECT_NEAR(humming.longOnesPerMinute, 30.0, 1.0);
    EXPECT_GT(humming.share, 0.9);
}
