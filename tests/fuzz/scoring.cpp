// Any song, any notes held, and a clock that jumps: Song::updateScore against the rules step by step; the
// picture of it all makes no OpenGL error and leaves no state behind.

#include <GL/gl.h>

#include <string>

#include "game/Score.h"
#include "game/Song.h"
#include "tests/fuzz/Input.h"
#include "tests/fuzz/InputFile.h"
#include "tests/game/PlainSong.h"
#include "tests/support/RecordingFont.h"
#include "tests/support/RecordingGL.h"

namespace {

/// A song of up to 32 slots, mostly with notes of usual lengths, which is read without an error.
std::string inventedSong(Input& input) {
    std::string text = "1 1\n";
    for (int slots = input.upTo(31); slots > 0; --slots) {
        const int notes = input.upTo(5);
        for (int i = 0; i < notes; ++i) {
            const int kind = input.byte();
            text += i > 0 ? " " : "";
            text += "CDEFGAB"[kind % 7];
            if (kind >= 250) {
                text += std::to_string(input.raw<std::int32_t>());
            } else if (kind >= 128) {
                text += std::to_string(kind % 6);
            }
        }
        text += "\n";
    }
    return text;
}

void compare(const Song& song, const PlainSong& plain) {
    require(song.getSlots().size() == plain.slots.size(), "a song's length stays");
    for (std::size_t i = 0; i < plain.slots.size(); ++i) {
        const auto& marks = song.getSlots()[i];
        require(marks.size() == plain.slots[i].size(), "the same penalties are given");
        int penalties = 0;
        for (std::size_t k = 0; k < marks.size(); ++k) {
            const Song::NoteMark& twin = plain.slots[i][k];
            require(marks[k].note == twin.note && marks[k].hit == twin.hit && marks[k].wrong == twin.wrong,
                    "the same notes are hit");
            require(marks[k].brightness >= 0.0f && marks[k].brightness <= 1.0f, "a grey is a grey");
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

void draw(RecordingGL& gl, Song& song, double t) {
    glPushMatrix();
    song.draw(t);
    glPopMatrix();
    require(gl.errors().empty(), "drawing a song makes no OpenGL error");
    require(gl.pushed() == 0, "drawing a song leaves nothing pushed");
    gl.forget();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const InputFile file;
    Input input(data, size);
    file.write(inventedSong(input));
    RecordingGL gl;
    const RecordingFont font;
    Song song;
    require(song.load(file.path()), "an orderly song is read");
    PlainSong plain;
    plain.slots = song.getSlots();
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
            draw(gl, song, t);
        }
    }
    compare(song, plain);
    draw(gl, song, t);
    return 0;
}
