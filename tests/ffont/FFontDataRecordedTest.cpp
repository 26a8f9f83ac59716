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
    float x = 10.0f;
    float y = 10.0f;
    face.drawString("Twinkle, Twinkle", x, y, 40.0f, 40.0f, 100.0f, -1.0f);
    ASSERT_FALSE(gl.primitives().empty());
    for (const RecordingGL::Primitive& primitive : gl.primitives()) {
        for (const RecordingGL::Vertex& vertex : primitive.vertices) {
            EXPECT_GE(vertex.at.x, 10.0);
            EXPECT_LE(vertex.at.x, 110.0);
        }
    }
    EXPECT_THAT(gl.errors(), testing::IsEmpty()) << "OpenGL 1.4 is enough";
}

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
