#pragma once

#include "scene/FFont.h"

/// The running total in the corner. Its text flashes green on a gain and red on a loss and drifts back to
/// white. Owned by the game window, main thread only.
///
///     Score score(-5.5f, -4.0f);
///     score.setFont(font, 0.8f);
///     score.addToScore(100.0f);
///     score.draw(), score.animate(dt);   // every frame
class Score {
public:
    /// Zero, in white, to be drawn at (`x`, `y`). It needs a font before it is drawn.
    Score(float x, float y);

    /// Draws with a copy of `font` at `scale` from now on.
    void setFont(FFont& font, float scale);

    /// Back to zero; the colour stays.
    void reset();

    /// Adds `points` and tints the text: green for more than zero, red for zero and less.
    void addToScore(float points);

    /// One step of the way back to white, the same for every frame whatever `dtSeconds`.
    void animate(double dtSeconds);

    /// Draws "Score:" and the total in whole points.
    void draw();

    float getValue() const { return value; }

private:
    struct Color {
        float red;
        float green;
        float blue;
    };

    void clampColor();

    Color color{1.0f, 1.0f, 1.0f};  ///< each channel 0 to 1
    float value = 0.0f;
    float x;
    float y;
    FFont font{nullptr, 0};
};
