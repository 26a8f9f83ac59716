#include "platform/ffont/FFontData.h"

#include <limits>

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordingGL.h"

namespace {

/// In a transform of doubles that no driver keeps as exactly.
TEST(FFontDataRecorded, TextOfASizeThatIsNoNumberIsNotDrawn) {
    const RecordingGL gl;
    FFontData face("Fonts/Vera.ttf", 24);
    glScaled(std::numeric_limits<double>::lowest(), 1e-9, 1.0);
    float x = 99.0f;
    float y = 41.0f;
    face.drawString("c", x, y, 384.0f, 54.0f, 12.0f, 1.0f);
    EXPECT_THAT(gl.primitives(), testing::IsEmpty());
    EXPECT_THAT(gl.errors(), testing::IsEmpty());
}

}  // namespace
