// The OpenGL functions that RecordingGL stands in for, defined under their own names: drawing and state.

#include <algorithm>

#include "tests/support/RecordingGLState.h"

using recording_gl::Attributes;
using recording_gl::ClientArray;
using recording_gl::state;

namespace {

void setColor(double r, double g, double b, double a) {
    state().attributes.color = {static_cast<float>(r), static_cast<float>(g), static_cast<float>(b),
                                static_cast<float>(a)};
}

void setTexCoord(double s, double t) {
    state().attributes.texCoord = {static_cast<float>(s), static_cast<float>(t)};
}

ClientArray* clientArray(GLenum name) {
    auto& arrays = state().arrays;
    switch (name) {
        case GL_VERTEX_ARRAY:
            return &arrays.vertex;
        case GL_COLOR_ARRAY:
            return &arrays.color;
        case GL_TEXTURE_COORD_ARRAY:
            return &arrays.texCoord;
        default:
            return nullptr;
    }
}

void setPointer(GLenum array, GLint size, GLenum type, GLsizei stride, void const* data) {
    ClientArray& target = *clientArray(array);
    target = {target.enabled, size, type, stride, data};
}

// A component of a colour array as 0 to 1.
double channel(ClientArray const& colors, int element, int component) {
    if (component >= colors.size) {
        return 1.0;
    }
    return colors.at(element, component) / (colors.type == GL_UNSIGNED_BYTE ? 255.0 : 1.0);
}

void drawElement(int element) {
    auto const& arrays = state().arrays;
    if (arrays.color.enabled) {
        setColor(channel(arrays.color, element, 0), channel(arrays.color, element, 1),
                 channel(arrays.color, element, 2), channel(arrays.color, element, 3));
    }
    if (arrays.texCoord.enabled) {
        setTexCoord(arrays.texCoord.at(element, 0), arrays.texCoord.at(element, 1));
    }
    if (arrays.vertex.enabled) {
        double const z = arrays.vertex.size > 2 ? arrays.vertex.at(element, 2) : 0.0;
        state().vertex(arrays.vertex.at(element, 0), arrays.vertex.at(element, 1), z);
    }
}

template <class ElementAt>
void drawArray(char const* call, GLenum mode, GLsizei count, ElementAt elementAt) {
    if (!state().outsideGroup(call)) {
        return;
    }
    auto const current = state().attributes;
    state().begin(mode);
    for (GLsizei i = 0; i < count; ++i) {
        drawElement(elementAt(i));
    }
    state().end();
    // Real arrays leave the current colour undefined; here it stays, so that no test depends on it changing.
    state().attributes = current;
}

template <class T>
void get(GLenum name, T* values) {
    auto const put = [&](auto const& source) {
        std::transform(source.begin(), source.end(), values, [](auto v) { return static_cast<T>(v); });
    };
    auto const& s = state();
    switch (name) {
        case GL_MODELVIEW_MATRIX:
            return put(s.modelview.back());
        case GL_PROJECTION_MATRIX:
            return put(s.projection.back());
        case GL_TEXTURE_MATRIX:
            return put(s.textureMatrix.back());
        case GL_VIEWPORT:
            return put(s.viewport);
        case GL_CURRENT_COLOR:
            return put(s.attributes.color);
        case GL_LINE_WIDTH:
            return put(std::array<float, 1>{s.attributes.lineWidth});
        case GL_MATRIX_MODE:
            return put(std::array<GLenum, 1>{s.attributes.matrixMode});
        case GL_TEXTURE_BINDING_2D:
            return put(std::array<GLuint, 1>{s.attributes.texture});
        case GL_MAX_TEXTURE_SIZE:
            return put(std::array<int, 1>{4096});
        default:
            return;
    }
}

void setEnabled(GLenum capability, bool enabled) {
    if (!state().outsideGroup(enabled ? "glEnable" : "glDisable")) {
        return;
    }
    auto& set = state().attributes.enabled;
    if (enabled) {
        set.insert(capability);
    } else {
        set.erase(capability);
    }
}

void setClientState(GLenum array, bool enabled) {
    if (ClientArray* target = clientArray(array)) {
        target->enabled = enabled;
    }
}

}  // namespace

extern "C" {

void glBegin(GLenum mode) {
    if (state().outsideGroup("glBegin")) {
        state().begin(mode);
    }
}
void glEnd() {
    if (state().inGroup) {
        state().end();
    } else {
        state().fail(GL_INVALID_OPERATION, "glEnd without glBegin");
    }
}

void glVertex2f(GLfloat x, GLfloat y) {
    state().vertex(x, y, 0.0);
}
void glVertex2d(GLdouble x, GLdouble y) {
    state().vertex(x, y, 0.0);
}
void glVertex2i(GLint x, GLint y) {
    state().vertex(x, y, 0.0);
}
void glVertex3f(GLfloat x, GLfloat y, GLfloat z) {
    state().vertex(x, y, z);
}
void glVertex3d(GLdouble x, GLdouble y, GLdouble z) {
    state().vertex(x, y, z);
}
void glVertex2fv(GLfloat const* v) {
    state().vertex(v[0], v[1], 0.0);
}
void glVertex2dv(GLdouble const* v) {
    state().vertex(v[0], v[1], 0.0);
}
void glVertex3fv(GLfloat const* v) {
    state().vertex(v[0], v[1], v[2]);
}
void glVertex3dv(GLdouble const* v) {
    state().vertex(v[0], v[1], v[2]);
}

void glColor3f(GLfloat r, GLfloat g, GLfloat b) {
    setColor(r, g, b, 1.0);
}
void glColor3d(GLdouble r, GLdouble g, GLdouble b) {
    setColor(r, g, b, 1.0);
}
void glColor3fv(GLfloat const* c) {
    setColor(c[0], c[1], c[2], 1.0);
}
void glColor3ub(GLubyte r, GLubyte g, GLubyte b) {
    setColor(r / 255.0, g / 255.0, b / 255.0, 1.0);
}
void glColor4f(GLfloat r, GLfloat g, GLfloat b, GLfloat a) {
    setColor(r, g, b, a);
}
void glColor4d(GLdouble r, GLdouble g, GLdouble b, GLdouble a) {
    setColor(r, g, b, a);
}
void glColor4fv(GLfloat const* c) {
    setColor(c[0], c[1], c[2], c[3]);
}
void glColor4ub(GLubyte r, GLubyte g, GLubyte b, GLubyte a) {
    setColor(r / 255.0, g / 255.0, b / 255.0, a / 255.0);
}

void glTexCoord2f(GLfloat s, GLfloat t) {
    setTexCoord(s, t);
}
void glTexCoord2d(GLdouble s, GLdouble t) {
    setTexCoord(s, t);
}
void glTexCoord2fv(GLfloat const* v) {
    setTexCoord(v[0], v[1]);
}

void glLineWidth(GLfloat width) {
    if (!state().outsideGroup("glLineWidth")) {
        return;
    }
    if (width > 0.0f) {
        state().attributes.lineWidth = width;
    } else {
        state().fail(GL_INVALID_VALUE, "glLineWidth of zero or less");
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
    if (width < 0 || height < 0) {
        state().fail(GL_INVALID_VALUE, "glViewport of a negative size");
    } else if (state().outsideGroup("glViewport")) {
        state().viewport = {x, y, width, height};
    }
}

void glGenTextures(GLsizei count, GLuint* names) {
    for (GLsizei i = 0; i < count; ++i) {
        names[i] = ++state().lastTexture;
        state().textures.insert(names[i]);
    }
}
void glDeleteTextures(GLsizei count, GLuint const* names) {
    for (GLsizei i = 0; i < count; ++i) {
        state().textures.erase(names[i]);
        if (state().attributes.texture == names[i]) {
            state().attributes.texture = 0;
        }
    }
}
void glBindTexture(GLenum target, GLuint texture) {
    if (state().outsideGroup("glBindTexture") && target == GL_TEXTURE_2D) {
        state().attributes.texture = texture;
    }
}

void glEnableClientState(GLenum array) {
    setClientState(array, true);
}
void glDisableClientState(GLenum array) {
    setClientState(array, false);
}
void glVertexPointer(GLint size, GLenum type, GLsizei stride, void const* data) {
    setPointer(GL_VERTEX_ARRAY, size, type, stride, data);
}
void glColorPointer(GLint size, GLenum type, GLsizei stride, void const* data) {
    setPointer(GL_COLOR_ARRAY, size, type, stride, data);
}
void glTexCoordPointer(GLint size, GLenum type, GLsizei stride, void const* data) {
    setPointer(GL_TEXTURE_COORD_ARRAY, size, type, stride, data);
}
void glDrawArrays(GLenum mode, GLint first, GLsizei count) {
    drawArray("glDrawArrays", mode, count, [=](GLsizei i) { return first + i; });
}
void glDrawElements(GLenum mode, GLsizei count, GLenum type, void const* indices) {
    drawArray("glDrawElements", mode, count, [=](GLsizei i) {
        switch (type) {
            case GL_UNSIGNED_BYTE:
                return static_cast<int>(static_cast<GLubyte const*>(indices)[i]);
            case GL_UNSIGNED_SHORT:
                return static_cast<int>(static_cast<GLushort const*>(indices)[i]);
            default:
                return static_cast<int>(static_cast<GLuint const*>(indices)[i]);
        }
    });
}

void glPushAttrib(GLbitfield mask) {
    if (state().outsideGroup("glPushAttrib")) {
        state().attributeStack.emplace_back(mask, state().attributes);
    }
}
void glPopAttrib() {
    if (!state().outsideGroup("glPopAttrib")) {
        return;
    }
    if (state().attributeStack.empty()) {
        state().fail(GL_STACK_UNDERFLOW, "glPopAttrib of an empty stack");
        return;
    }
    auto const [mask, saved] = state().attributeStack.back();
    state().attributeStack.pop_back();
    Attributes& now = state().attributes;
    if ((mask & GL_CURRENT_BIT) != 0) {
        now.color = saved.color;
        now.texCoord = saved.texCoord;
    }
    if ((mask & GL_LINE_BIT) != 0) {
        now.lineWidth = saved.lineWidth;
    }
    if ((mask & GL_ENABLE_BIT) != 0) {
        now.enabled = saved.enabled;
    }
    if ((mask & GL_TEXTURE_BIT) != 0) {
        now.texture = saved.texture;
    }
    if ((mask & GL_TRANSFORM_BIT) != 0) {
        now.matrixMode = saved.matrixMode;
    }
}
void glPushClientAttrib(GLbitfield) {
    state().arrayStack.push_back(state().arrays);
}
void glPopClientAttrib() {
    if (state().arrayStack.empty()) {
        state().fail(GL_STACK_UNDERFLOW, "glPopClientAttrib of an empty stack");
        return;
    }
    state().arrays = state().arrayStack.back();
    state().arrayStack.pop_back();
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

GLenum glGetError() {
    GLenum const error = state().firstError;
    state().firstError = GL_NO_ERROR;
    return error;
}

}  // extern "C"
