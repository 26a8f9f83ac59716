#pragma once

#include <vector>

#include "platform/wt/Polygon.h"
#include "platform/wt/Rect.h"

namespace wt {

/// A graphic cut into rows and columns, each cell a polygon, for backgrounds that stretch in some places and
/// not in others, such as a frame of fixed width around a middle that fills the rest. A value.
///
///     wt::GridGraphic frame(3, 3);
///     frame.setSizeX(1, 0.0f);                        // the middle column stretches
///     frame.setSizeY(1, 0.0f);
///     frame(0, 0) = wt::Polygon(wt::makeQuad({0, 0}, {0.05f, 0.05f}));
///
/// A column or row of size 0 stretches. Any other is as wide or high as the least extent among its cells'
/// polygons, in screen units. The grid always covers its target: if nothing stretches, the fixed ones grow in
/// proportion; if they do not fit, they shrink. Row 0 is the lowest, column 0 the leftmost.
class GridGraphic {
public:
    /// No cells: draws nothing.
    GridGraphic() = default;
    GridGraphic(int rows, int columns);

    /// Starts over with rows * columns cells, empty polygons, of sizes 1. Negative counts are 0.
    void init(int rows, int columns);
    /// 0 stretches, anything else is fixed. A column or row that does not exist is ignored.
    void setSizeX(int column, float size);
    void setSizeY(int row, float size);
    /// The cell's polygon. Requires 0 <= row < rows and 0 <= column < columns.
    Polygon& operator()(int row, int column);
    const Polygon& operator()(int row, int column) const;
    /// 1 draws an outline one pixel wide around the whole; 0, the initial value, draws no outline.
    void setBorder(int width) { border = width; }

    int rows() const { return static_cast<int>(sizeY.size()); }
    int columns() const { return static_cast<int>(sizeX.size()); }

    /// Where the cell lies when the grid covers `target`.
    Rect cellRect(int row, int column, const Rect& target) const;
    void draw(const Rect& target, float opacity) const;

private:
    std::vector<float> columnEdges(const Rect& target) const;
    std::vector<float> rowEdges(const Rect& target) const;

    std::vector<float> sizeX;
    std::vector<float> sizeY;
    std::vector<Polygon> cells;
    int border = 0;
};

}  // namespace wt
