#pragma once

#include <cstdint>

/// A link-time double of the wall clock: a test program that links zanto_fake_clock gets `gettimeofday` and
/// `usleep` from here. Time stands still until a test moves it or the program sleeps.
namespace fakeclock {

/// Sets the clock. A running program sees it step.
void set(std::int64_t microseconds);

/// Moves the clock; backwards too.
void advance(double seconds);

/// Lets readings fail, or succeed again.
void setBroken(bool broken);

/// Microseconds slept since `resetSlept`.
std::int64_t slept();
void resetSlept();

}  // namespace fakeclock
