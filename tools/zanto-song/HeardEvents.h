#pragma once

#include <vector>

#include "tools/zanto-song/Listening.h"

/// A note as it was played. Times in frames, hundredths of a second.
struct HeardEvent {
    int note;
    double start;
    double end;
};

/// Slots that begin at `phase` and every `period` after it, in frames.
struct Beat {
    double period;
    double phase;
    double misfit;  ///< how badly the notes keep to it
};

/// How far a number is from the nearest whole one.
double awayFromWhole(double value);

/// The notes of a recording from their beginnings to their ends, in the order of their beginnings. Once the
/// `beat` is known, what is struck again is struck on it.
std::vector<HeardEvent> findEvents(const std::vector<ListenedFrame>& frames, const Beat* beat = nullptr);
