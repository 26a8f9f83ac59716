#include "tests/app/WinFixture.h"

#include <cmath>

void WinFixture::SetUp() {
    gl = std::make_unique<OffscreenGL>(screenWidth, screenHeight);
    GameFixture::SetUp();
}

void WinFixture::TearDown() {
    if (gl) {
        EXPECT_TRUE(gl->noErrors());
    }
    GameFixture::TearDown();
}

int WinFixture::worldPixel(double x, double y) {
    const double halfHeight = 10.0 * std::tan(M_PI / 8.0);  // of 45 degrees, from ten units away
    const double aspect = static_cast<double>(screenWidth) / screenHeight;
    const int column = static_cast<int>((x / (halfHeight * aspect) + 1.0) / 2.0 * screenWidth);
    const int row = static_cast<int>((1.0 - y / halfHeight) / 2.0 * screenHeight);
    const auto picture = gl->read();
    return (picture.at(column, row, 0) << 16) | (picture.at(column, row, 1) << 8) |
           picture.at(column, row, 2);
}
