#include "tests/support/RecordingGL.h"

#include <ostream>

RecordingGL::State& RecordingGL::state() {
    static State instance;
    return instance;
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

int RecordingGL::pushed() const {
    const State& s = state();
    return static_cast<int>(s.modelview.size() + s.projection.size() + s.textureMatrix.size() - 3 +
                            s.attributeStack.size()) +
           s.clientAttributesPushed;
}
