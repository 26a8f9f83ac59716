#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

#include "bench/hearing/Judge.h"
#include "bench/hearing/SongRun.h"
#include "bench/hearing/Take.h"

// What the whole chain of ring buffer, analysis, note table, held notes and scoring makes of a few sampled
// instruments, against the figures measured when the present note table was chosen. They stand beside each
// case and are what these tests record as properties (--gtest_output=xml).

namespace {

constexpr char const* soundfontPath = "/usr/share/sounds/sf2/FluidR3_GM.sf2";

/// How much worse than its figure a case may get, in percentage points of frames or notes. No penalty more is
/// allowed.
constexpr double margin = 1.0;

struct Case {
    char const* player;
    double right;  ///< percent of the frames of its dry naturals, medium loud
    double wrong;
    double awards;  ///< percent of the notes of a song in its highest octave, 0.08 s ahead
    int penalties;
};

constexpr char const* testSong = "Twinkle_Twinkle";

std::size_t placeOf(std::string const& name) {
    std::size_t place = 0;
    while (orchestra().at(place).name != name) {
        ++place;
    }
    return place;
}

Studio& studio() {
    static Studio opened(soundfontPath);
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

    Player const& player() const { return orchestra()[placeOf(GetParam().player)]; }

    Listener listener = Listener(readText("notes.txt"));
};

std::string nameOf(testing::TestParamInfo<Case> const& info) {
    std::string name = info.param.player;
    for (char& letter : name) {
        letter = letter == ' ' ? '_' : letter;
    }
    return name;
}

}  // namespace

TEST_P(HearingOf, naturalsIsAsGoodAsWhenTheTableWasChosen) {
    std::vector<Heard> heard;
    for (Take const& take : takesOf(player())) {
        bool const isAsked =
            take.trial == Trial::plain && !take.touch.room && take.touch.velocity == mediumVelocity;
        if (isAsked && naturalOf(take.pitches.front()) != -1) {
            Recording const recording = listen(studio().sound(player(), take), usualMinDecibel, false);
            heard.push_back({0, take, judge(take, recording, listener)});
        }
    }
    Mean const mean = meanOf(heard, isNatural);
    RecordProperty("right", std::to_string(100.0 * mean.hearing.right));
    RecordProperty("wrong", std::to_string(100.0 * mean.hearing.wrong));
    EXPECT_GE(100.0 * mean.hearing.right, GetParam().right - margin);
    EXPECT_LE(100.0 * mean.hearing.wrong, GetParam().wrong + margin);
}

TEST_P(HearingOf, aSongEarnsWhatItDidWhenTheTableWasChosen) {
    for (ShippedSong const& song : shippedSongs(".")) {
        if (song.title != testSong) {
            continue;
        }
        int const octave = player().playsOctave(5) ? 5 : 4;
        Recording const recording = listen(
            studio().sound(player(), performance(*song.song, octave, 0.0), performanceSeconds(*song.song)),
            usualMinDecibel, false);
        Outcome const outcome = outcomes(song, recording, listener, {0.08}).front();
        double const awards = 100.0 * outcome.awards / song.notes;
        RecordProperty("awards", std::to_string(awards));
        RecordProperty("penalties", outcome.penalties);
        EXPECT_GE(awards, GetParam().awards - margin);
        EXPECT_LE(outcome.penalties, GetParam().penalties);
        return;
    }
    FAIL() << testSong << " is not among the songs";
}

INSTANTIATE_TEST_SUITE_P(
    , HearingOf,
    testing::Values(Case{"grand piano", 100.0, 0.0, 100.0, 1}, Case{"violin", 99.5, 3.7, 100.0, 5},
                    Case{"alto saxophone", 88.7, 28.7, 100.0, 1}, Case{"clarinet", 98.3, 26.7, 100.0, 0},
                    Case{"flute", 100.0, 3.1, 100.0, 1}, Case{"recorder", 100.0, 0.0, 100.0, 1}),
    nameOf);
