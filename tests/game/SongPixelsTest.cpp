// What a song looks like, drawn with a real OpenGL.

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "game/ScoreAnnotation.h"
#include "scene/Globals.h"
#include "tests/game/PlainSong.h"
#include "tests/game/SongFixture.h"
#include "tests/support/GameCamera.h"
#include "tests/support/OffscreenGL.h"

namespace {

constexpr int surfaceWidth = 960;   // pixels
constexpr int surfaceHeight = 480;  // pixels
constexpr int channels = 4;
constexpr int samples = surfaceWidth * surfaceHeight * channels;

class SongPixelsTest : public SongFixture {
protected:
    using Image = tavi::Image<unsigned char>;

    // One context for all: the process-wide face belongs to the one that it was first drawn in. It stays
    // until the process ends, since what the driver allocates once would count as leaked when it is unloaded
    // before. The face is read here, in the data folder, before a test goes to a folder of its own.
    static void SetUpTestSuite() {
        if (context == nullptr) {
            context = new OffscreenGL(surfaceWidth, surfaceHeight);
        }
        Globals::getInstance();
    }

    /// The picture of a viewport of that size, seen by the game's camera.
    template <class Draw>
    static Image picture(int width, int height, Draw draw) {
        glClear(GL_COLOR_BUFFER_BIT);
        glViewport(0, 0, width, height);
        lookThroughGameCamera(static_cast<double>(width) / height);
        draw();
        return context->read();
    }
    /// How many of the picture's samples are bright, opacity left out.
    static long brightSamples(Image const& image) {
        long bright = 0;
        for (int i = 0; i < samples; ++i) {
            bright += i % channels != 3 && image.data()[i] > 128 ? 1 : 0;
        }
        return bright;
    }
    static bool same(Image const& one, Image const& other) {
        return std::equal(one.data(), one.data() + samples, other.data());
    }

    static OffscreenGL* context;
};

OffscreenGL* SongPixelsTest::context;

TEST_F(SongPixelsTest, EveryWindowShowsWhatThePlainDrawingShows) {
    std::string text = "1 1\n";
    for (int i = 0; i < 200; ++i) {
        text += i % 7 == 0 ? "C40 E\n" : i % 3 == 0 ? "G2 B-9\n" : i % 5 == 0 ? "\n" : "F D A3\n";
    }
    ASSERT_TRUE(load(text));
    PlainSong plain;
    plain.follow(song.getSlots());

    int const sizes[][2] = {{640, 480}, {960, 270}, {960, 24}, {120, 480}};
    for (auto const& [width, height] : sizes) {
        for (double const t : {-2.0, 0.0, 7.3, 49.9, 101.0, 190.0}) {
            song.updateScore(score, t, holding({noteC, noteE, noteG}, 1.0f));
            song.animate(5.0);  // no numbers in the picture
            plain.follow(song.getSlots());
            Image const drawn = picture(width, height, [&] { song.draw(t); });
            Image const expected = picture(width, height, [&] { plain.draw(t); });
            EXPECT_TRUE(same(drawn, expected)) << width << " by " << height << " at " << t;
            EXPECT_GT(brightSamples(drawn), 0) << width << " by " << height << " at " << t;
        }
    }
    EXPECT_TRUE(context->noErrors());
}

TEST_F(SongPixelsTest, FloatingNumbersLieOnTopOfTheNotes) {
    ASSERT_TRUE(load("1 1\nG2 B\n\n"));
    song.updateScore(score, 0.2, holding({noteA}, 1.0f));  // index 5 of a slot of three: at its own height
    PlainSong plain;
    plain.follow(song.getSlots());
    ScoreAnnotation number(0.0f, Song::getNoteHeight(noteA), Globals::getInstance().getScoreFont(), -20);
    song.animate(0.3);  // up to the row of the B
    number.animate(0.3);

    Image const drawn = picture(640, 480, [&] { song.draw(0.0); });
    Image const withoutNumber = picture(640, 480, [&] { plain.draw(0.0); });
    Image const numberLast = picture(640, 480, [&] {
        plain.draw(0.0);
        number.draw();
    });
    Image const numberFirst = picture(640, 480, [&] {
        number.draw();
        plain.draw(0.0);
    });
    EXPECT_FALSE(same(drawn, withoutNumber));
    EXPECT_FALSE(same(numberLast, numberFirst))
        << "the number does not meet the notes: the test shows nothing";
    EXPECT_TRUE(same(drawn, numberLast));
    EXPECT_TRUE(context->noErrors());
}

TEST_F(SongPixelsTest, AHitNoteTurnsBlack) {
    ASSERT_TRUE(load("1 1\nD"));
    auto const middle = [this] {
        Image const image = picture(640, 480, [&] { song.draw(0.0); });
        // The D's row, 2/7 above the view's middle row of pixels; rows count from the surface's top.
        int const y = surfaceHeight - 240 - static_cast<int>(240.0 * (2.0 / 7.0) / halfViewWidth(1.0));
        return static_cast<int>(image.at(320, y, 0));
    };
    EXPECT_EQ(middle(), 255);
    song.updateScore(score, 0.0, holding({noteD}, 1.0f));
    song.animate(5.0);
    EXPECT_NEAR(middle(), 0.9 * 255.0, 1.0);
    for (int frame = 0; frame < 9; ++frame) {
        middle();
    }
    EXPECT_EQ(middle(), 0);
}

}  // namespace
