#pragma once

#include <vector>

#include "tools/zanto-song/Listening.h"
#include "tools/zanto-song/Strikes.h"

/// A note as it was played. Times in frames, hundredths of a second.
struct HeardEvent {
    int note;
    double start;
    double end;
};

/// The notes of a recording from their beginnings to their ends, in the order of their beginnings. Once the
/// `beat` is known, what is struck again is struck on it.
std::vector<HeardEvent> findEvents(const std::vector<ListenedFrame>& frames, const Beat* beat = nullptr);
