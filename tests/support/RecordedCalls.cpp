// OpenGL's calls, defined under their own names.

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <cmath>

#include "tests/support/RecordingGL.h"

namespace {

using Attributes = RecordingGL::Attributes;
using Matrix = RecordingGL::Matrix;
constexpr auto& state = RecordingGL::state;

/// True when `isRight`; else the call has failed.
bool require(bool isRight, const char* otherwise) {
    if (!isRight) {
        state().errors.emplace_back(otherwise);
    }
    return isRight;
}

bool outsideGroup(const char* call) {
    return !state().inGroup || require(false, (std::string(call) + " between glBegin and glEnd").c_str());
}

void addVertex(double x, double y, double z) {
    if (require(state().inGroup, "a vertex outside glBegin and glEnd")) {
        state().group.vertices.push_back({{x, y, z}, state().attributes.color});
    }
}

void setEnabled(GLenum capability, bool enabled) {
    const bool isProgram = capability == GL_FRAGMENT_PROGRAM_ARB || capability == GL_VERTEX_PROGRAM_ARB;
    if (!outsideGroup("glEnable or glDisable") ||
        !require(!isProgram, "programs, which OpenGL 1.4 does not have")) {
        return;
    }
    auto& set = state().attributes.enabled;
    if (enabled) {
        set.insert(capability);
    } else {
        set.erase(capability);
    }
}

template <class T>
void get(GLenum name, T* values) {
    const auto put = [&](const auto& source) {
        std::transform(source.begin(), source.end(), values, [](auto v) { return static_cast<T>(v); });
    };
    switch (name) {
        case GL_MODELVIEW_MATRIX:
            return put(state().modelview.back());
        case GL_PROJECTION_MATRIX:
            return put(state().projection.back());
        case GL_VIEWPORT:
            return put(state().viewport);
        case GL_CURRENT_COLOR:
            return put(state().attributes.color);
        case GL_MAX_TEXTURE_SIZE:
            return put(std::array<int, 1>{4096});
    }
}

std::vector<Matrix>& stack() {
    switch (state().attributes.matrixMode) {
        case GL_PROJECTION:
            return state().projection;
        case GL_TEXTURE:
            return state().textureMatrix;
        default:
            return state().modelview;
    }
}

void load(const char* call, const Matrix& matrix) {
    if (outsideGroup(call)) {
        stack().back() = matrix;
    }
}

void multiply(const char* call, const Matrix& factor) {
    const Matrix top = stack().back();
    Matrix product{};
    for (std::size_t i = 0; i < product.size(); ++i) {
        for (std::size_t k = 0; k < 4; ++k) {
            product[i] += top[k * 4 + i % 4] * factor[i / 4 * 4 + k];
        }
    }
    load(call, product);
}

Matrix matrixOf(const double* values) {
    Matrix matrix;
    std::copy(values, values + matrix.size(), matrix.begin());
    return matrix;
}

}  // namespace

extern "C" {

void glBegin(GLenum mode) {
    if (outsideGroup("glBegin")) {
        const Attributes& now = state().attributes;
        const GLuint texture = now.enabled.count(GL_TEXTURE_2D) != 0 ? now.texture : 0;
        state().group = {mode, {}, now.lineWidth, texture, state().modelview.back()};
        state().inGroup = true;
        ++state().groups;
    }
}
void glEnd() {
    if (require(state().inGroup, "glEnd without glBegin") && !state().group.vertices.empty()) {
        state().primitives.push_back(std::move(state().group));
    }
    state().inGroup = false;
}
void glVertex2f(GLfloat x, GLfloat y) {
    addVertex(x, y, 0.0);
}
void glVertex2d(GLdouble x, GLdouble y) {
    addVertex(x, y, 0.0);
}
void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    addVertex(x, y, z);
}
void glVertex3d(GLdouble x, GLdouble y, GLdouble z) {
    addVertex(x, y, z);
}
void glColor3f(GLfloat r, GLfloat g, GLfloat b) {
    state().attributes.color = {r, g, b, 1.0f};
}
void glColor4f(GLfloat r, GLfloat g, GLfloat b, GLfloat a) {
    state().attributes.color = {r, g, b, a};
}
void glColor4fv(const GLfloat* c) {
    state().attributes.color = {c[0], c[1], c[2], c[3]};
}
void glLineWidth(GLfloat width) {
    if (outsideGroup("glLineWidth") && require(width > 0.0f, "glLineWidth of zero or less")) {
        state().attributes.lineWidth = width;
    }
}

void glEnable(GLenum capability) {
    setEnabled(capability, true);
}
void glDisable(GLenum capability) {
    setEnabled(capability, false);
}
GLboolean glIsEnabled(GLenum capability) {
    return state().attributes.enabled.count(capability) != 0 ? GL_TRUE : GL_FALSE;
}
void glViewport(GLint x, GLint y, GLsizei width, GLsizei height) {
    if (require(width >= 0 && height >= 0, "glViewport of a negative size") && outsideGroup("glViewport")) {
        state().viewport = {x, y, width, height};
    }
}

void glGenTextures(GLsizei count, GLuint* names) {
    for (GLsizei i = 0; i < count; ++i) {
        names[i] = ++state().lastTexture;
        state().textures.insert(names[i]);
    }
}
void glDeleteTextures(GLsizei count, const GLuint* names) {
    for (GLsizei i = 0; i < count; ++i) {
        state().textures.erase(names[i]);
        if (state().attributes.texture == names[i]) {
            state().attributes.texture = 0;
        }
    }
}
void glBindTexture(GLenum target, GLuint texture) {
    if (outsideGroup("glBindTexture") && target == GL_TEXTURE_2D) {
        state().attributes.texture = texture;
    }
}

void glPushAttrib(GLbitfield mask) {
    if (outsideGroup("glPushAttrib")) {
        state().attributeStack.emplace_back(mask, state().attributes);
    }
}
void glPopAttrib() {
    if (!outsideGroup("glPopAttrib") ||
        !require(!state().attributeStack.empty(), "glPopAttrib of an empty stack")) {
        return;
    }
    const auto [mask, saved] = state().attributeStack.back();
    state().attributeStack.pop_back();
    Attributes& now = state().attributes;
    const auto restore = [bits = mask](GLbitfield bit, auto& value, const auto& before) {
        if ((bits & bit) != 0) {
            value = before;
        }
    };
    restore(GL_CURRENT_BIT, now.color, saved.color);
    restore(GL_LINE_BIT, now.lineWidth, saved.lineWidth);
    restore(GL_ENABLE_BIT, now.enabled, saved.enabled);
    restore(GL_TEXTURE_BIT, now.texture, saved.texture);
    restore(GL_TRANSFORM_BIT, now.matrixMode, saved.matrixMode);
}
void glPushClientAttrib(GLbitfield) {
    ++state().clientAttributesPushed;
}
void glPopClientAttrib() {
    if (require(state().clientAttributesPushed > 0, "glPopClientAttrib of an empty stack")) {
        --state().clientAttributesPushed;
    }
}

void glGetFloatv(GLenum name, GLfloat* values) {
    get(name, values);
}
void glGetDoublev(GLenum name, GLdouble* values) {
    get(name, values);
}
void glGetIntegerv(GLenum name, GLint* values) {
    get(name, values);
}

void glMatrixMode(GLenum mode) {
    if (outsideGroup("glMatrixMode")) {
        state().attributes.matrixMode = mode;
    }
}
void glLoadIdentity() {
    load("glLoadIdentity", RecordingGL::State::identity);
}
void glLoadMatrixd(const GLdouble* m) {
    load("glLoadMatrixd", matrixOf(m));
}
void glMultMatrixd(const GLdouble* m) {
    multiply("glMultMatrixd", matrixOf(m));
}
void glTranslated(GLdouble x, GLdouble y, GLdouble z) {
    multiply("glTranslate", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1});
}
void glTranslatef(GLfloat x, GLfloat y, GLfloat z) {
    glTranslated(x, y, z);
}
void glScaled(GLdouble x, GLdouble y, GLdouble z) {
    multiply("glScale", {x, 0, 0, 0, 0, y, 0, 0, 0, 0, z, 0, 0, 0, 0, 1});
}
void glScalef(GLfloat x, GLfloat y, GLfloat z) {
    glScaled(x, y, z);
}
void glRotated(GLdouble degrees, GLdouble x, GLdouble y, GLdouble z) {
    const double length = std::sqrt(x * x + y * y + z * z);
    if (length > 0.0) {
        x /= length, y /= length, z /= length;
    }
    const double angle = degrees * std::acos(-1.0) / 180.0;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double d = 1.0 - c;
    multiply("glRotate",
             {x * x * d + c, y * x * d + z * s, x * z * d - y * s, 0, x * y * d - z * s, y * y * d + c,
              y * z * d + x * s, 0, x * z * d + y * s, y * z * d - x * s, z * z * d + c, 0, 0, 0, 0, 1});
}
void glOrtho(GLdouble l, GLdouble r, GLdouble b, GLdouble t, GLdouble n, GLdouble f) {
    multiply("glOrtho", {2 / (r - l), 0, 0, 0, 0, 2 / (t - b), 0, 0, 0, 0, -2 / (f - n), 0,
                         -(r + l) / (r - l), -(t + b) / (t - b), -(f + n) / (f - n), 1});
}
#ifdef _WIN32
// GLU is a library there that calls the driver.
void gluPerspective(GLdouble degrees, GLdouble aspect, GLdouble n, GLdouble f) {
    const double top = n * std::tan(degrees * std::acos(-1.0) / 360.0);
    const double right = top * aspect;
    multiply("gluPerspective", {n / right, 0, 0, 0, 0, n / top, 0, 0, 0, 0, -(f + n) / (f - n), -1, 0, 0,
                                -2 * f * n / (f - n), 0});
}
#endif
void glPushMatrix() {
    if (outsideGroup("glPushMatrix")) {
        stack().push_back(Matrix(stack().back()));
    }
}
void glPopMatrix() {
    if (outsideGroup("glPopMatrix") && require(stack().size() > 1, "glPopMatrix of an empty stack")) {
        stack().pop_back();
    }
}

}  // extern "C"
