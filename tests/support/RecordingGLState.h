#pragma once

#include <GL/gl.h>

#include <set>
#include <string>
#include <vector>

#include "tests/support/RecordingGL.h"

/// What stands behind RecordingGL: the part of OpenGL's state that its calls read and write. Only the two
/// sources of RecordingGL use it.
namespace recording_gl {

struct ClientArray {
    bool enabled = false;
    int size = 4;
    GLenum type = GL_FLOAT;
    int stride = 0;  // bytes
    void const* data = nullptr;

    /// Component `component` of element `element`, as a number; bytes of a colour count as 0 to 255.
    double at(int element, int component) const;
};

/// What glPushAttrib may save.
struct Attributes {
    RecordingGL::Color color{1.0f, 1.0f, 1.0f, 1.0f};
    std::array<float, 2> texCoord{0.0f, 0.0f};
    float lineWidth = 1.0f;
    std::set<GLenum> enabled;
    GLuint texture = 0;
    GLenum matrixMode = GL_MODELVIEW;
};

struct Arrays {
    ClientArray vertex;
    ClientArray color;
    ClientArray texCoord;
};

struct State {
    State();

    Attributes attributes;
    std::vector<std::pair<GLbitfield, Attributes>> attributeStack;
    Arrays arrays;
    std::vector<Arrays> arrayStack;
    std::vector<RecordingGL::Matrix> modelview;
    std::vector<RecordingGL::Matrix> projection;
    std::vector<RecordingGL::Matrix> textureMatrix;
    std::array<int, 4> viewport{0, 0, 640, 480};
    std::set<GLuint> textures;
    GLuint lastTexture = 0;

    bool inGroup = false;
    RecordingGL::Primitive group;
    int groups = 0;
    std::vector<RecordingGL::Primitive> primitives;

    std::vector<std::string> errors;
    GLenum firstError = GL_NO_ERROR;

    /// False, with the error noted, between glBegin and glEnd.
    bool outsideGroup(char const* call);
    void fail(GLenum error, std::string const& what);

    void begin(GLenum mode);
    void vertex(double x, double y, double z);
    void end();

    std::vector<RecordingGL::Matrix>& stack();
    void multiply(RecordingGL::Matrix const& factor);
};

State& state();

extern RecordingGL::Matrix const identity;

}  // namespace recording_gl
