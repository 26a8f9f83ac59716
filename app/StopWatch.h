#pragma once

#include "app/Watch.h"

namespace tavi {

/// Seconds since it was started or last reset, on the wall clock, with millisecond resolution.
///
///     tavi::StopWatch songWatch(true);
///     double seconds = songWatch;
class StopWatch {
public:
    explicit StopWatch(bool startNow);

    /// Starts counting; does nothing if it already counts.
    void start();

    /// Back to zero. A running watch keeps running.
    void reset();

    /// Seconds counted so far. While it runs, each call reads the clock.
    operator double() const;

private:
    Watch startTime;
    bool running = false;
    double accumulated = 0.0;  ///< seconds
};

}  // namespace tavi
