#pragma once

namespace tavi {

/// A point or direction in space, or a colour: plain components, compared and combined one by one.
template <class T>
struct Vec3 {
    T x = T();
    T y = T();
    T z = T();

    constexpr Vec3() = default;
    constexpr Vec3(T x_, T y_, T z_) : x(x_), y(y_), z(z_) {}

    constexpr Vec3 operator+(const Vec3& other) const { return {x + other.x, y + other.y, z + other.z}; }
    constexpr Vec3 operator-(const Vec3& other) const { return {x - other.x, y - other.y, z - other.z}; }
    constexpr Vec3 operator*(T factor) const { return {x * factor, y * factor, z * factor}; }
    constexpr Vec3& operator+=(const Vec3& other) { return *this = *this + other; }
    constexpr bool operator==(const Vec3& other) const {
        return x == other.x && y == other.y && z == other.z;
    }
    constexpr bool operator!=(const Vec3& other) const { return !(*this == other); }

    constexpr T dot(const Vec3& other) const { return x * other.x + y * other.y + z * other.z; }
    constexpr Vec3 cross(const Vec3& other) const {
        return {y * other.z - z * other.y, z * other.x - x * other.z, x * other.y - y * other.x};
    }
};

}  // namespace tavi
