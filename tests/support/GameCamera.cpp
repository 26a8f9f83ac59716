#include "tests/support/GameCamera.h"

#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>

void lookThroughGameCamera(double aspect) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(45.0, aspect, 0.1, 100.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(0.0f, 0.0f, -10.0f);
}

double halfViewWidth(double aspect) {
    return 10.0 * std::tan(M_PI / 8.0) * aspect;
}
