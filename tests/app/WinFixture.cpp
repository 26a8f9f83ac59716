#include "tests/app/WinFixture.h"

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "audio/AudioInput.h"

namespace {

constexpr std::int64_t noon = 43200000000;               // microseconds
constexpr double cameraDistance = 10.0;                  // world units
constexpr double halfFieldOfView = 0.39269908169872414;  // radians

}  // namespace

void WinFixture::supply(const std::filesystem::path& data) {
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

void WinFixture::SetUp() {
    const std::filesystem::path data = std::filesystem::current_path();
    fakeclock::set(noon);
    fakeclock::setBroken(false);
    fakeglut::reset(screenWidth, screenHeight);
    scriptedaudio::reset();
    gl = std::make_unique<OffscreenGL>(screenWidth, screenHeight);
    folder = std::make_unique<TemporaryFolder>();
    supply(data);
    audio = scriptedaudio::recording();
    testing::internal::CaptureStdout();
    win = std::make_unique<Win>(audio);
    printed = testing::internal::GetCapturedStdout();
}

void WinFixture::TearDown() {
    if (gl) {
        EXPECT_TRUE(gl->noErrors());
    }
    win.reset();
    wt::wtWindowManager::clear();
}

void WinFixture::frame() {
    testing::internal::CaptureStdout();
    fakeglut::state().display();
    printed = testing::internal::GetCapturedStdout();
}

void WinFixture::frames(int count) {
    for (int i = 0; i < count; ++i) {
        frame();
    }
}

void WinFixture::playFor(double seconds) {
    constexpr double pause = 0.01;  // seconds that every frame sleeps
    frames(static_cast<int>(std::lround(seconds / pause)));
}

void WinFixture::sound(double frequencyHz, double amplitude) {
    constexpr double wholeBuffer = 0.5;  // seconds, more than the ring buffer holds
    scriptedaudio::speak(*audio, scriptedaudio::tone(frequencyHz, amplitude, wholeBuffer));
}

void WinFixture::silence() {
    sound(0.0, 0.0);
}

int WinFixture::analyses() const {
    return static_cast<int>(std::count(printed.begin(), printed.end(), '\n'));
}

void WinFixture::click(const wt::wtWidget& widget) const {
    constexpr int left = 0;
    const widgets::Pixel at = widgets::middle(widget, screenWidth, screenHeight);
    fakeglut::state().passive(at.x, at.y);
    fakeglut::state().mouse(left, 0, at.x, at.y);
    fakeglut::state().mouse(left, 1, at.x, at.y);
}

int WinFixture::worldPixel(double x, double y) {
    const double halfHeight = cameraDistance * std::tan(halfFieldOfView);
    const double aspect = static_cast<double>(screenWidth) / screenHeight;
    const int column = static_cast<int>((x / (halfHeight * aspect) + 1.0) / 2.0 * screenWidth);
    const int row = static_cast<int>((1.0 - y / halfHeight) / 2.0 * screenHeight);
    const auto picture = gl->read();
    return (picture.at(column, row, 0) << 16) | (picture.at(column, row, 1) << 8) |
           picture.at(column, row, 2);
}
