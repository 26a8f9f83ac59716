#include "tests/support/FakeClock.h"

#include <sys/time.h>
#include <unistd.h>

#include <cmath>

namespace fakeclock {

namespace {
constexpr std::int64_t microsecondsPerSecond = 1000000;
std::int64_t now = 1000 * microsecondsPerSecond;
std::int64_t totalSlept = 0;
bool readingsFail = false;
}  // namespace

void set(std::int64_t microseconds) {
    now = microseconds;
}

void advance(double seconds) {
    now += static_cast<std::int64_t>(std::llround(seconds * static_cast<double>(microsecondsPerSecond)));
}

void setBroken(bool broken) {
    readingsFail = broken;
}

std::int64_t slept() {
    return totalSlept;
}

void resetSlept() {
    totalSlept = 0;
}

}  // namespace fakeclock

extern "C" {

int gettimeofday(timeval* reading, void*) noexcept {
    if (fakeclock::readingsFail) {
        return -1;
    }
    reading->tv_sec = static_cast<time_t>(fakeclock::now / fakeclock::microsecondsPerSecond);
    reading->tv_usec = static_cast<suseconds_t>(fakeclock::now % fakeclock::microsecondsPerSecond);
    return 0;
}

int usleep(useconds_t microseconds) {
    fakeclock::totalSlept += microseconds;
    fakeclock::now += microseconds;
    return 0;
}

}  // extern "C"
