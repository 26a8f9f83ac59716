#pragma once

#include <gtest/gtest.h>

#include <boost/shared_ptr.hpp>
#include <filesystem>
#include <memory>
#include <string>

#include "app/Win.h"
#include "platform/wt/wt.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGlut.h"
#include "tests/support/OffscreenGL.h"
#include "tests/support/ScriptedAudioInput.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/Widgets.h"

/// The game's window on a software screen, with a clock, a microphone and a mouse that the test holds.
class WinFixture : public testing::Test {
protected:
    /// A window of this many pixels.
    explicit WinFixture(int width = 640, int height = 480) : screenWidth(width), screenHeight(height) {}

    void SetUp() override;
    void TearDown() override;

    /// The game's own pictures and typeface, and a small note table and shelf of songs, in the folder that
    /// the window is started in.
    virtual void supply(const std::filesystem::path& data);

    /// Draws one frame; what it printed on standard output is kept in `printed`.
    void frame();
    void frames(int count);

    /// Draws frames of 10 ms until the song clock has moved on by `seconds`.
    void playFor(double seconds);

    /// Fills the microphone's ring buffer with one tone, which then sounds for ever, or with silence.
    void sound(double frequencyHz, double amplitude);
    void silence();

    /// How many analyses the last frame ran, counted by the lines that each one prints while a tone sounds.
    int analyses() const;

    static wt::wtWindow* title() { return widgets::window("Options"); }
    static wt::wtWindow* chooser() { return widgets::window("Play Song"); }
    static wt::wtWindow* panel() { return widgets::window("Frequency"); }
    void click(const wt::wtWidget& widget) const;

    /// The colour of the pixel at a point of the world, in the plane of the staff, as 0xrrggbb.
    int worldPixel(double x, double y);

    const int screenWidth;
    const int screenHeight;
    std::unique_ptr<OffscreenGL> gl;
    std::unique_ptr<TemporaryFolder> folder;
    boost::shared_ptr<AudioInput> audio;
    std::unique_ptr<Win> win;
    std::string printed;
};
