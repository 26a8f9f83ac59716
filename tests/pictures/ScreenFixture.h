#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/app/WinFixture.h"

/// Brings the game to each of its screens, the same way every time: the clock stands or moves by frames of
/// 10 ms, and the microphone hears a written-down performance.
class ScreenFixture : public WinFixture {
protected:
    ScreenFixture(int width, int height) : WinFixture(width, height) {}

    /// Nothing: the game is started by `show`.
    void SetUp() override {}

    /// Starts the game, brings up a screen by its name, and draws it at full size. Once a test.
    void show(const std::string& screen);

    static const std::vector<std::string>& screens();

private:
    void supply(const std::filesystem::path& data) override;

    void openChooser();
    /// Plays the song up to `seconds` of its time with a performance of hits, misses and wrong notes.
    void song(double seconds);
    void spectrumPanel(bool chord);

    void startSong();
    void resize(int width, int height);
    void hear(const std::string& notes);

    int songs = 0;  ///< in the listing
    std::string sounding;
};
