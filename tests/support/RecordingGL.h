#pragma once

#include <GL/gl.h>

#include <array>
#include <iosfwd>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// A stand-in for OpenGL that remembers what is drawn in immediate mode. It needs no context. Link
/// `zanto_recording_gl` into a test program and the fixed-function calls of everything in that program, GLU's
/// too, come here instead of to the driver; calls that it does not know still go there, where they do nothing
/// without a context.
///
///     RecordingGL gl;
///     song.draw(0.0);
///     EXPECT_EQ(gl.lines().size(), 5u);
///     EXPECT_THAT(gl.errors(), IsEmpty());
///
/// There is one state for the process, as with a real context; each RecordingGL starts it afresh.
class RecordingGL {
public:
    using Color = std::array<float, 4>;     ///< red, green, blue, alpha
    using Matrix = std::array<double, 16>;  ///< column by column, as OpenGL keeps it

    struct Point {
        double x;
        double y;
        double z;
        bool operator==(const Point& other) const { return x == other.x && y == other.y && z == other.z; }
    };
    struct Vertex {
        Point at;  ///< as it was given, before the model-view transform
        Color color;
    };
    struct Primitive {
        unsigned mode;  ///< GL_LINES, GL_QUADS, ...
        std::vector<Vertex> vertices;
        float lineWidth;
        unsigned texture;  ///< the name bound to GL_TEXTURE_2D, 0 while texturing is off
        Matrix modelview;
        Point eye(std::size_t vertex) const;  ///< after the model-view transform
    };
    struct Line {
        Point from;
        Point to;
        Color color;
        float width;
        friend std::ostream& operator<<(std::ostream& out, const Line& line);
    };
    enum class Space { model, eye };

    /// What glPushAttrib may save.
    struct Attributes {
        Color color{1.0f, 1.0f, 1.0f, 1.0f};
        float lineWidth = 1.0f;
        std::set<GLenum> enabled;
        GLuint texture = 0;
        GLenum matrixMode = GL_MODELVIEW;
    };
    /// The part of OpenGL's state that the calls of RecordedCalls.cpp read and write.
    struct State {
        static constexpr Matrix identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
        Attributes attributes;
        std::vector<std::pair<GLbitfield, Attributes>> attributeStack;
        int clientAttributesPushed = 0;
        std::vector<Matrix> modelview{identity};
        std::vector<Matrix> projection{identity};
        std::vector<Matrix> textureMatrix{identity};
        std::array<int, 4> viewport{0, 0, 640, 480};
        std::set<GLuint> textures;
        GLuint lastTexture = 0;

        bool inGroup = false;
        Primitive group;
        int groups = 0;
        std::vector<Primitive> primitives;
        std::vector<std::string> errors;
    };
    static State& state();

    /// OpenGL's initial state, with a viewport of 640 by 480, and nothing recorded.
    RecordingGL() { state() = State(); }

    /// Everything drawn so far, one entry for each group that had a vertex, in order.
    const std::vector<Primitive>& primitives() const { return state().primitives; }

    /// Every line segment of the line primitives, in order, in the coordinates that the drawing code gave or
    /// after its transforms.
    std::vector<Line> lines(Space space = Space::model) const;

    /// Forgets what was drawn and keeps the state.
    void forget();

    /// One sentence for each call that OpenGL would have refused.
    const std::vector<std::string>& errors() const { return state().errors; }

    /// How many groups there were, empty ones included.
    int groups() const { return state().groups; }

    Color color() const { return state().attributes.color; }
    Matrix modelview() const { return state().modelview.back(); }
    Matrix projection() const { return state().projection.back(); }
    /// Matrices, attribute groups and client attribute groups that are pushed and not popped.
    int pushed() const;
    /// Texture names generated and not deleted.
    int textures() const { return static_cast<int>(state().textures.size()); }
};
