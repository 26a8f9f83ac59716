#pragma once

#include <algorithm>

namespace wt {

/// A value that follows a switch in a few equal steps, one for each frame.
class Fade {
public:
    void setTarget(bool on) { target = on ? 1.0F : 0.0F; }
    /// Ends the way at once.
    void finish() { current = target; }
    void animate() {
        current = current < target ? std::min(current + step, target) : std::max(current - step, target);
    }
    /// 0 (off) to 1 (on).
    float value() const { return current; }

private:
    static constexpr float step = 0.2F;
    float current = 0.0F;
    float target = 0.0F;
};

}  // namespace wt
