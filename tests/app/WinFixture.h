#pragma once

#include <memory>

#include "tests/app/GameFixture.h"
#include "tests/support/OffscreenGL.h"

/// The game's window on a software screen.
class WinFixture : public GameFixture {
protected:
    using GameFixture::GameFixture;

    void SetUp() override;
    void TearDown() override;

    /// The colour of the pixel at a point of the world, in the plane of the staff, as 0xrrggbb.
    int worldPixel(double x, double y);

    std::unique_ptr<OffscreenGL> gl;
};
