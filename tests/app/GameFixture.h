#pragma once

#include <gtest/gtest.h>

#include <boost/shared_ptr.hpp>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "app/Win.h"
#include "platform/wt/wt.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGlut.h"
#include "tests/support/ScriptedAudioInput.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Widgets.h"

/// The game's window, with a clock, a microphone and a mouse that the test holds, on the OpenGL that it has.
class GameFixture : public testing::Test {
protected:
    /// A window of this many pixels.
    explicit GameFixture(int width = 640, int height = 480) : screenWidth(width), screenHeight(height) {}

    void SetUp() override;
    void TearDown() override;

    /// The game's own pictures and typeface, and a small note table and shelf of songs, in the folder that
    /// the window is started in.
    virtual void supply(const std::filesystem::path& data);

    /// Draws one frame; what it printed on standard output is kept in `printed`.
    void frame();
    void frameAfter(double seconds);
    void frames(int count);

    /// Fills the microphone's ring buffer with tones, which then sound for ever, or with silence.
    void sound(const std::vector<double>& frequenciesHz, double amplitude);
    void sound(double frequencyHz, double amplitude) { sound(std::vector{frequencyHz}, amplitude); }
    void silence() { sound({}, 0.0); }

    /// How many analyses the last frame ran, counted by the lines that each one prints while a tone sounds.
    int analyses() const;

    static wt::wtWindow* title() { return widgets::window("Options"); }
    static wt::wtWindow* chooser() { return widgets::window("Play Song"); }
    static wt::wtWindow* panel() { return widgets::window("Frequency"); }
    void click(const wt::wtWidget& widget) const;

    const int screenWidth;
    const int screenHeight;
    std::unique_ptr<TemporaryFolder> folder;
    boost::shared_ptr<AudioInput> audio;
    std::unique_ptr<Win> win;
    std::string printed;
};
