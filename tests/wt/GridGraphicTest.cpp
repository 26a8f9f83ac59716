#include "platform/wt/GridGraphic.h"

#include <array>

#include "tests/wt/Stage.h"

namespace {

class GridGraphicTest : public Stage {
protected:
    static void expectRect(const wt::Rect& actual, const wt::Rect& expected) {
        Stage::expectRect(actual, expected, 0.001f);
    }
};

wt::Polygon quad(float width, float height) {
    return wt::Polygon(wt::makeQuad({0, 0}, {width, height}));
}

/// A frame of `thickness` around a middle that stretches.
wt::GridGraphic frame(float thickness) {
    wt::GridGraphic grid(3, 3);
    constexpr std::array<float, 3> sizes = {1, 0, 1};
    const std::array<float, 3> extents = {thickness, 0.8f, thickness};
    for (std::size_t i = 0; i < 3; ++i) {
        grid.setSizeX(static_cast<int>(i), sizes[i]);
        grid.setSizeY(static_cast<int>(i), sizes[i]);
        for (std::size_t j = 0; j < 3; ++j) {
            grid(static_cast<int>(i), static_cast<int>(j)) = quad(extents[i], extents[j]);
        }
    }
    return grid;
}

TEST_F(GridGraphicTest, FixedCellsKeepTheirExtentAndTheMiddleStretches) {
    const wt::GridGraphic grid = frame(0.05f);
    const wt::Rect screen{-1, -1, 2, 2};
    expectRect(grid.cellRect(0, 0, screen), {-1, -1, 0.05f, 0.05f});
    expectRect(grid.cellRect(1, 1, screen), {-0.95f, -0.95f, 1.9f, 1.9f});
    expectRect(grid.cellRect(2, 2, screen), {0.95f, 0.95f, 0.05f, 0.05f});
    // Rows count from the lowest, columns from the left.
    expectRect(grid.cellRect(0, 1, {0, 0, 1, 2}), {0.05f, 0, 0.9f, 0.05f});
    expectRect(grid.cellRect(1, 0, {0, 0, 1, 2}), {0, 0.05f, 0.05f, 1.9f});
}

TEST_F(GridGraphicTest, WithNothingThatStretchesTheFixedCellsGrowInProportion) {
    wt::GridGraphic grid(1, 2);
    grid(0, 0) = quad(0.1f, 0.1f);
    grid(0, 1) = quad(0.3f, 0.1f);
    expectRect(grid.cellRect(0, 0, {0, 0, 0.8f, 0.6f}), {0, 0, 0.2f, 0.6f});
    expectRect(grid.cellRect(0, 1, {0, 0, 0.8f, 0.6f}), {0.2f, 0, 0.6f, 0.6f});
}

TEST_F(GridGraphicTest, FixedCellsThatDoNotFitShrinkAndNothingIsLeftToStretch) {
    const wt::GridGraphic grid = frame(0.5f);
    expectRect(grid.cellRect(0, 0, {0, 0, 0.2f, 0.2f}), {0, 0, 0.1f, 0.1f});
    expectRect(grid.cellRect(1, 1, {0, 0, 0.2f, 0.2f}), {0.1f, 0.1f, 0, 0});
}

TEST_F(GridGraphicTest, SeveralStretchingCellsShareTheRest) {
    wt::GridGraphic grid(1, 3);
    for (int column = 0; column < 3; ++column) {
        grid(0, column) = quad(0.2f, 1);
    }
    grid.setSizeX(1, 0);
    grid.setSizeX(2, 0);
    expectRect(grid.cellRect(0, 1, {0, 0, 1, 1}), {0.2f, 0, 0.4f, 1});
    expectRect(grid.cellRect(0, 2, {0, 0, 1, 1}), {0.6f, 0, 0.4f, 1});
}

TEST_F(GridGraphicTest, GridOfEmptyPolygonsStillCoversItsPlace) {
    const wt::GridGraphic grid(2, 2);
    const wt::Rect last = grid.cellRect(1, 1, {0, 0, 1, 1});
    expectRect({0, 0, last.right(), last.top()}, {0, 0, 1, 1});
}

TEST_F(GridGraphicTest, InitStartsOverButNotInACopyAndSizesOfMissingTracksAreIgnored) {
    wt::GridGraphic grid = frame(0.05f);
    const wt::GridGraphic copy = grid;
    grid.init(2, 1);
    expectRect(copy.cellRect(0, 0, {0, 0, 1, 1}), {0, 0, 0.05f, 0.05f});
    EXPECT_EQ(grid.rows(), 2);
    EXPECT_EQ(grid.columns(), 1);
    EXPECT_EQ(grid(1, 0).extent(), (tavi::Vec2<float>(0, 0)));
    grid.setSizeX(5, 0);
    grid.setSizeY(-1, 0);
    grid.init(-2, 3);
    EXPECT_EQ(grid.rows(), 0);
}

}  // namespace
