#pragma once

#include <cstdint>

namespace tavi {

/// A reading of the wall clock with millisecond resolution. A plain value; any thread.
///
///     tavi::Watch before;
///     ...
///     double seconds = (tavi::Watch() - before).asDouble();
class Watch {
public:
    Watch();

    /// Reads the clock again. When it cannot be read, says so on standard output and keeps the old reading.
    void update();

    /// The time from `earlier` to this reading, with the microseconds in 0..999999.
    Watch operator-(const Watch& earlier) const;

    /// Seconds, cut (not rounded) to whole milliseconds.
    double asDouble() const;
    operator double() const { return asDouble(); }

private:
    std::int32_t seconds = 0;
    std::int32_t microseconds = 0;
};

}  // namespace tavi
