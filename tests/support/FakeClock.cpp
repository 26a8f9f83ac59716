#include "tests/support/FakeClock.h"

#include <sys/time.h>
#include <unistd.h>

#include <cmath>

namespace fakeclock {

constexpr std::int64_t microsecondsPerSecond = 1000000;

State& state() {
    static State instance;
    return instance;
}

void set(std::int64_t microseconds) {
    state().now = microseconds;
}

void advance(double seconds) {
    state().now += std::llround(seconds * static_cast<double>(microsecondsPerSecond));
}

}  // namespace fakeclock

extern "C" {

int gettimeofday(timeval* reading, void*) noexcept {
    if (fakeclock::state().broken) {
        return -1;
    }
    reading->tv_sec = static_cast<time_t>(fakeclock::state().now / fakeclock::microsecondsPerSecond);
    reading->tv_usec = static_cast<suseconds_t>(fakeclock::state().now % fakeclock::microsecondsPerSecond);
    return 0;
}

int usleep(useconds_t microseconds) {
    fakeclock::state().slept += microseconds;
    fakeclock::state().now += microseconds;
    return 0;
}

}  // extern "C"
