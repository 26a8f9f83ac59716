#pragma once

#include <cstddef>

/// The numbers of play: how time is divided into slots, and what earns and costs points.
namespace rules {

constexpr double slotsPerSecond = 2.0;
constexpr double secondsPerSlot = 1.0 / slotsPerSecond;
constexpr std::size_t slotsPerBar = 4;

constexpr double leadInSeconds = 2.0;  ///< from the start of the song's clock to the centre of slot 0
constexpr int slotsAfterTheEnd = 4;    ///< from the song's length to the end of play

constexpr double windowOpening = -0.5;  ///< slots, from a slot's centre
constexpr double holdFraction = 0.95;   ///< of a note's length, less the time that its window opens early
constexpr int lookBackSlots = 4;        ///< a note is judged this long after its slot
constexpr float awardPoints = 100.0f;   ///< in a note's own slot; in a later one, for each slot of its length

/// When a slot opens, in seconds from the centre of slot 0.
constexpr double slotOpensSeconds(double slot) {
    return (slot + windowOpening) * secondsPerSlot;
}

/// What a note of `length` slots must be held for longer than.
constexpr double neededSeconds(double length) {
    return windowOpening * secondsPerSlot + secondsPerSlot * holdFraction * length;
}

constexpr double wrongHoldSeconds = 0.35;  ///< a wrong note held for longer costs points
constexpr double graceFraction = 0.2;      ///< of a slot; no penalty so soon after its window opens
constexpr float penaltyPoints = -20.0f;

}  // namespace rules
