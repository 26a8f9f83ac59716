// OpenGL's state belongs to the caller: drawing leaves it as it was and is not disturbed by it.

#include <vector>

#include <GL/gl.h>
#include <GL/glext.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/ffont/WorldView.h"
#include "tests/support/GLStates.h"
#include "tests/support/Ink.h"

namespace {

// Every state that could disturb text, set to what text would not set.
void makeUnusual(unsigned int callersTexture) {
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, callersTexture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE);
    glActiveTexture(GL_TEXTURE1);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_ADD);
    glDisable(GL_BLEND);
    glBlendFunc(GL_ONE, GL_DST_COLOR);
    glBlendEquation(GL_FUNC_SUBTRACT);
    glEnable(GL_ALPHA_TEST);
    glAlphaFunc(GL_GREATER, 0.9f);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT_AND_BACK);
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 77);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 2);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 5);
    glTexCoord2f(0.25f, 0.75f);
    glNormal3f(1.0f, 0.0f, 0.0f);
    const char* const invisible = "void main() { gl_FragColor = vec4(0.0); }";
    const unsigned int shader = glCreateShader(GL_FRAGMENT_SHADER);
    glShaderSource(shader, 1, &invisible, nullptr);
    glCompileShader(shader);
    const unsigned int program = glCreateProgram();
    glAttachShader(program, shader);
    glLinkProgram(program);
    glUseProgram(program);
    glMatrixMode(GL_TEXTURE);
}

using FFontDataState = DrawnFace;

}  // namespace

TEST_F(FFontDataState, DrawingLeavesUsualAndUnusualStateAndIsNotDisturbedByIt) {
    const auto atFirst = readGLState();
    const auto usual = drawn(gl, face, "Score: 100", -2.0f, 0.0f, 1.0f, 1.0f);
    EXPECT_EQ(readGLState(), atFirst);
    unsigned int callersTexture = 0;
    glGenTextures(1, &callersTexture);
    makeUnusual(callersTexture);
    ASSERT_TRUE(gl.noErrors());
    // Another face, so that its pictures are uploaded under this state too.
    FFontData fresh("Fonts/Vera.ttf", 24);
    glColor4f(1.0f, 1.0f, 1.0f, 1.0f);
    const auto before = readGLState();
    const auto unusual = drawn(gl, fresh, "Score: 100", -2.0f, 0.0f, 1.0f, 1.0f);
    EXPECT_EQ(readGLState(), before);
    EXPECT_EQ(largestDifference(unusual, usual), 0);
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(FFontDataState, WritesNoDepth) {
    glEnable(GL_DEPTH_TEST);
    glClear(GL_DEPTH_BUFFER_BIT);
    drawn(gl, face, "H", 0.0f, 0.0f, 6.0f, 6.0f);
    std::vector<float> depths(std::size_t{640} * 480);
    glReadPixels(0, 0, 640, 480, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
    EXPECT_THAT(depths, testing::Each(1.0f));
}

TEST_F(FFontDataState, OwnsOneTextureAndDeletesIt) {
    const auto textures = [] {
        int count = 0;
        for (unsigned int name = 1; name < 1000; ++name) {
            count += glIsTexture(name);
        }
        return count;
    };
    for (const float scale : {0.3f, 1.0f, 4.0f}) {
        drawn(gl, face, "Score: 100", -2.0f, 0.0f, scale, scale);
        EXPECT_EQ(textures(), 1);
    }
    face.init("Fonts/Vera.ttf", 48);
    drawn(gl, face, "Score: 100", -2.0f, 0.0f, 1.0f, 1.0f);
    EXPECT_EQ(textures(), 1);
    face.release();
    EXPECT_EQ(textures(), 0);
    {
        FFontData other("Fonts/Vera.ttf", 24);
        drawn(gl, other, "text", 0.0f, 0.0f, 1.0f, 1.0f);
        EXPECT_EQ(textures(), 1);
    }
    EXPECT_EQ(textures(), 0);
}
