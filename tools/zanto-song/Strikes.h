#pragma once

#include <cstddef>
#include <vector>

#include "tools/zanto-song/Listening.h"

/// Slots that begin at `phase` and every `period` after it, in frames.
struct Beat {
    double period;
    double phase;
    double misfit;  ///< how badly the notes keep to it
};

/// How far a number is from the nearest whole one.
double awayFromWhole(double value);

/// The moments of a recording at which something is struck, bowed or blown anew: peaks of the spectrum's
/// rise, which is a share of the sound. Wind and plucked strings show in it; a bow shows more in the noise of
/// weak lines. Refers to the frames that it was made from.
class Strikes {
public:
    static constexpr std::size_t reach = 6;  ///< of a peak to both sides, in frames

    /// Once the `beat` is known, weaker ones count on it, and only the clearest beside it.
    Strikes(const std::vector<ListenedFrame>& frames, const Beat* beat);

    /// The frames in which they are, in their order.
    const std::vector<std::size_t>& frames() const { return found; }
    bool anyIn(std::size_t from, std::size_t to) const;

private:
    bool isStrike(std::size_t frame) const;
    bool isOnBeat(std::size_t frame) const;
    float strengthAt(std::size_t frame) const;
    bool isPeak(std::size_t frame) const;
    float scratchAround(std::size_t frame) const;

    const std::vector<ListenedFrame>& recording;
    const Beat* beat;
    std::vector<std::size_t> found;
};
