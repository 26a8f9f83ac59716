// Any song, any notes held, and a clock that jumps: Song against the plain rules step by step, and against
// the plain picture; drawing makes no OpenGL error and leaves no state behind. Random bytes do the same as a
// unit test (SongAgainstPlainTest).

#include <GL/gl.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "game/Score.h"
#include "game/Song.h"
#include "tests/fuzz/Input.h"
#include "tests/game/PlainSong.h"
#include "tests/support/GameCamera.h"
#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr double farthest = 1000.0;  // seconds; from there on no float holds a place on the track exactly

/// A song mostly with notes of usual lengths, which is read without an error: up to 32 slots, up to 20 times.
std::string inventedSong(Input& input) {
    std::string text;
    const int times = input.upTo(3) == 0 ? input.upTo(20) : 1;
    for (int slots = input.upTo(31); slots > 0; --slots) {
        const int notes = input.upTo(5);
        for (int i = 0; i < notes; ++i) {
            const int kind = input.byte();
            text += i > 0 ? " " : "";
            text += "CDEFGAB"[kind % 7];
            if (kind >= 250) {
                text += std::to_string(input.raw<std::int32_t>());
            } else if (kind >= 240) {
                text += std::to_string(input.raw<std::int16_t>() / 64);
            } else if (kind >= 128) {
                text += std::to_string(kind % 6);
            }
        }
        text += "\n";
    }
    std::string song = "1 1\n";
    for (int time = 0; time < times; ++time) {
        song += text;
    }
    return song;
}

void compare(const Song& song, const PlainSong& plain) {
    require(song.getSlots().size() == plain.slots.size(), "a song's length stays");
    for (std::size_t i = 0; i < plain.slots.size(); ++i) {
        const auto& marks = song.getSlots()[i];
        require(marks.size() == plain.slots[i].size(), "the same penalties are given");
        int penalties = 0;
        for (std::size_t k = 0; k < marks.size(); ++k) {
            const Song::NoteMark& twin = plain.slots[i][k];
            require(marks[k].note == twin.note && marks[k].length == twin.length &&
                        marks[k].hit == twin.hit && marks[k].wrong == twin.wrong,
                    "the same notes are hit");
            require(marks[k].brightness == twin.brightness, "they have faded as much");
            penalties += marks[k].wrong ? 1 : 0;
        }
        require(penalties <= 7, "a slot has at most one penalty for each note");
    }
}

/// Where the clock goes next: mostly on by a frame.
double nextTime(Input& input, double t) {
    switch (input.upTo(7)) {
        case 0:
            return input.number();
        case 1:
            return t + input.raw<std::int8_t>() / 4.0;
        default:
            return t + input.byte() / 256.0;
    }
}

/// Draws a song; gives the lines that reach into the game camera's view, in order.
template <class AnySong>
std::vector<RecordingGL::Line> linesInView(RecordingGL& gl, AnySong& song, double t, double aspect) {
    gl.forget();
    glPushMatrix();
    song.draw(t);
    glPopMatrix();
    require(gl.errors().empty(), "drawing a song makes no OpenGL error");
    require(gl.pushed() == 0, "drawing a song leaves nothing pushed");
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

bool alike(const RecordingGL::Line& line, const RecordingGL::Line& twin) {
    return line.from == twin.from && line.to == twin.to && line.color == twin.color &&
           line.width == twin.width;
}

void drawBoth(RecordingGL& gl, Song& song, PlainSong& plain, double t, double aspect) {
    const auto actual = linesInView(gl, song, t, aspect);
    const auto expected = linesInView(gl, plain, t, aspect);
    if (std::abs(t) < farthest) {
        require(std::equal(actual.begin(), actual.end(), expected.begin(), expected.end(), alike),
                "both draw the same lines");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr double aspects[] = {4.0 / 3.0, 16.0 / 9.0, 32.0 / 9.0, 0.2, 40.0};
    const TemporaryFolder folder;
    Input input(data, size);
    RecordingGL gl;
    const RecordingFont font;
    Song song;
    require(song.load(folder.write("song.txt", inventedSong(input)).c_str()), "an orderly song is read");
    PlainSong plain;
    plain.slots = song.getSlots();
    const double aspect = aspects[input.upTo(4)];
    lookThroughGameCamera(aspect);
    Score score(0.0f, 0.0f);
    NoteState state;
    double t = -2.0;
    while (!input.empty()) {
        t = nextTime(input, t);
        const int held = input.byte();
        std::vector<Notes::NoteID> notes;
        for (int note = 0; note < 7; ++note) {
            if ((held >> note & 1) != 0) {
                notes.emplace_back(note);
            }
        }
        const bool steady = held < 128;
        const auto dtSeconds = steady ? 0.125f : input.raw<float>();
        state.notesDown(notes, dtSeconds);
        song.updateScore(score, t, state);
        plain.updateScore(t, state);
        require(score.getValue() == plain.score, "both give the same score");
        require(song.complete(t) == plain.complete(t), "both end at the same time");
        song.animate(static_cast<double>(dtSeconds));
        if (!steady) {
            drawBoth(gl, song, plain, t, aspect);
        }
    }
    drawBoth(gl, song, plain, t, aspect);
    compare(song, plain);
    return 0;
}
