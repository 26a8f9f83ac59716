#include "platform/ffont/FFontData.h"

#include <limits>

#include <GL/gl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordingGL.h"

namespace {

/// A look at every vertex of a text, in a transform of doubles that no driver keeps as exactly.
TEST(FFontDataRecorded, TextInItsBoxHasItsVerticesThere) {
    const RecordingGL gl;
    FFontData face("Fonts/Vera.ttf", 24);
    glOrtho(0.0, 640.0, 0.0, 480.0, -1.0, 1.0);
    float x = 10.0F;
    float y = 10.0F;
    face.drawString("Twinkle, Twinkle", x, y, 40.0F, 40.0F, 100.0F, -1.0F);
    ASSERT_FALSE(gl.primitives().empty());
    for (const RecordingGL::Primitive& primitive : gl.primitives()) {
        for (const RecordingGL::Vertex& vertex : primitive.vertices) {
            EXPECT_GE(vertex.at.x, 10.0);
            EXPECT_LE(vertex.at.x, 110.0);
        }
    }
}

TEST(FFontDataRecorded, TextOfASizeThatIsNoNumberIsNotDrawn) {
    const RecordingGL gl;
    FFontData face("Fonts/Vera.ttf", 24);
    glScaled(std::numeric_limits<double>::lowest(), 1e-9, 1.0);
    float x = 99.0F;
    float y = 41.0F;
    face.drawString("c", x, y, 384.0F, 54.0F, 12.0F, 1.0F);
    EXPECT_THAT(gl.primitives(), testing::IsEmpty());
    EXPECT_THAT(gl.errors(), testing::IsEmpty());
}

}  // namespace
