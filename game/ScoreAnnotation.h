#pragma once

#include <cstdint>

#include "scene/FFont.h"
#include "scene/SceneObject.h"

/// The points that scoring releases at a note's place on the track: a number that rises, sways and is gone
/// after four seconds. Owned by the song's scene and drawn in track coordinates (x in slots, y in note
/// heights), so it scrolls with the track.
///
///     scene.addObject(boost::make_shared<ScoreAnnotation>(x, y, font, -20));
class ScoreAnnotation : public SceneObject {
public:
    /// `value` at (`x`, `y`), in a copy of `font`.
    ScoreAnnotation(float x, float y, const FFont& font, int value);

    /// A negative value is red, any other has the font's own colour.
    void draw() override;
    bool isComplete() override;
    void animate(double dtSeconds) override;

private:
    float x;
    float y;
    float age = 0.0f;       ///< seconds
    double lifeLeft = 4.0;  ///< seconds
    FFont font;
    std::int32_t value;
};
