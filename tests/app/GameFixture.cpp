#include "tests/app/GameFixture.h"

#include <algorithm>
#include <filesystem>
#include <functional>

#include "audio/AudioInput.h"

void GameFixture::supply(const std::filesystem::path& data) {
    for (const char* name : {"Fonts", "Images"}) {
        std::filesystem::create_directory_symlink(data / name, folder->path() / name);
    }
    folder->write("notes.txt", "C 2 257.8 269.5\nA 2 433.6 445.3\n");
    folder->write("Songs/listing.txt", "Scale scale.txt Short short.txt\n");
    folder->write("Songs/scale.txt", "1 1\nC\n\nD\n\nE\n\nF\n\nG\n\nA\n\nB\n");
    folder->write("Songs/short.txt", "1 1\nA");
    // A note without length is awarded unplayed; the rests after it keep the song going.
    folder->write("Songs/gift.txt", "1 1\nC0" + std::string(200, '\n'));
}

void GameFixture::SetUp() {
    const std::filesystem::path data = std::filesystem::current_path();
    constexpr std::int64_t noon = 43200000000;  // microseconds
    fakeclock::set(noon);
    fakeglut::reset(screenWidth, screenHeight);
    scriptedaudio::reset();
    folder = std::make_unique<TemporaryFolder>();
    supply(data);
    audio = scriptedaudio::recording();
    testing::internal::CaptureStdout();
    win = std::make_unique<Win>(audio);
    printed = testing::internal::GetCapturedStdout();
}

void GameFixture::TearDown() {
    win.reset();
    wt::wtWindowManager::clear();
}

void GameFixture::frame() {
    testing::internal::CaptureStdout();
    fakeglut::state().display();
    printed = testing::internal::GetCapturedStdout();
}

void GameFixture::frameAfter(double seconds) {
    fakeclock::advance(seconds);
    frame();
}

void GameFixture::frames(int count) {
    for (int i = 0; i < count; ++i) {
        frame();
    }
}

void GameFixture::sound(const std::vector<double>& frequenciesHz, double amplitude) {
    constexpr double wholeBuffer = 0.5;  // seconds, more than the ring buffer holds
    std::vector<float> mixed = scriptedaudio::tone(0.0, 0.0, wholeBuffer);
    for (const double hertz : frequenciesHz) {
        const std::vector<float> tone = scriptedaudio::tone(hertz, amplitude, wholeBuffer);
        std::transform(mixed.begin(), mixed.end(), tone.begin(), mixed.begin(), std::plus<>());
    }
    scriptedaudio::speak(*audio, mixed);
}

int GameFixture::analyses() const {
    return static_cast<int>(std::count(printed.begin(), printed.end(), '\n'));
}

void GameFixture::click(const wt::wtWidget& widget) const {
    constexpr int left = 0;
    const widgets::Pixel at = widgets::middle(widget, screenWidth, screenHeight);
    fakeglut::state().passive(at.x, at.y);
    fakeglut::state().mouse(left, 0, at.x, at.y);
    fakeglut::state().mouse(left, 1, at.x, at.y);
}
