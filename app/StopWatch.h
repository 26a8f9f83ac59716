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

    /// Starts counting from now; does nothing when it already counts.
    void start();

    /// Back to zero; a running watch goes on running.
    void reset();

    /// Seconds counted so far. The clock is read afresh at each call while the watch runs.
    operator double() const;

private:
    Watch startTime;
    bool running;
    double accumulated;  ///< seconds
};

}  // namespace tavi
