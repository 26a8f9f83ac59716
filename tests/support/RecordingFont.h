#pragma once

#include <array>
#include <string>
#include <vector>

/// A stand-in for the font library that remembers what is written instead of drawing it. Link
/// `zanto_recording_font` into a test program and its definitions of FFontData's operations come before the
/// library's; no file is read, and the colour is the current one of whatever OpenGL the program has.
///
///     RecordingFont font;
///     score.draw();
///     EXPECT_EQ(font.texts().at(0).text, "Score:    0");
class RecordingFont {
public:
    struct Text {
        std::string text;
        float x;
        float y;
        float scaleX;
        float scaleY;
        float boxWidth;
        float boxHeight;
        std::array<float, 4> color;
    };
    struct Face {
        std::string path;
        unsigned int size;
    };

    struct Log {
        std::vector<Text> texts;
        std::vector<Face> made;
        int alive = 0;
    };
    static Log& log();

    /// Forgets the texts written so far, by anyone.
    RecordingFont() { forget(); }

    const std::vector<Text>& texts() const { return log().texts; }
    void forget() { log().texts.clear(); }

    /// Every face made since the process began, and how many of them live.
    static const std::vector<Face>& facesMade() { return log().made; }
    static int facesAlive() { return log().alive; }

    /// What drawing `text` returns.
    static float advance(const std::string& text) { return 0.25f * static_cast<float>(text.size()); }
};
