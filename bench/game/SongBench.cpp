// What a song costs by its length: drawing it, judging it, loading it. README.md has the command.

#include <GL/gl.h>
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <fstream>
#include <iostream>
#include <memory>
#include <string>

#include "analysis/NoteState.h"
#include "bench/support/RatioReporter.h"
#include "game/Rules.h"
#include "game/Score.h"
#include "game/Song.h"
#include "scene/Globals.h"
#include "tests/support/GameCamera.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr int widthPx = 64;  // small: what is measured is the drawing's issue, not its pixels
constexpr int heightPx = 48;
constexpr double frameSeconds = 0.01;
constexpr int longest = 1000000;  // slots

/// A melody with chords, rests and long notes, over and over.
std::string songText(int slots) {
    static const char* const bar[] = {"C", "E2", "", "G A", "B", "F3", "", "", "D", "C E G"};
    std::string text = "120 4\n";
    for (int slot = 0; slot < slots; ++slot) {
        text += bar[slot % 10];
        if (slot + 1 < slots) {
            text += '\n';
        }
    }
    return text;
}

std::string songName(int slots) {
    return "song" + std::to_string(slots) + ".txt";
}

/// A song that is half over, with notes hit and missed around its middle.
struct Play {
    explicit Play(int slots) : middle(slots / 2 / rules::slotsPerSecond) {
        score.setFont(Globals::getInstance().getDefaultFont(), 0.8f);
        if (!song.load(songName(slots).c_str())) {
            std::cerr << "the song was not loaded" << std::endl;
        }
        heldNotes.notesDown({0, 2}, 1.0f);
        for (double t = middle - 5.0; t < middle; t += frameSeconds) {
            judge(t);
        }
    }
    void judge(double t) {
        song.updateScore(score, t, heldNotes);
        song.animate(frameSeconds);
    }

    double middle;  ///< seconds of song time
    Song song;
    Score score{-5.5f, -4.0f};
    NoteState heldNotes;
};

void draw(benchmark::State& state, int slots) {
    Play play(slots);
    for (auto _ : state) {
        glPushMatrix();
        play.song.draw(play.middle);
        glPopMatrix();
        state.PauseTiming();
        glFinish();
        state.ResumeTiming();
    }
}

void score(benchmark::State& state, int slots) {
    Play play(slots);
    constexpr int framesAround = 1000;
    int frame = 0;
    for (auto _ : state) {
        play.judge(play.middle + frame * frameSeconds);
        frame = (frame + 1) % framesAround;
    }
}

void load(benchmark::State& state) {
    const std::string name = songName(longest);
    for (auto _ : state) {
        Song song;
        benchmark::DoNotOptimize(song.load(name.c_str()));
    }
}

void readLines(benchmark::State& state) {
    const std::string name = songName(longest);
    for (auto _ : state) {
        std::ifstream file(name);
        std::size_t bytes = 0;
        for (std::string line; std::getline(file, line);) {
            bytes += line.size();
        }
        benchmark::DoNotOptimize(bytes);
    }
}

std::size_t bytesInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// What a song of a million slots takes of memory, beside its marks.
void reportMemory() {
    const std::size_t before = bytesInUse();
    Song song;
    song.load(songName(longest).c_str());
    const std::size_t taken = bytesInUse() - before;
    std::size_t marks = 0;
    for (const auto& slot : song.getSlots()) {
        marks += slot.size();
    }
    const std::size_t bytesOfMarks = marks * sizeof(Song::NoteMark);
    std::fprintf(stderr, "%zu slots: %.1f MiB, of it %.1f MiB for %zu marks; %.1f bytes a slot beyond them\n",
                 song.getSlots().size(), static_cast<double>(taken) / 1048576.0,
                 static_cast<double>(bytesOfMarks) / 1048576.0, marks,
                 static_cast<double>(taken - bytesOfMarks) / static_cast<double>(song.getSlots().size()));
}

}  // namespace

int main(int argc, char** argv) {
    const OffscreenGL gl(widthPx, heightPx);
    // The typeface is found in the game's data folder; the songs are written elsewhere.
    Globals::getInstance();
    const TemporaryFolder folder;
    for (const int slots : {100, 10000, longest}) {
        folder.write(songName(slots), songText(slots));
    }
    lookThroughGameCamera(static_cast<double>(widthPx) / heightPx);
    reportMemory();

    for (const int slots : {100, 10000, longest}) {
        benchmark::RegisterBenchmark(("draw/" + std::to_string(slots)).c_str(), draw, slots);
        benchmark::RegisterBenchmark(("score/" + std::to_string(slots)).c_str(), score, slots);
    }
    benchmark::RegisterBenchmark("load", load);
    benchmark::RegisterBenchmark("readLines", readLines);
    return runBenchmarks(argc, argv,
                         {{"draw/10000", "draw/100"},
                          {"draw/1000000", "draw/100"},
                          {"score/10000", "score/100"},
                          {"score/1000000", "score/100"},
                          {"load", "readLines"}});
}
