#include "app/Watch.h"

#include <sys/time.h>

#include <cstdio>

namespace tavi {

namespace {
constexpr std::int32_t microsecondsPerSecond = 1000000;
constexpr std::int32_t microsecondsPerMillisecond = 1000;
constexpr double millisecondsPerSecond = 1000.0;
}  // namespace

Watch::Watch() {
    update();
}

void Watch::update() {
    timeval now{};
    if (gettimeofday(&now, nullptr) == -1) {
        std::puts("error getting time of day");
        return;
    }
    seconds = static_cast<std::int32_t>(now.tv_sec);
    microseconds = static_cast<std::int32_t>(now.tv_usec);
}

Watch Watch::operator-(const Watch& earlier) const {
    Watch difference(*this);
    // In 64 bits, because the clock may have been set far back between the two readings.
    difference.seconds = static_cast<std::int32_t>(std::int64_t{seconds} - earlier.seconds);
    difference.microseconds = microseconds - earlier.microseconds;
    if (difference.microseconds < 0) {
        difference.microseconds += microsecondsPerSecond;
        difference.seconds -= 1;
    }
    return difference;
}

double Watch::asDouble() const {
    const std::int32_t wholeMilliseconds = microseconds / microsecondsPerMillisecond;
    return seconds + wholeMilliseconds / millisecondsPerSecond;
}

}  // namespace tavi
