#pragma once

#include <GL/gl.h>

#include <array>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/RecordingGL.h"

/// What RecordingGL shows and the calls of RecordedCalls.cpp write.
namespace recorded {

inline constexpr RecordingGL::Matrix identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// What glPushAttrib may save.
struct Attributes {
    RecordingGL::Color color{1.0f, 1.0f, 1.0f, 1.0f};
    float lineWidth = 1.0f;
    std::set<GLenum> enabled;
    GLuint texture = 0;
    GLenum matrixMode = GL_MODELVIEW;
};

/// The part of OpenGL's state that the calls below read and write.
struct State {
    Attributes attributes;
    std::vector<std::pair<GLbitfield, Attributes>> attributeStack;
    int clientAttributesPushed = 0;
    std::vector<RecordingGL::Matrix> modelview{identity};
    std::vector<RecordingGL::Matrix> projection{identity};
    std::vector<RecordingGL::Matrix> textureMatrix{identity};
    std::array<int, 4> viewport{0, 0, 640, 480};
    std::set<GLuint> textures;
    GLuint lastTexture = 0;

    bool inGroup = false;
    RecordingGL::Primitive group;
    int groups = 0;
    std::vector<RecordingGL::Primitive> primitives;
    std::vector<std::string> errors;
};

State& state();

}  // namespace recorded
