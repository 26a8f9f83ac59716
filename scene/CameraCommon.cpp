#include "scene/CameraCommon.h"

#include <GL/gl.h>
#include <GL/glu.h>

double CameraCommon::aspect() {
    return static_cast<double>(width()) / static_cast<double>(height());
}

void CameraCommon::applyProjection() {
    if (orthographic) {
        glOrtho(-aspect(), aspect(), -1.0, 1.0, zNear, zFar);
    } else {
        gluPerspective(fieldOfView, aspect(), zNear, zFar);
    }
}

void CameraCommon::applyModelview() {
    orientation.conj().glRotate();
    glTranslatef(static_cast<float>(-position.x), static_cast<float>(-position.y),
                 static_cast<float>(-position.z));
}
