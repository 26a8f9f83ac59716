#pragma once

#include "platform/tmath/Quaternion.h"
#include "platform/tmath/Vec3.h"

/// A camera's pose and lens, and how they are loaded into OpenGL's matrices. A fresh one stands at (0, 0, 10)
/// and looks down the negative z axis in perspective. The class that derives from it says how large the
/// drawing surface is:
///
///     class View : public CameraCommon { int width() override; int height() override; };
///     glMatrixMode(GL_PROJECTION), glLoadIdentity(), view.applyProjection();
///     glMatrixMode(GL_MODELVIEW), glLoadIdentity(), view.applyModelview();
class CameraCommon {
public:
    CameraCommon() = default;
    CameraCommon(const CameraCommon&) = delete;
    CameraCommon& operator=(const CameraCommon&) = delete;
    virtual ~CameraCommon() = default;

    /// Multiplies the lens into the current GL matrix: perspective, or orthographic with a view 2 units high.
    virtual void applyProjection();

    /// Multiplies the inverse of the pose into the current GL matrix.
    virtual void applyModelview();

    /// Width divided by height.
    virtual double aspect();

    /// The size of the drawing surface in pixels.
    virtual int width() = 0;
    virtual int height() = 0;

protected:
    bool orbitOrigin = true;    ///< drags turn the camera about the world's origin, not about itself
    double zNear = 0.1;         ///< world units
    double zFar = 100.0;        ///< world units
    bool orthographic = false;  ///< else perspective
    double fieldOfView = 45.0;  ///< vertical, degrees; perspective only
    tavi::Vec3<double> position{0.0, 0.0, 10.0};  ///< in the world
    tavi::Quaternion orientation;                 ///< from camera to world coordinates
};
