#include "platform/wt/GridGraphic.h"

#include <algorithm>
#include <limits>

#include "platform/wt/Painter.h"
#include "platform/wt/Screen.h"
#include "platform/wt/Theme.h"

namespace wt {
namespace {

/// The edges of tracks laid end to end from `start` over `length`: those of size 0 stretch.
std::vector<float> edges(float start, float length, const std::vector<float>& sizes,
                         const std::vector<float>& extents) {
    float fixed = 0;
    int stretching = 0;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        fixed += sizes[i] != 0 ? extents[i] : 0;
        stretching += sizes[i] == 0 ? 1 : 0;
    }
    const bool scaled = fixed > length || (stretching == 0 && fixed > 0);
    const float scale = scaled ? length / fixed : 1.0f;
    const float each = stretching > 0 ? (length - fixed * scale) / static_cast<float>(stretching) : 0.0f;
    std::vector<float> result{start};
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        result.push_back(result.back() + (sizes[i] == 0 ? each : extents[i] * scale));
    }
    // Rounding must not leave a hairline at the far side.
    result.back() = start + length;
    return result;
}

}  // namespace

GridGraphic::GridGraphic(int rows, int columns) {
    init(rows, columns);
}

void GridGraphic::init(int rows, int columns) {
    const auto r = static_cast<std::size_t>(std::max(rows, 0));
    const auto c = static_cast<std::size_t>(std::max(columns, 0));
    sizeX.assign(c, 1.0f);
    sizeY.assign(r, 1.0f);
    cells.assign(r * c, Polygon());
}

void GridGraphic::setSizeX(int column, float size) {
    if (column >= 0 && column < columns()) {
        sizeX[static_cast<std::size_t>(column)] = size;
    }
}

void GridGraphic::setSizeY(int row, float size) {
    if (row >= 0 && row < rows()) {
        sizeY[static_cast<std::size_t>(row)] = size;
    }
}

Polygon& GridGraphic::operator()(int row, int column) {
    return cells[static_cast<std::size_t>(row) * sizeX.size() + static_cast<std::size_t>(column)];
}

const Polygon& GridGraphic::operator()(int row, int column) const {
    return cells[static_cast<std::size_t>(row) * sizeX.size() + static_cast<std::size_t>(column)];
}

std::vector<float> GridGraphic::columnEdges(const Rect& target) const {
    std::vector<float> extents(sizeX.size(), std::numeric_limits<float>::max());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        float& extent = extents[i % sizeX.size()];
        extent = std::min(extent, cells[i].extent().x);
    }
    return edges(target.x, target.w, sizeX, extents);
}

std::vector<float> GridGraphic::rowEdges(const Rect& target) const {
    std::vector<float> extents(sizeY.size(), std::numeric_limits<float>::max());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        float& extent = extents[i / sizeX.size()];
        extent = std::min(extent, cells[i].extent().y);
    }
    return edges(target.y, target.h, sizeY, extents);
}

Rect GridGraphic::cellRect(int row, int column, const Rect& target) const {
    const std::vector<float> xs = columnEdges(target);
    const std::vector<float> ys = rowEdges(target);
    const auto c = static_cast<std::size_t>(column);
    const auto r = static_cast<std::size_t>(row);
    return {xs[c], ys[r], xs[c + 1] - xs[c], ys[r + 1] - ys[r]};
}

void GridGraphic::draw(const Rect& target, float opacity) const {
    if (cells.empty()) {
        return;
    }
    for (int row = 0; row < rows(); ++row) {
        for (int column = 0; column < columns(); ++column) {
            (*this)(row, column).draw(screen().onPixels(cellRect(row, column, target)), opacity);
        }
    }
    if (border != 0) {
        paint::strokeRounded(target, 0, 1, theme().border.faded(opacity));
    }
}

}  // namespace wt
