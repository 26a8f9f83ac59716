#include "tests/support/RecordingGL.h"

#include <ostream>
#include <utility>

#include "tests/support/RecordingGLState.h"

namespace recording_gl {

RecordingGL::Matrix const identity{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

State::State() : modelview{identity}, projection{identity}, textureMatrix{identity} {
}

State& state() {
    static State instance;
    return instance;
}

void State::fail(GLenum error, std::string const& what) {
    errors.push_back(what);
    if (firstError == GL_NO_ERROR) {
        firstError = error;
    }
}

bool State::outsideGroup(char const* call) {
    if (inGroup) {
        fail(GL_INVALID_OPERATION, std::string(call) + " between glBegin and glEnd");
    }
    return !inGroup;
}

void State::begin(GLenum mode) {
    inGroup = true;
    ++groups;
    GLuint const texture = attributes.enabled.count(GL_TEXTURE_2D) != 0 ? attributes.texture : 0;
    group = {mode, {}, attributes.lineWidth, texture, modelview.back()};
}

void State::vertex(double x, double y, double z) {
    if (inGroup) {
        group.vertices.push_back({{x, y, z}, attributes.color, attributes.texCoord});
    } else {
        fail(GL_INVALID_OPERATION, "a vertex outside glBegin and glEnd");
    }
}

void State::end() {
    inGroup = false;
    if (!group.vertices.empty()) {
        primitives.push_back(std::move(group));
    }
}

std::vector<RecordingGL::Matrix>& State::stack() {
    switch (attributes.matrixMode) {
        case GL_PROJECTION:
            return projection;
        case GL_TEXTURE:
            return textureMatrix;
        default:
            return modelview;
    }
}

void State::multiply(RecordingGL::Matrix const& factor) {
    RecordingGL::Matrix const top = stack().back();
    for (std::size_t column = 0; column < 4; ++column) {
        for (std::size_t row = 0; row < 4; ++row) {
            double sum = 0.0;
            for (std::size_t k = 0; k < 4; ++k) {
                sum += top[k * 4 + row] * factor[column * 4 + k];
            }
            stack().back()[column * 4 + row] = sum;
        }
    }
}

double ClientArray::at(int element, int component) const {
    auto const value = [&](auto sample) {
        using Sample = decltype(sample);
        int const bytes = stride != 0 ? stride : size * static_cast<int>(sizeof(Sample));
        auto const* first = static_cast<char const*>(data) + static_cast<std::ptrdiff_t>(element) * bytes;
        return static_cast<double>(reinterpret_cast<Sample const*>(first)[component]);
    };
    switch (type) {
        case GL_DOUBLE:
            return value(GLdouble());
        case GL_INT:
            return value(GLint());
        case GL_SHORT:
            return value(GLshort());
        case GL_UNSIGNED_BYTE:
            return value(GLubyte());
        default:
            return value(GLfloat());
    }
}

}  // namespace recording_gl

using recording_gl::state;

bool RecordingGL::Point::operator==(Point const& other) const {
    return x == other.x && y == other.y && z == other.z;
}

RecordingGL::Point RecordingGL::Primitive::eye(std::size_t vertex) const {
    Point const& p = vertices.at(vertex).at;
    auto const coordinate = [&](std::size_t row) {
        return modelview[row] * p.x + modelview[4 + row] * p.y + modelview[8 + row] * p.z +
               modelview[12 + row];
    };
    return {coordinate(0), coordinate(1), coordinate(2)};
}

std::ostream& operator<<(std::ostream& out, RecordingGL::Line const& line) {
    auto const& [r, g, b, a] = line.color;
    return out << "(" << line.from.x << ", " << line.from.y << ", " << line.from.z << ") to (" << line.to.x
               << ", " << line.to.y << ", " << line.to.z << "), colour (" << r << ", " << g << ", " << b
               << ", " << a << "), width " << line.width;
}

RecordingGL::RecordingGL() {
    state() = recording_gl::State();
}

std::vector<RecordingGL::Primitive> const& RecordingGL::primitives() const {
    return state().primitives;
}

std::vector<RecordingGL::Line> RecordingGL::lines(Space space) const {
    std::vector<Line> all;
    for (Primitive const& primitive : state().primitives) {
        std::size_t const count = primitive.vertices.size();
        auto const add = [&](std::size_t from, std::size_t to) {
            Vertex const& start = primitive.vertices[from];
            Vertex const& end = primitive.vertices[to];
            bool const eye = space == Space::eye;
            all.push_back({eye ? primitive.eye(from) : start.at, eye ? primitive.eye(to) : end.at, end.color,
                           primitive.lineWidth});
        };
        if (primitive.mode == GL_LINES) {
            for (std::size_t i = 0; i + 1 < count; i += 2) {
                add(i, i + 1);
            }
        } else if (primitive.mode == GL_LINE_STRIP || primitive.mode == GL_LINE_LOOP) {
            for (std::size_t i = 0; i + 1 < count; ++i) {
                add(i, i + 1);
            }
            if (primitive.mode == GL_LINE_LOOP && count > 1) {
                add(count - 1, 0);
            }
        }
    }
    return all;
}

void RecordingGL::forget() {
    state().primitives.clear();
    state().groups = 0;
}

std::vector<std::string> const& RecordingGL::errors() const {
    return state().errors;
}

int RecordingGL::groups() const {
    return state().groups;
}

RecordingGL::Color RecordingGL::color() const {
    return state().attributes.color;
}

float RecordingGL::lineWidth() const {
    return state().attributes.lineWidth;
}

RecordingGL::Matrix RecordingGL::modelview() const {
    return state().modelview.back();
}

RecordingGL::Matrix RecordingGL::projection() const {
    return state().projection.back();
}

int RecordingGL::pushed() const {
    auto const& s = state();
    return static_cast<int>(s.modelview.size() + s.projection.size() + s.textureMatrix.size() - 3 +
                            s.attributeStack.size() + s.arrayStack.size());
}

bool RecordingGL::enabled(unsigned capability) const {
    return state().attributes.enabled.count(capability) != 0;
}

int RecordingGL::textures() const {
    return static_cast<int>(state().textures.size());
}
