#include "platform/wt/GridGraphic.h"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr float tolerance = 1e-5F;

void expectRect(const wt::Rect& actual, const wt::Rect& expected) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.w, expected.w, tolerance);
    EXPECT_NEAR(actual.h, expected.h, tolerance);
}

wt::Polygon quad(float width, float height) {
    return wt::Polygon(wt::makeQuad({0, 0}, {width, height}));
}

/// A frame of `thickness` around a middle that stretches.
wt::GridGraphic frame(float thickness) {
    wt::GridGraphic grid(3, 3);
    constexpr std::array<float, 3> sizes = {1, 0, 1};
    const std::array<float, 3> extents = {thickness, 0.8F, thickness};
    for (std::size_t i = 0; i < 3; ++i) {
        grid.setSizeX(static_cast<int>(i), sizes[i]);
        grid.setSizeY(static_cast<int>(i), sizes[i]);
        for (std::size_t j = 0; j < 3; ++j) {
            grid(static_cast<int>(i), static_cast<int>(j)) = quad(extents[i], extents[j]);
        }
    }
    return grid;
}

TEST(GridGraphicTest, FixedCellsKeepTheirExtentAndTheMiddleStretches) {
    const wt::GridGraphic grid = frame(0.05F);
    const wt::Rect screen{-1, -1, 2, 2};
    expectRect(grid.cellRect(0, 0, screen), {-1, -1, 0.05F, 0.05F});
    expectRect(grid.cellRect(1, 1, screen), {-0.95F, -0.95F, 1.9F, 1.9F});
    expectRect(grid.cellRect(2, 2, screen), {0.95F, 0.95F, 0.05F, 0.05F});
}

TEST(GridGraphicTest, RowsCountFromTheLowestAndColumnsFromTheLeft) {
    const wt::GridGraphic grid = frame(0.1F);
    const wt::Rect place{0, 0, 1, 2};
    expectRect(grid.cellRect(0, 1, place), {0.1F, 0, 0.8F, 0.1F});
    expectRect(grid.cellRect(1, 0, place), {0, 0.1F, 0.1F, 1.8F});
}

TEST(GridGraphicTest, WithNothingThatStretchesTheFixedCellsGrowInProportion) {
    wt::GridGraphic grid(1, 2);
    grid(0, 0) = quad(0.1F, 0.1F);
    grid(0, 1) = quad(0.3F, 0.1F);
    expectRect(grid.cellRect(0, 0, {0, 0, 0.8F, 0.6F}), {0, 0, 0.2F, 0.6F});
    expectRect(grid.cellRect(0, 1, {0, 0, 0.8F, 0.6F}), {0.2F, 0, 0.6F, 0.6F});
}

TEST(GridGraphicTest, FixedCellsThatDoNotFitShrinkAndNothingIsLeftToStretch) {
    const wt::GridGraphic grid = frame(0.5F);
    expectRect(grid.cellRect(0, 0, {0, 0, 0.2F, 0.2F}), {0, 0, 0.1F, 0.1F});
    expectRect(grid.cellRect(1, 1, {0, 0, 0.2F, 0.2F}), {0.1F, 0.1F, 0, 0});
}

TEST(GridGraphicTest, SeveralStretchingCellsShareTheRest) {
    wt::GridGraphic grid(1, 3);
    for (int column = 0; column < 3; ++column) {
        grid(0, column) = quad(0.2F, 1);
    }
    grid.setSizeX(1, 0);
    grid.setSizeX(2, 0);
    expectRect(grid.cellRect(0, 1, {0, 0, 1, 1}), {0.2F, 0, 0.4F, 1});
    expectRect(grid.cellRect(0, 2, {0, 0, 1, 1}), {0.6F, 0, 0.4F, 1});
}

TEST(GridGraphicTest, GridOfEmptyPolygonsStillCoversItsPlace) {
    const wt::GridGraphic grid(2, 2);
    const wt::Rect last = grid.cellRect(1, 1, {0, 0, 1, 1});
    EXPECT_NEAR(last.right(), 1, tolerance);
    EXPECT_NEAR(last.top(), 1, tolerance);
}

TEST(GridGraphicTest, InitStartsOverAndSizesOfMissingTracksAreIgnored) {
    wt::GridGraphic grid = frame(0.05F);
    grid.init(2, 1);
    EXPECT_EQ(grid.rows(), 2);
    EXPECT_EQ(grid.columns(), 1);
    EXPECT_EQ(grid(1, 0).extent(), (tavi::Vec2<float>(0, 0)));
    grid.setSizeX(5, 0);
    grid.setSizeY(-1, 0);
    grid.init(-2, 3);
    EXPECT_EQ(grid.rows(), 0);
}

TEST(GridGraphicTest, CopiesAreIndependent) {
    wt::GridGraphic original = frame(0.05F);
    const wt::GridGraphic copy = original;
    original(0, 0) = quad(0.3F, 0.3F);
    expectRect(copy.cellRect(0, 0, {0, 0, 1, 1}), {0, 0, 0.05F, 0.05F});
}

}  // namespace
