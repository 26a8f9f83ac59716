#pragma once

#include <cstdint>

/// Notices that a ring buffer stands still. Its owner looks at it in every frame:
///
///     if (!watch.observe(ring.position(), nowSeconds) && watch.stillSeconds() > patience) reopen();
class StreamWatch {
public:
    /// Takes a look, and gives whether `position` is another one than at the last. If not, the time since
    /// then counts.
    bool observe(std::uint32_t position, double nowSeconds);

    /// For how long the looks have found the same position. Between two looks at most 0.25 s count, so that a
    /// program that was stopped does not take its own pause for a silent stream.
    double stillSeconds() const;

    /// Starts to count again, for a ring buffer at `position`.
    void restart(std::uint32_t position);

private:
    std::uint32_t lastPosition = 0;
    double lastLook = 0.0;  ///< seconds
    double still = 0.0;     ///< seconds
};
