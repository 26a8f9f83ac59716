// By how much each frame moves what floats over the track, seen in the coordinates that are drawn.

#include <algorithm>

#include "tests/app/GameFixture.h"
#include "tests/support/RecordingGL.h"

namespace {

constexpr double frameSeconds = 0.1;
constexpr double pauseSeconds = 0.01;      // of which each frame sleeps this much
constexpr float hitNoteWidth = 3.0f;       // pixels
constexpr double onePixel = 8.29 / 480.0;  // world units; glyphs stand on whole pixels

class FrameStep : public GameFixture {
protected:
    /// The lowest point of the floating number in the frame that is drawn now; the score stands below it.
    double lowestOfNumber() {
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
    // Its first number floats from the first frame on.
    win->playSong("gift.txt");
    constexpr double untilTheSlot = 1.8;
    fakeclock::advance(untilTheSlot);
    lowestOfNumber();

    constexpr double measured = (untilTheSlot + 10 * frameSeconds) / 10;
    double age = 0.0;
    double below = 0.0;  // from where the number stands to the lowest point of its glyphs
    for (int frames = 1; frames <= 14; ++frames) {
        // The tenth frame measures first and moves the number then.
        age += frames < 10 ? 0.02 : measured;
        const double rise = 0.5 * age * age + 0.5 * age;
        const double lowest = lowestOfNumber();
        below = frames == 1 ? lowest - rise : below;
        EXPECT_NEAR(lowest - rise, below, onePixel) << "after frame " << frames;
    }
}

}  // namespace
