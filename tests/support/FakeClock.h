#pragma once

#include <cstdint>

/// A link-time double of the wall clock: a test program that links zanto_fake_clock gets `gettimeofday` and
/// `usleep` from here. Time stands still until a test moves it or the program sleeps.
namespace fakeclock {

struct State {
    std::int64_t now = 1000000000;  ///< microseconds
    std::int64_t slept = 0;         ///< microseconds
    bool broken = false;            ///< whether readings fail
};
State& state();

/// Sets the clock. A running program sees it step.
void set(std::int64_t microseconds);

/// Moves the clock; backwards too.
void advance(double seconds);

}  // namespace fakeclock
