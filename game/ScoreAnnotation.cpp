#include "game/ScoreAnnotation.h"

#include <cmath>
#include <cstdio>

namespace {

constexpr double swayAmplitude = 0.3;  // slots, over a period of two seconds
constexpr double pi = 3.141592653589793;
constexpr float textBoxSize = 100.0f;  // world units

}  // namespace

ScoreAnnotation::ScoreAnnotation(float x_, float y_, const FFont& font_, int value_)
    : x(x_), y(y_), font(font_), value(value_) {
}

void ScoreAnnotation::draw() {
    char text[1024];
    std::snprintf(text, sizeof text, "%d", value);
    if (value < 0) {
        font.setColor(1.0f, 0.0f, 0.0f, 1.0f);
    }
    const double seconds = age;
    const double textX = swayAmplitude * std::cos(pi * seconds) + static_cast<double>(x);
    const double textY = static_cast<double>(y) + 0.5 * static_cast<double>(age * age) + 0.5 * seconds;
    font.drawString(text, static_cast<float>(textX), static_cast<float>(textY), textBoxSize, textBoxSize);
}

bool ScoreAnnotation::isComplete() {
    return lifeLeft < 0.0;
}

void ScoreAnnotation::animate(double dtSeconds) {
    age = static_cast<float>(static_cast<double>(age) + dtSeconds);
    lifeLeft -= dtSeconds;
}
