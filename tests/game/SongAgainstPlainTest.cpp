// Song against PlainSong: what is fast must come to the same as what is plain.

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <random>

#include "tests/game/PlainSong.h"
#include "tests/game/SongFixture.h"
#include "tests/support/GameCamera.h"
#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

namespace {

class Chance {
public:
    explicit Chance(unsigned seed) : engine(seed) {}

    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(engine); }
    bool oneIn(int count) { return upTo(count - 1) == 0; }
    template <class T, std::size_t n>
    const T& of(const T (&choices)[n]) {
        return choices[upTo(static_cast<int>(n) - 1)];
    }

private:
    std::mt19937 engine;
};

/// Song text of which most lines are right, with everything in it that a song file may hold by mistake.
std::string randomFile(Chance& chance) {
    static const char* const headers[] = {"1 1",  "120 4", "\n60\n4", "60 4 C E", "1",     "a b",
                                          "1 1 ", "",      "-3 0x2",  "+1 +2",    "1\v\f2"};
    static const char* const lengths[] = {"",   "",   "",  "2",           "4",
                                          "12", "-3", "x", "99999999999", "-99999999999999999999"};
    static const char* const blanks[] = {" ", " ", " ", " ", "  ", "\t", "\v", "\f"};
    static const std::string faults[] = {"H", "c",        " ", "\r", std::string(1, '\0'),
                                         "7", "\xc3\xa4", "#", "C#"};
    std::string text = chance.of(headers) + std::string(chance.oneIn(20) ? "" : "\n");
    const int faultEvery = chance.oneIn(3) ? 10 : 1000;
    for (int line = chance.upTo(12); line > 0; --line) {
        const int notes = chance.oneIn(15) ? 500 + chance.upTo(30) : chance.upTo(5);
        for (int i = 0; i < notes; ++i) {
            text += i > 0 ? chance.of(blanks) : "";
            text += static_cast<char>('A' + chance.upTo(6));
            text += notes > 100 ? "" : chance.of(lengths);
            text += chance.oneIn(faultEvery) ? chance.of(faults) : "";
        }
        text += line > 1 || chance.oneIn(2) ? "\n" : "";
    }
    return text;
}

using SongAgainstPlainTest = SongFixture;

TEST_F(SongAgainstPlainTest, LoadsAndRefusesTheSameFilesInTheSameWay) {
    Chance chance(20240607);
    int loadedWhole = 0;
    int refused = 0;
    for (int round = 0; round < 1500; ++round) {
        const std::string text = randomFile(chance);
        const bool loaded = load(text);

        PlainSong plain;
        std::ostringstream report;
        std::ifstream in(path);
        ASSERT_EQ(loaded, plain.load(in, report)) << text;
        ASSERT_EQ(errors, report.str()) << text;
        ASSERT_EQ(slots(), words(plain.slots)) << text;
        (loaded && !plain.slots.empty() ? loadedWhole : refused) += 1;
    }
    EXPECT_GT(loadedWhole, 200);
    EXPECT_GT(refused, 200);
}

/// A song with long notes, now and then with very long ones and ones that reach back.
std::string randomSong(Chance& chance) {
    const int slotCount = chance.oneIn(4) ? chance.upTo(20) : chance.upTo(800);
    const int longEvery = chance.oneIn(2) ? 5 : 200;
    std::string text = "1 1\n";
    for (int i = 0; i < slotCount; ++i) {
        for (int notes = chance.upTo(3); notes > 0; --notes) {
            text += static_cast<char>('A' + chance.upTo(6));
            if (chance.oneIn(longEvery)) {
                text += std::to_string(chance.upTo(1200) - 600);
            } else if (chance.oneIn(3)) {
                text += std::to_string(chance.upTo(5));
            }
            text += notes > 1 ? " " : "";
        }
        text += "\n";
    }
    return text;
}

/// The lines that reach into the game camera's view, in order.
std::vector<RecordingGL::Line> linesInView(const RecordingGL& gl, double aspect) {
    const std::vector<RecordingGL::Line> model = gl.lines();
    const std::vector<RecordingGL::Line> eye = gl.lines(RecordingGL::Space::eye);
    const double half = halfViewWidth(aspect);
    std::vector<RecordingGL::Line> seen;
    for (std::size_t i = 0; i < eye.size(); ++i) {
        if (std::max(eye[i].from.x, eye[i].to.x) >= -half && std::min(eye[i].from.x, eye[i].to.x) <= half) {
            seen.push_back(model[i]);
        }
    }
    return seen;
}

void expectSameLines(const std::vector<RecordingGL::Line>& actual,
                     const std::vector<RecordingGL::Line>& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        ASSERT_TRUE(actual[i].from == expected[i].from && actual[i].to == expected[i].to &&
                    actual[i].color == expected[i].color && actual[i].width == expected[i].width)
            << actual[i] << "\n  where there should be\n"
            << expected[i];
    }
}

void expectSameBrightness(const std::vector<std::vector<Song::NoteMark>>& actual,
                          const std::vector<std::vector<Song::NoteMark>>& expected) {
    for (std::size_t i = 0; i < expected.size(); ++i) {
        for (std::size_t k = 0; k < expected[i].size(); ++k) {
            ASSERT_EQ(actual[i][k].brightness, expected[i][k].brightness) << "slot " << i << ", mark " << k;
        }
    }
}

TEST_F(SongAgainstPlainTest, ScoresAndDrawsTheSameThroughRandomGames) {
    static const double aspects[] = {4.0 / 3.0, 16.0 / 9.0, 32.0 / 9.0, 0.2, 40.0};
    Chance chance(19690720);
    RecordingGL gl;
    const RecordingFont font;
    std::size_t linesCompared = 0;
    for (int game = 0; game < 24; ++game) {
        ASSERT_TRUE(load(randomSong(chance))) << errors;
        PlainSong plain;
        plain.slots = song.getSlots();
        score = Score(0.0f, 0.0f);
        const double aspect = chance.of(aspects);
        lookThroughGameCamera(aspect);

        double t = -2.0;
        for (int frame = 0; frame < 40; ++frame) {
            // Most frames follow each other closely; some jump, to fade what is out of sight.
            t = chance.oneIn(10) ? chance.upTo(static_cast<int>(song.getSlots().size())) / 2.0 : t + 0.1;
            std::vector<Notes::NoteID> held;
            for (int note = 0; note < 7; ++note) {
                if (chance.oneIn(2)) {
                    held.emplace_back(note);
                }
            }
            const NoteState state = holding(held, static_cast<float>(chance.upTo(30)) * 0.1f);
            song.updateScore(score, t, state);
            plain.updateScore(t, state);
            ASSERT_EQ(score.getValue(), plain.score);
            ASSERT_EQ(slots(), words(plain.slots));
            ASSERT_EQ(song.complete(t), plain.complete(t));

            gl.forget();
            glPushMatrix();
            song.draw(t);
            glPopMatrix();
            const auto drawn = linesInView(gl, aspect);
            gl.forget();
            glPushMatrix();
            plain.draw(t);
            glPopMatrix();
            expectSameLines(drawn, linesInView(gl, aspect));
            expectSameBrightness(song.getSlots(), plain.slots);
            ASSERT_FALSE(HasFatalFailure()) << "game " << game << ", frame " << frame;
            linesCompared += drawn.size();
        }
        song.animate(5.0);
    }
    EXPECT_GT(linesCompared, 10000u);
    EXPECT_THAT(gl.errors(), testing::IsEmpty());
}

}  // namespace
