#include "analysis/FineEar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <functional>
#include <limits>
#include <optional>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tests/analysis/FineEarFixture.h"
#include "tests/analysis/PlayedNotes.h"
#include "tests/support/SignalGenerators.h"

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using testing::SizeIs;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int naturals[] = {0, -1, 1, -1, 2, 3, -1, 4, -1, 5, -1, 6};

class FineEarTest : public FineEarFixture {
protected:
    /// What is heard in the end, after 0.4 s.
    std::vector<Notes::NoteID> heardOf(const std::vector<Player>& players) {
        ear = FineEar(a4Hz, transposeSemitones);
        std::vector<Notes::NoteID> last;
        listen(played(players, 0.4), [&](double, const std::vector<Notes::NoteID>& notes) { last = notes; });
        std::sort(last.begin(), last.end());
        return last;
    }

    double a4Hz = 440.0;
    int transposeSemitones = 0;
};

TEST_F(FineEarTest, EveryNaturalFromC2ToC6IsHeardAloneAndNoSharp) {
    for (int pitch = 36; pitch <= 84; ++pitch) {
        const int natural = naturals[pitch % 12];
        if (natural == -1) {
            EXPECT_THAT(heardOf({{static_cast<double>(pitch)}}), IsEmpty()) << pitch;
        } else {
            EXPECT_THAT(heardOf({{static_cast<double>(pitch)}}), ElementsAre(natural)) << pitch;
        }
    }
}

TEST_F(FineEarTest, PureToneIsANote) {
    EXPECT_THAT(heardOf({{69.0, 0.0, 100.0, 0.1, 100.0}}), ElementsAre(a));
}

TEST_F(FineEarTest, LowNotesThirdPartialIsNoNoteOfItsOwn) {
    // All partials of C2 and C3 as strong as each other: the third one, a G, is as loud as the fundamental.
    EXPECT_THAT(heardOf({{36.0, 0.0, 100.0, 0.05, 0.0}}), ElementsAre(c));
    EXPECT_THAT(heardOf({{48.0, 0.0, 100.0, 0.05, 0.0}}), ElementsAre(c));
}

TEST_F(FineEarTest, NoteWithoutItsFundamentalIsHeard) {
    Player player{41.0};
    player.firstPartial = 2;
    EXPECT_THAT(heardOf({player}), ElementsAre(f));
}

TEST_F(FineEarTest, TwoAndThreeNotesAtOnceAreHeard) {
    EXPECT_THAT(heardOf({{60.0}, {64.0}}), ElementsAre(c, e));
    EXPECT_THAT(heardOf({{60.0}, {67.0}}), ElementsAre(c, g));
    EXPECT_THAT(heardOf({{62.0}, {67.0}}), ElementsAre(d, g));
    EXPECT_THAT(heardOf({{60.0}, {64.0}, {67.0}}), ElementsAre(c, e, g));
    EXPECT_THAT(heardOf({{62.0}, {65.0}, {69.0}}), ElementsAre(d, f, a));
    EXPECT_THAT(heardOf({{60.0}, {65.0}, {69.0}}), ElementsAre(c, f, a));
}

TEST_F(FineEarTest, OctaveTogetherIsOneNote) {
    EXPECT_THAT(heardOf({{55.0}, {67.0}}), ElementsAre(g));
}

TEST_F(FineEarTest, SofterNoteOfAChordIsHeardAndAFaintOneIsNot) {
    Player second{64.0};
    second.amplitude = 0.03;
    EXPECT_THAT(heardOf({{60.0}, second}), ElementsAre(c, e));
    second.amplitude = 0.003;
    EXPECT_THAT(heardOf({{60.0}, second}), ElementsAre(c));
}

TEST_F(FineEarTest, NoteOutOfTuneByMoreThan42CentsIsNone) {
    for (const int pitch : {38, 53, 69, 83}) {
        const int natural = naturals[pitch % 12];
        EXPECT_THAT(heardOf({{pitch + 0.38}}), ElementsAre(natural)) << pitch;
        EXPECT_THAT(heardOf({{pitch - 0.38}}), ElementsAre(natural)) << pitch;
        EXPECT_THAT(heardOf({{pitch + 0.47}}), IsEmpty()) << pitch;
    }
}

TEST_F(FineEarTest, TuningMovesEveryNote) {
    a4Hz = 415.0;  // a semitone lower
    EXPECT_THAT(heardOf({{68.0}}), ElementsAre(a));
    EXPECT_THAT(heardOf({{69.0}}), IsEmpty());
}

TEST_F(FineEarTest, TranspositionGivesTheWrittenNote) {
    transposeSemitones = -2;  // a B flat clarinet: its written C sounds as B flat
    EXPECT_THAT(heardOf({{58.0}}), ElementsAre(c));
    EXPECT_THAT(heardOf({{60.0}}), ElementsAre(d));
    transposeSemitones = 24;
    EXPECT_THAT(heardOf({{38.0}}), ElementsAre(d));
}

TEST_F(FineEarTest, NothingQuieterThanTheThresholdIsHeard) {
    Player player{69.0};
    player.amplitude = 0.0004;  // -68 dB
    EXPECT_THAT(heardOf({player}), IsEmpty());
    player.amplitude = 0.0008;  // -62 dB
    EXPECT_THAT(heardOf({player}), ElementsAre(a));
}

TEST_F(FineEarTest, NoteThatFadesBelowTheThresholdIsKeptForAWhile) {
    Player string{69.0};
    string.amplitude = 0.0018;  // -55 dB
    string.fadeDbPerSecond = 10.0;
    double lastHeard = 0.0;
    listen(played({string}, 3.0), [&](double seconds, const std::vector<Notes::NoteID>& notes) {
        lastHeard = notes.empty() ? lastHeard : seconds;
    });
    EXPECT_NEAR(lastHeard, 2.0, 0.15);  // -75 dB
}

TEST_F(FineEarTest, QuietLowNoteIsHeardByPartialsBelowTheThresholdToo) {
    // Some of its partials are above -65 dB, the third one most, and the others below.
    Player player{36.0};
    player.amplitude = 0.0004;
    player.slope = 0.3;
    Player third{55.0};
    third.amplitude = 0.0006;
    third.slope = 1.0;
    EXPECT_THAT(heardOf({player, third}), ElementsAre(c));
}

TEST_F(FineEarTest, BeginningIsHeardWithin60Milliseconds) {
    for (const int pitch : {40, 52, 64, 76}) {
        ear = FineEar(440.0, 0);
        std::optional<double> first;
        listen(played({{static_cast<double>(pitch), 0.2}}, 0.5),
               [&](double seconds, const std::vector<Notes::NoteID>& notes) {
                   if (!first && !notes.empty()) {
                       first = seconds;
                   }
               });
        ASSERT_TRUE(first) << pitch;
        EXPECT_LT(*first, 0.26) << pitch;
    }
}

TEST_F(FineEarTest, WideVibratoIsOneNote) {
    // A quarter tone either way, where the next semitone would begin.
    std::vector<float> sound(96000);
    double phase = 0.0;
    for (std::size_t i = 0; i < sound.size(); ++i) {
        const double t = static_cast<double>(i) / signals::sampleRateHz;
        const double bend = 0.5 * std::min(1.0, t / 0.25) * std::sin(2.0 * 3.14159265358979323846 * 5.5 * t);
        phase += pitchHz(72.0 + bend) / signals::sampleRateHz;
        for (int partial = 1; partial <= 10; ++partial) {
            sound[i] +=
                static_cast<float>(0.1 * std::sin(2.0 * 3.14159265358979323846 * partial * phase) / partial);
        }
    }
    int missed = 0;
    listen(sound, [&](double seconds, const std::vector<Notes::NoteID>& notes) {
        missed += seconds > 0.1 && notes != std::vector<Notes::NoteID>{c} ? 1 : 0;
    });
    EXPECT_EQ(missed, 0);
}

// In a living room a sound takes half a second to fall by 60 dB.
TEST_F(FineEarTest, NoteThatEndsAsAnotherBeginsIsLetGoWithin100Milliseconds) {
    Player first{60.0};
    first.endSeconds = 0.6;
    for (const double endDbPerSecond : {120.0, 6000.0}) {
        ear = FineEar(440.0, 0);
        first.endDbPerSecond = endDbPerSecond;
        double lastC = 0.0;
        listen(played({first, {62.0, 0.6}}, 1.2),
               [&](double seconds, const std::vector<Notes::NoteID>& notes) {
                   if (std::find(notes.begin(), notes.end(), c) != notes.end()) {
                       lastC = seconds;
                   }
               });
        EXPECT_GT(lastC, 0.55) << endDbPerSecond;
        EXPECT_LT(lastC, 0.7) << endDbPerSecond;
    }
}

TEST_F(FineEarTest, NoteThatFadesAloneIsKept) {
    Player string{60.0};
    string.fadeDbPerSecond = 40.0;
    string.amplitude = 0.5;
    int missed = 0;
    listen(played({string}, 1.2), [&](double seconds, const std::vector<Notes::NoteID>& notes) {
        missed += seconds > 0.1 && notes != std::vector<Notes::NoteID>{c} ? 1 : 0;
    });
    EXPECT_EQ(missed, 0);
}

TEST_F(FineEarTest, NoteThatIsHeldWhileAnotherOneBeginsIsKept) {
    int missed = 0;
    listen(played({{60.0}, {64.0, 0.6}}, 1.2), [&](double seconds, const std::vector<Notes::NoteID>& notes) {
        missed += seconds > 0.1 && std::find(notes.begin(), notes.end(), c) == notes.end() ? 1 : 0;
    });
    EXPECT_EQ(missed, 0);
}

TEST_F(FineEarTest, NoteThatHasEndedIsHeardAgainWhenItIsPlayedAgain) {
    Player first{60.0};
    first.endSeconds = 0.6;
    first.endDbPerSecond = 120.0;
    std::vector<Notes::NoteID> last;
    listen(played({first, {62.0, 0.6}, {60.0, 0.9}}, 1.2),
           [&](double, const std::vector<Notes::NoteID>& notes) { last = notes; });
    EXPECT_THAT(last, ElementsAre(c, d));
}

TEST_F(FineEarTest, NothingIsConfirmedWhileTheClockDoesNotGoOn) {
    for (const double step : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        stepSeconds = step;
        EXPECT_THAT(heardOf({{69.0}}), IsEmpty()) << step;
    }
}

TEST_F(FineEarTest, AnyLevelsAndStepsLeaveItWhole) {
    const double values[] = {
        infinity, -infinity, std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300, 0.0, -65.0, 3000.0};
    std::vector<double> levelsDb(2048);
    for (std::size_t shift = 0; shift < std::size(values); ++shift) {
        for (std::size_t line = 0; line < levelsDb.size(); ++line) {
            levelsDb[line] = values[(line * line + line / 3 + shift) % std::size(values)];
        }
        for (const double step : values) {
            for (const double least : values) {
                const std::vector<Notes::NoteID>& notes = ear.hear(levelsDb, least, step);
                EXPECT_THAT(notes, Each(AllOf(Ge(c), Le(b))));
                EXPECT_THAT(std::set<int>(notes.begin(), notes.end()), SizeIs(notes.size()));
            }
        }
    }
    // It hears as well as before.
    std::vector<Notes::NoteID> last;
    listen(played({{69.0}}, 3.0), [&](double, const std::vector<Notes::NoteID>& notes) { last = notes; });
    EXPECT_THAT(last, ElementsAre(a));
}

// fine-ear-decisions.txt is what the ear heard when the hearing page was measured: a line each time that it
// changed, with the block and the notes. After an intended change, measure again, then replace the file by
// the one that this test leaves in its build folder.
TEST_F(FineEarTest, DecidesInMixedSoundAsWhenItWasMeasured) {
    constexpr double seconds = 48.0;
    std::mt19937 random(3);
    const auto upTo = [&](unsigned count) { return static_cast<double>(random() % count); };
    std::vector<Player> players;
    for (double start = 0.0; start < seconds; start += 0.1 + upTo(10) / 10.0) {
        Player player{36.0 + upTo(49)};
        player.pitch += upTo(3) == 0 ? upTo(100) / 100.0 - 0.5 : 0.0;
        player.startSeconds = start;
        player.endSeconds = start + 0.1 + upTo(20) / 10.0;
        player.amplitude = std::pow(10.0, -(5.0 + upTo(55)) / 20.0);
        player.slope = upTo(20) / 10.0;
        player.fadeDbPerSecond = upTo(5) * 5.0;
        player.endDbPerSecond = 40.0 + upTo(3) * 80.0;
        player.firstPartial = upTo(8) == 0 ? 2 : 1;
        players.push_back(player);
    }
    std::vector<float> sound = played(players, seconds);
    const std::vector<float> noise = signals::noise(5, 0.05f, sound.size() / 4);
    std::transform(noise.begin(), noise.end(), sound.begin(), sound.begin(), std::plus<>());

    std::ostringstream decisions;
    std::string last;
    listen(sound, [&](double heardAt, const std::vector<Notes::NoteID>& notes) {
        std::string names;
        for (const Notes::NoteID& note : notes) {
            names += Notes::idToName(note);
        }
        if (names != last) {
            decisions << std::lround(heardAt / blockSeconds) << ' ' << names << '\n';
        }
        last = names;
    });
    std::ofstream(ZANTO_FINE_EAR_DECIDES) << decisions.str();
    std::ostringstream measured;
    measured << std::ifstream(ZANTO_FINE_EAR_DECISIONS).rdbuf();
    EXPECT_EQ(decisions.str(), measured.str());
}

TEST_F(FineEarTest, FullScaleSquareWaveIsItsNote) {
    std::vector<float> square(48000);
    for (std::size_t i = 0; i < square.size(); ++i) {
        square[i] = std::fmod(static_cast<double>(i) * 440.0 / 48000.0, 1.0) < 0.5 ? 1.0f : -1.0f;
    }
    std::vector<Notes::NoteID> last;
    listen(square, [&](double, const std::vector<Notes::NoteID>& notes) { last = notes; });
    EXPECT_THAT(last, ElementsAre(a));
}

}  // namespace
