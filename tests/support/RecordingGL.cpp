#include "tests/support/RecordingGL.h"

#include <GL/gl.h>

#include <ostream>

#include "tests/support/RecordedState.h"

using recorded::state;

recorded::State& recorded::state() {
    static State instance;
    return instance;
}

bool RecordingGL::Point::operator==(const Point& other) const {
    return x == other.x && y == other.y && z == other.z;
}

RecordingGL::Point RecordingGL::Primitive::eye(std::size_t vertex) const {
    const Point& p = vertices.at(vertex).at;
    const auto coordinate = [&](std::size_t row) {
        return modelview[row] * p.x + modelview[4 + row] * p.y + modelview[8 + row] * p.z +
               modelview[12 + row];
    };
    return {coordinate(0), coordinate(1), coordinate(2)};
}

std::ostream& operator<<(std::ostream& out, const RecordingGL::Line& line) {
    const auto& [r, g, b, a] = line.color;
    return out << "(" << line.from.x << ", " << line.from.y << ", " << line.from.z << ") to (" << line.to.x
               << ", " << line.to.y << ", " << line.to.z << "), colour (" << r << ", " << g << ", " << b
               << ", " << a << "), width " << line.width;
}

RecordingGL::RecordingGL() {
    state() = recorded::State();
}

const std::vector<RecordingGL::Primitive>& RecordingGL::primitives() const {
    return state().primitives;
}

std::vector<RecordingGL::Line> RecordingGL::lines(Space space) const {
    std::vector<Line> all;
    for (const Primitive& primitive : state().primitives) {
        const bool strip = primitive.mode == GL_LINE_STRIP || primitive.mode == GL_LINE_LOOP;
        if (!strip && primitive.mode != GL_LINES) {
            continue;
        }
        const std::size_t count = primitive.vertices.size();
        const std::size_t end = primitive.mode == GL_LINE_LOOP && count > 1 ? count : count - 1;
        for (std::size_t from = 0; from < end; from += strip ? 1 : 2) {
            const std::size_t to = (from + 1) % count;
            const bool eye = space == Space::eye;
            all.push_back({eye ? primitive.eye(from) : primitive.vertices[from].at,
                           eye ? primitive.eye(to) : primitive.vertices[to].at, primitive.vertices[to].color,
                           primitive.lineWidth});
        }
    }
    return all;
}

void RecordingGL::forget() {
    state().primitives.clear();
    state().groups = 0;
}

const std::vector<std::string>& RecordingGL::errors() const {
    return state().errors;
}

int RecordingGL::groups() const {
    return state().groups;
}

RecordingGL::Color RecordingGL::color() const {
    return state().attributes.color;
}

RecordingGL::Matrix RecordingGL::modelview() const {
    return state().modelview.back();
}

RecordingGL::Matrix RecordingGL::projection() const {
    return state().projection.back();
}

int RecordingGL::pushed() const {
    const recorded::State& s = state();
    return static_cast<int>(s.modelview.size() + s.projection.size() + s.textureMatrix.size() - 3 +
                            s.attributeStack.size()) +
           s.clientAttributesPushed;
}

int RecordingGL::textures() const {
    return static_cast<int>(state().textures.size());
}
