// What one whole frame of the game costs on a software renderer, on each of its screens: processor time of
// all threads together. The pause that ends every frame is not slept. README.md has the command.

#include <GL/gl.h>
#include <benchmark/benchmark.h>

#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <memory>
#include <string>

#include "app/Win.h"
#include "bench/support/RatioReporter.h"
#include "platform/wt/wt.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGlut.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/ScriptedAudioInput.h"
#include "tests/support/Widgets.h"

namespace {

constexpr std::int64_t noonMicroseconds = 43200000000;
constexpr int framesToSettle = 60;
constexpr const char* songName = "twinkle_twinkle.txt";
constexpr double songSeconds = 4.0;  // of playing before the measurement

struct Screen {
    std::string name;
    int widthPx;
    int heightPx;
};

/// The game on one of its screens, with a tone in its ears.
class Game {
public:
    explicit Game(const Screen& screen) : gl(screen.widthPx, screen.heightPx) {
        fakeclock::set(noonMicroseconds);
        fakeglut::reset(screen.widthPx, screen.heightPx);
        scriptedaudio::reset();
        audio = scriptedaudio::recording();
        scriptedaudio::speak(*audio, scriptedaudio::tone(523.25, 0.2, 0.5));
        win = std::make_unique<Win>(audio);
        fakeglut::state().reshape(screen.widthPx, screen.heightPx);
        if (screen.name == "chooser") {
            press(*widgets::in<wt::wtButton>("Options", "New Game"));
        } else if (screen.name != "title") {
            win->playSong(songName);
            for (double t = 0.0; t < songSeconds; t += 0.01) {
                frame();
            }
        }
        if (screen.name == "panel") {
            fakeglut::state().keyboard('f', 0, 0);
        }
        for (int i = 0; i < framesToSettle; ++i) {
            frame();
        }
    }
    ~Game() {
        win.reset();
        wt::wtWindowManager::clear();
    }
    Game(const Game&) = delete;
    Game& operator=(const Game&) = delete;

    void frame() {
        fakeglut::state().display();
        glFinish();
    }
    /// Back to the same second of the song, which must not end while it is measured.
    void hold() { fakeclock::advance(-0.01); }

private:
    void press(const wt::wtWidget& widget) {
        frame();
        const widgets::Pixel at = widgets::middle(widget, gl.width(), gl.height());
        fakeglut::state().passive(at.x, at.y);
        fakeglut::state().mouse(0, 0, at.x, at.y);
        fakeglut::state().mouse(0, 1, at.x, at.y);
    }

    OffscreenGL gl;
    boost::shared_ptr<AudioInput> audio;
    std::unique_ptr<Win> win;
};

/// Textures of the typeface belong to one context, so a process measures one screen.
void frames(benchmark::State& state, const Screen& screen) {
    Game game(screen);
    for (auto _ : state) {
        game.frame();
        game.hold();
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s title|chooser|song|panel WIDTH HEIGHT [--benchmark_...]\n", argv[0]);
        return EXIT_FAILURE;
    }
    const Screen screen{argv[1], std::atoi(argv[2]), std::atoi(argv[3])};
    argv[3] = argv[0];
    const std::string name =
        screen.name + "/" + std::to_string(screen.widthPx) + "x" + std::to_string(screen.heightPx);
    benchmark::RegisterBenchmark(name.c_str(), frames, screen)->MeasureProcessCPUTime();
    return runBenchmarks(argc - 3, argv + 3, {});
}
