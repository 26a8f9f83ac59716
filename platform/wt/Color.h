#pragma once

#include "platform/tmath/Vec3.h"

namespace wt {

/// A colour in sRGB with its opacity, every component 0 to 1; alpha is not multiplied in.
struct Color {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 1.0f;

    constexpr Color() = default;
    /// Opaque.
    constexpr Color(const tavi::Vec3<float>& rgb) : r(rgb.x), g(rgb.y), b(rgb.z) {}
    constexpr Color(float red, float green, float blue, float alpha = 1.0f)
        : r(red), g(green), b(blue), a(alpha) {}

    /// The same colour with its opacity multiplied by `factor`.
    constexpr Color faded(float factor) const { return {r, g, b, a * factor}; }

    constexpr bool operator==(const Color& other) const {
        return r == other.r && g == other.g && b == other.b && a == other.a;
    }
};

/// `from` at 0, `to` at 1, a straight line between.
constexpr Color mix(const Color& from, const Color& to, float amount) {
    return {from.r + (to.r - from.r) * amount, from.g + (to.g - from.g) * amount,
            from.b + (to.b - from.b) * amount, from.a + (to.a - from.a) * amount};
}

}  // namespace wt
