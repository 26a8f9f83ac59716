// The OpenGL functions that RecordingGL stands in for, defined under their own names: the matrices.

#include <algorithm>
#include <cmath>

#include "tests/support/RecordingGLState.h"

using recording_gl::state;
using Matrix = RecordingGL::Matrix;

namespace {

void multiply(char const* call, Matrix const& factor) {
    if (state().outsideGroup(call)) {
        state().multiply(factor);
    }
}

void load(char const* call, Matrix const& matrix) {
    if (state().outsideGroup(call)) {
        state().stack().back() = matrix;
    }
}

template <class T>
Matrix matrixOf(T const* values) {
    Matrix matrix;
    std::copy(values, values + 16, matrix.begin());
    return matrix;
}

void rotate(double degrees, double x, double y, double z) {
    double const length = std::sqrt(x * x + y * y + z * z);
    if (length > 0.0) {
        x /= length, y /= length, z /= length;
    }
    double const angle = degrees * std::acos(-1.0) / 180.0;
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    double const d = 1.0 - c;
    multiply("glRotate",
             {x * x * d + c, y * x * d + z * s, x * z * d - y * s, 0, x * y * d - z * s, y * y * d + c,
              y * z * d + x * s, 0, x * z * d + y * s, y * z * d - x * s, z * z * d + c, 0, 0, 0, 0, 1});
}

void translate(double x, double y, double z) {
    multiply("glTranslate", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1});
}

void scale(double x, double y, double z) {
    multiply("glScale", {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1});
}

}  // namespace

extern "C" {

void glMatrixMode(GLenum mode) {
    if (state().outsideGroup("glMatrixMode")) {
        state().attributes.matrixMode = mode;
    }
}
void glLoadIdentity() {
    load("glLoadIdentity", recording_gl::identity);
}
void glLoadMatrixf(GLfloat const* m) {
    load("glLoadMatrixf", matrixOf(m));
}
void glLoadMatrixd(GLdouble const* m) {
    load("glLoadMatrixd", matrixOf(m));
}
void glMultMatrixf(GLfloat const* m) {
    multiply("glMultMatrixf", matrixOf(m));
}
void glMultMatrixd(GLdouble const* m) {
    multiply("glMultMatrixd", matrixOf(m));
}
void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    translate(x, y, z);
}
void glTranslated(GLdouble x, GLdouble y, GLdouble z) {
    translate(x, y, z);
}
void glScalef(GLfloat x, GLfloat y, GLfloat z) {
    scale(x, y, z);
}
void glScaled(GLdouble x, GLdouble y, GLdouble z) {
    scale(x, y, z);
}
void glRotatef(GLfloat degrees, GLfloat x, GLfloat y, GLfloat z) {
    rotate(degrees, x, y, z);
}
void glRotated(GLdouble degrees, GLdouble x, GLdouble y, GLdouble z) {
    rotate(degrees, x, y, z);
}
void glOrtho(GLdouble l, GLdouble r, GLdouble b, GLdouble t, GLdouble n, GLdouble f) {
    multiply("glOrtho", {2 / (r - l), 0, 0, 0, 0, 2 / (t - b), 0, 0, 0, 0, -2 / (f - n), 0,
                         -(r + l) / (r - l), -(t + b) / (t - b), -(f + n) / (f - n), 1});
}
void glPushMatrix() {
    if (state().outsideGroup("glPushMatrix")) {
        state().stack().push_back(Matrix(state().stack().back()));
    }
}
void glPopMatrix() {
    if (!state().outsideGroup("glPopMatrix")) {
        return;
    }
    if (state().stack().size() > 1) {
        state().stack().pop_back();
    } else {
        state().fail(GL_STACK_UNDERFLOW, "glPopMatrix of an empty stack");
    }
}

}  // extern "C"
