// By how much each frame moves what floats over the track, seen in the coordinates that are drawn.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "app/Win.h"
#include "platform/wt/wt.h"
#include "tests/support/FakeClock.h"
#include "tests/support/FakeGlut.h"
#include "tests/support/RecordingGL.h"
#include "tests/support/ScriptedAudioInput.h"
#include "tests/support/TemporaryFolder.h"

namespace {

constexpr double frameSeconds = 0.1;
constexpr double pauseSeconds = 0.01;      // of which each frame sleeps this much
constexpr float hitNoteWidth = 3.0f;       // pixels
constexpr double onePixel = 8.29 / 480.0;  // world units; glyphs stand on whole pixels

class FrameStep : public testing::Test {
protected:
    void SetUp() override {
        fakeclock::set(43200000000);
        fakeglut::reset(640, 480);
        scriptedaudio::reset();
    }
    void TearDown() override { wt::wtWindowManager::clear(); }

    /// The lowest point of the floating number in the frame that is drawn now; the score stands below it.
    double frame() {
        gl.forget();
        fakeclock::advance(frameSeconds - pauseSeconds);
        fakeglut::state().display();
        double lowest = 1e9;
        bool noteIsDrawn = false;
        for (const RecordingGL::Primitive& primitive : gl.primitives()) {
            noteIsDrawn = noteIsDrawn || (primitive.texture == 0 && primitive.lineWidth == hitNoteWidth);
            for (const RecordingGL::Vertex& vertex : primitive.vertices) {
                const bool isNumber = primitive.texture != 0 && vertex.at.y > -1.0;
                lowest = isNumber ? std::min(lowest, vertex.at.y) : lowest;
                EXPECT_TRUE(noteIsDrawn || !isNumber) << "the number lies on top of the notes";
            }
        }
        return lowest;
    }

    RecordingGL gl;
};

TEST_F(FrameStep, IsAFiftiethOfASecondUntilTheTenthFrameMeasuresTheAverage) {
    const std::filesystem::path data = std::filesystem::current_path();
    const TemporaryFolder folder;
    std::filesystem::create_directory_symlink(data / "Fonts", folder.path() / "Fonts");
    // A note without length is awarded unplayed: its number floats from the first frame on.
    folder.write("Songs/gift.txt", "1 1\nC0" + std::string(200, '\n'));
    testing::internal::CaptureStdout();
    Win win(scriptedaudio::recording());
    testing::internal::GetCapturedStdout();
    win.playSong("gift.txt");
    constexpr double untilTheSlot = 1.8;
    fakeclock::advance(untilTheSlot);
    frame();

    constexpr double measured = (untilTheSlot + 10 * frameSeconds) / 10;
    double age = 0.0;
    double below = 0.0;  // from where the number stands to the lowest point of its glyphs
    for (int frames = 1; frames <= 14; ++frames) {
        // The tenth frame measures first and moves the number then.
        age += frames < 10 ? 0.02 : measured;
        const double rise = 0.5 * age * age + 0.5 * age;
        const double lowest = frame();
        below = frames == 1 ? lowest - rise : below;
        EXPECT_NEAR(lowest - rise, below, onePixel) << "after frame " << frames;
    }
}

}  // namespace
