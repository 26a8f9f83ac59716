#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "analysis/Notes.h"
#include "bench/hearing/Judge.h"
#include "bench/hearing/Results.h"
#include "bench/hearing/SongRun.h"
#include "bench/hearing/Take.h"

// What the whole chain of ring buffer, analysis, note table, held notes and scoring makes of a few sampled
// instruments, against the figures measured when the present note table was chosen. They stand beside each
// case and are what these tests record as properties (--gtest_output=xml).

namespace {

/// How much worse than its figure a case may get, in percentage points of frames or notes. No penalty more is
/// allowed.
constexpr double margin = 1.0;

struct Expected {
    double right;  ///< percent of the frames of its dry naturals, medium loud
    double wrong;
    double awards;  ///< percent of the notes of a song, 0.08 s ahead
    int penalties;
};

struct Case {
    const char* player;
    Expected plain;  ///< the song in its highest octave
    Expected fine;   ///< in its lowest one
};

constexpr const char* testSong = "Twinkle_Twinkle";

std::size_t placeOf(const std::string& name) {
    std::size_t place = 0;
    while (orchestra().at(place).name != name) {
        ++place;
    }
    return place;
}

Studio& studio() {
    static Studio opened;
    return opened;
}

class HearingOf : public testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        ::unsetenv("ZANTO_MIN_DECIBEL");
        // The analysis says on standard output what it hears in every frame.
        testing::internal::CaptureStdout();
    }
    void TearDown() override { testing::internal::GetCapturedStdout(); }

    static void expectFrames(const std::string& ear, const std::vector<Heard>& heard,
                             const Expected& expected) {
        const Mean mean = meanOf(heard, isNatural);
        RecordProperty(ear + "_right", std::to_string(100.0 * mean.hearing.right));
        RecordProperty(ear + "_wrong", std::to_string(100.0 * mean.hearing.wrong));
        EXPECT_GE(100.0 * mean.hearing.right, expected.right - margin) << ear;
        EXPECT_LE(100.0 * mean.hearing.wrong, expected.wrong + margin) << ear;
    }

    void expectAwards(const std::string& ear, const ShippedSong& song, int octave, Listener& listener,
                      const Expected& expected) const {
        const Recording recording = listen(
            studio().sound(player(), performance(*song.song, octave, 0.0), performanceSeconds(*song.song)),
            usualMinDecibel);
        const Outcome outcome = outcomes(song, recording, listener, {0.08}).front();
        const double awards = 100.0 * outcome.awards / song.notes;
        RecordProperty(ear + "_awards", std::to_string(awards));
        RecordProperty(ear + "_penalties", outcome.penalties);
        EXPECT_GE(awards, expected.awards - margin) << ear;
        EXPECT_LE(outcome.penalties, expected.penalties) << ear;
    }

    const Player& player() const { return orchestra()[placeOf(GetParam().player)]; }

    Listener plain = Listener(readText("notes.txt"));
    Listener fine = Listener::fine();
};

std::string nameOf(const testing::TestParamInfo<Case>& info) {
    std::string name = info.param.player;
    for (char& letter : name) {
        letter = letter == ' ' ? '_' : letter;
    }
    return name;
}

}  // namespace

TEST_P(HearingOf, NaturalsIsAsGoodAsItWas) {
    std::vector<Heard> byPlain;
    std::vector<Heard> byFine;
    for (const Take& take : takesOf(player())) {
        const bool isAsked =
            take.trial == Trial::plain && !take.touch.room && take.touch.velocity == mediumVelocity;
        if (isAsked && Notes::ofSemitone(take.pitches.front()) != -1) {
            const Recording recording = listen(studio().sound(player(), take), usualMinDecibel);
            if (octaveOf(take.pitches.front()) >= lowestTableOctave) {
                byPlain.push_back({0, take, judge(take, recording, plain)});
            }
            byFine.push_back({0, take, judge(take, recording, fine)});
        }
    }
    expectFrames("plain", byPlain, GetParam().plain);
    expectFrames("fine", byFine, GetParam().fine);
}

TEST_P(HearingOf, ASongEarnsWhatItDid) {
    for (const ShippedSong& song : shippedSongs(".")) {
        if (song.title == testSong) {
            expectAwards("plain", song, player().playsOctave(5) ? 5 : 4, plain, GetParam().plain);
            expectAwards("fine", song, player().playsOctave(3) ? 3 : 4, fine, GetParam().fine);
            return;
        }
    }
    FAIL() << testSong << " is not among the songs";
}

INSTANTIATE_TEST_SUITE_P(
    , HearingOf,
    testing::Values(Case{"grand piano", {100.0, 0.0, 100.0, 1}, {100.0, 0.0, 100.0, 0}},
                    Case{"violin", {99.5, 3.7, 100.0, 5}, {100.0, 0.0, 100.0, 0}},
                    Case{"alto saxophone", {88.7, 28.7, 100.0, 1}, {100.0, 0.0, 100.0, 0}},
                    Case{"clarinet", {98.3, 26.7, 100.0, 0}, {100.0, 0.0, 100.0, 0}},
                    Case{"flute", {100.0, 3.1, 100.0, 1}, {100.0, 0.0, 100.0, 0}},
                    Case{"recorder", {100.0, 0.0, 100.0, 1}, {100.0, 0.0, 100.0, 0}}),
    nameOf);
