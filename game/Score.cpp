#include "game/Score.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr double gainTint = 0.15;
constexpr float lossTint = 0.25f;
constexpr double tintLostPerFrame = 0.01;
constexpr float noTextBox = -1.0f;

}  // namespace

Score::Score(float x_, float y_) : x(x_), y(y_) {
}

void Score::setFont(FFont& font_, float scale) {
    font = font_;
    font.setScale(scale, scale);
}

void Score::reset() {
    value = 0.0f;
}

void Score::addToScore(float points) {
    if (points > 0.0f) {
        color.red = static_cast<float>(color.red - gainTint);
        color.blue = static_cast<float>(color.blue - gainTint);
    } else {
        color.red += lossTint;
        color.green -= lossTint;
        color.blue -= lossTint;
    }
    value += points;
    clampColor();
}

void Score::clampColor() {
    for (float* channel : {&color.red, &color.green, &color.blue}) {
        *channel = std::max(0.0f, std::min(1.0f, *channel));
    }
}

void Score::animate(double) {
    for (float* channel : {&color.red, &color.green, &color.blue}) {
        *channel = static_cast<float>(*channel + tintLostPerFrame);
    }
    clampColor();
}

void Score::draw() {
    char text[1024];
    std::snprintf(text, sizeof text, "Score:%5.0f", static_cast<double>(value));
    font.setColor(color.red, color.green, color.blue, 1.0f);
    font.drawString(text, x, y, noTextBox, noTextBox);
}
