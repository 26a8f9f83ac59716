#include "audio/StreamWatch.h"

#include <algorithm>

namespace {
constexpr double longestStepSeconds = 0.25;
}  // namespace

bool StreamWatch::observe(std::uint32_t position, double nowSeconds) {
    const double step = std::min(nowSeconds - lastLook, longestStepSeconds);
    lastLook = nowSeconds;
    if (position != lastPosition) {
        restart(position);
        return true;
    }
    still += step;
    return false;
}

double StreamWatch::stillSeconds() const {
    return still;
}

void StreamWatch::restart(std::uint32_t position) {
    lastPosition = position;
    still = 0.0;
}
