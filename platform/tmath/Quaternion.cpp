#include "platform/tmath/Quaternion.h"

#include <cmath>

#include <GL/gl.h>

namespace tavi {

Quaternion Quaternion::rod(const Vec3<double>& rotation) {
    const double angleRad = std::hypot(rotation.x, rotation.y, rotation.z);
    if (angleRad == 0.0) {
        return {};
    }
    return {std::cos(angleRad / 2), rotation * (std::sin(angleRad / 2) / angleRad)};
}

Quaternion Quaternion::operator*(const Quaternion& other) const {
    return {s * other.s - v.dot(other.v), other.v * s + v * other.s + v.cross(other.v)};
}

Vec3<double> Quaternion::rotate(const Vec3<double>& point) const {
    return (*this * Quaternion(0.0, point) * conj()).v;
}

void Quaternion::glRotate() const {
    const double degreesPerRadian = 180.0 / 3.141592653589793;
    const double sine = std::hypot(v.x, v.y, v.z);
    // Without a turn there is no axis; any will do, but a zero one would be divided by its length.
    const Vec3<double> axis = sine > 0.0 ? v : Vec3<double>(0.0, 0.0, 1.0);
    glRotated(2.0 * std::atan2(sine, s) * degreesPerRadian, axis.x, axis.y, axis.z);
}

}  // namespace tavi
