#pragma once

#include "platform/tmath/Vec3.h"

namespace tavi {

/// A rotation in space, as a quaternion of unit length: scalar part cos(angle/2), vector part sin(angle/2)
/// times the axis. Right-handed: a positive angle turns counter-clockwise seen from the axis' tip.
///
///     orientation = Quaternion::rod({0, angle, 0}) * orientation;   // turn about the world's y axis
///     Vec3<double> ahead = orientation.rotate({0, 0, -1});
///
/// Nothing normalises: a product of unit quaternions is one, and `rotate` scales by the squared length of any
/// other.
class Quaternion {
public:
    /// The identity.
    Quaternion() = default;
    Quaternion(double scalar, const Vec3<double>& vector) : s(scalar), v(vector) {}

    /// The rotation about `rotation`'s direction by its length in radians; the zero vector gives the
    /// identity.
    static Quaternion rod(const Vec3<double>& rotation);

    double scalar() const { return s; }
    const Vec3<double>& vector() const { return v; }

    /// The Hamilton product: first `other`'s rotation, then this one's.
    Quaternion operator*(const Quaternion& other) const;
    /// The reverse rotation.
    Quaternion conj() const { return {s, v * -1.0}; }
    /// `point` turned about the origin: q * point * conj(q).
    Vec3<double> rotate(const Vec3<double>& point) const;
    /// Multiplies the current OpenGL matrix by the rotation, with one glRotated of its angle (degrees, 0 to
    /// 360) and axis. The length does not matter here. Needs a current context.
    void glRotate() const;

private:
    double s = 1.0;
    Vec3<double> v;
};

}  // namespace tavi
