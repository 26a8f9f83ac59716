#pragma once

#include <vector>

/// The frequency of a pitch in semitones, A4 69 at 440 Hz.
double pitchHz(double pitch);

/// A note of ten partials, each weaker by `slope` powers of its number, from one time to another. It begins
/// and ends within 10 ms and fades by `fadeDbPerSecond`, by `endDbPerSecond` from its end on.
struct Player {
    double pitch;
    double startSeconds = 0.0;
    double endSeconds = 100.0;
    double amplitude = 0.1;
    double slope = 1.0;
    double fadeDbPerSecond = 0.0;
    double endDbPerSecond = 6000.0;
    int firstPartial = 1;
};

/// What they play together, at signals::sampleRateHz.
std::vector<float> played(const std::vector<Player>& players, double seconds);
