#pragma once

namespace tavi {

/// A point or size in a plane: plain components, compared and combined one by one.
template <class T>
struct Vec2 {
    T x = T();
    T y = T();

    constexpr Vec2() = default;
    constexpr Vec2(T x_, T y_) : x(x_), y(y_) {}

    constexpr Vec2 operator+(const Vec2& other) const { return {x + other.x, y + other.y}; }
    constexpr Vec2 operator-(const Vec2& other) const { return {x - other.x, y - other.y}; }
    constexpr Vec2 operator*(T factor) const { return {x * factor, y * factor}; }
    constexpr bool operator==(const Vec2& other) const { return x == other.x && y == other.y; }
    constexpr bool operator!=(const Vec2& other) const { return !(*this == other); }
};

}  // namespace tavi
