#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "analysis/Notes.h"

class SampleSource;

/// What is heard in one hundredth of a second of a recording.
struct ListenedFrame {
    std::uint8_t notes = 0;  ///< that the fine ear hears, one bit each, C the lowest
    float rise = 0.0f;       ///< of the spectrum since a moment before, as a share of it, 0 to 1
    float scratchDb = 0.0f;  ///< the same with weak lines counted like strong ones, dB a line
    std::array<float, Notes::noteCount> levelsDb{};  ///< at each note's pitches
};

constexpr int listenedFramesPerSecond = 100;

/// Listens to a recording to its end with the fine ear, tuned by the environment; chooses that ear for this
/// process. Frame k is what is known at k / 100 s.
std::vector<ListenedFrame> listenTo(SampleSource& recording);
