#pragma once

#include <algorithm>

namespace wt {

/// A switch whose value follows in a few equal steps, one for each frame.
class Fade {
public:
    void set(bool on) { target = on ? 1.0f : 0.0f; }
    /// Switches without steps between.
    void jump(bool on) {
        set(on);
        current = target;
    }
    bool isOn() const { return target > 0; }
    void animate() {
        current = current < target ? std::min(current + step, target) : std::max(current - step, target);
    }
    /// 0 (off) to 1 (on).
    float value() const { return current; }

private:
    static constexpr float step = 0.2f;
    float current = 0.0f;
    float target = 0.0f;
};

}  // namespace wt
