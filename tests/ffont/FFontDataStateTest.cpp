// OpenGL's state belongs to the caller: drawing leaves it as it was and is not disturbed by it.

#include <array>
#include <cstring>
#include <initializer_list>
#include <vector>

#include <GL/gl.h>
#include <GL/glext.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/ffont/FFontData.h"
#include "tests/ffont/WorldView.h"
#include "tests/support/Ink.h"
#include "tests/support/OffscreenGL.h"

namespace {

std::vector<double> state() {
    std::vector<double> values;
    for (const GLenum name : std::initializer_list<GLenum>{
             GL_TEXTURE_2D, GL_BLEND, GL_ALPHA_TEST, GL_CULL_FACE, GL_LIGHTING, GL_DEPTH_TEST,
             GL_STENCIL_TEST, GL_SCISSOR_TEST, GL_FRAGMENT_PROGRAM_ARB, GL_VERTEX_PROGRAM_ARB,
             GL_COLOR_LOGIC_OP, GL_FOG, GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_TEXTURE_COORD_ARRAY}) {
        values.push_back(glIsEnabled(name));
    }
    for (const GLenum name : std::initializer_list<GLenum>{GL_TEXTURE_BINDING_2D,
                                                           GL_ACTIVE_TEXTURE,
                                                           GL_MATRIX_MODE,
                                                           GL_BLEND_SRC_RGB,
                                                           GL_BLEND_DST_RGB,
                                                           GL_BLEND_SRC_ALPHA,
                                                           GL_BLEND_DST_ALPHA,
                                                           GL_BLEND_EQUATION_RGB,
                                                           GL_BLEND_EQUATION_ALPHA,
                                                           GL_DEPTH_WRITEMASK,
                                                           GL_UNPACK_ALIGNMENT,
                                                           GL_UNPACK_ROW_LENGTH,
                                                           GL_UNPACK_SKIP_ROWS,
                                                           GL_UNPACK_SKIP_PIXELS,
                                                           GL_PACK_ALIGNMENT,
                                                           GL_ATTRIB_STACK_DEPTH,
                                                           GL_CLIENT_ATTRIB_STACK_DEPTH,
                                                           GL_MODELVIEW_STACK_DEPTH,
                                                           GL_PROJECTION_STACK_DEPTH,
                                                           GL_TEXTURE_STACK_DEPTH,
                                                           GL_SHADE_MODEL,
                                                           GL_CURRENT_PROGRAM,
                                                           GL_ARRAY_BUFFER_BINDING}) {
        values.push_back(0.0);
        glGetDoublev(name, &values.back());
    }
    for (const GLenum name : std::initializer_list<GLenum>{
             GL_MODELVIEW_MATRIX, GL_PROJECTION_MATRIX, GL_TEXTURE_MATRIX, GL_CURRENT_COLOR,
             GL_CURRENT_TEXTURE_COORDS, GL_CURRENT_NORMAL, GL_VIEWPORT, GL_COLOR_WRITEMASK}) {
        std::array<double, 16> several{};
        glGetDoublev(name, several.data());
        values.insert(values.end(), several.begin(), several.end());
    }
    std::array<int, 3> texture{};
    glGetTexEnviv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, &texture[0]);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &texture[1]);
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &texture[2]);
    values.insert(values.end(), texture.begin(), texture.end());
    return values;
}

// Everything that text could trip over, and nothing as it would set it itself.
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
    glAlphaFunc(GL_GREATER, 0.9F);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_FRONT_AND_BACK);
    glEnable(GL_LIGHTING);
    glEnable(GL_DEPTH_TEST);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 8);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 77);
    glPixelStorei(GL_UNPACK_SKIP_ROWS, 2);
    glPixelStorei(GL_UNPACK_SKIP_PIXELS, 5);
    glTexCoord2f(0.25F, 0.75F);
    glNormal3f(1.0F, 0.0F, 0.0F);
    const char* invisible = "!!ARBfp1.0\nMOV result.color, {0,0,0,0};\nEND\n";
    const unsigned int program = 1;
    OffscreenGL::function<PFNGLBINDPROGRAMARBPROC>("glBindProgramARB")(GL_FRAGMENT_PROGRAM_ARB, program);
    OffscreenGL::function<PFNGLPROGRAMSTRINGARBPROC>("glProgramStringARB")(
        GL_FRAGMENT_PROGRAM_ARB, GL_PROGRAM_FORMAT_ASCII_ARB, static_cast<int>(std::strlen(invisible)),
        invisible);
    glEnable(GL_FRAGMENT_PROGRAM_ARB);
    glMatrixMode(GL_TEXTURE);
}

class FFontDataState : public testing::Test {
protected:
    const OffscreenGL gl{640, 480};
    const WorldView view{gl};
    FFontData face{"Fonts/Vera.ttf", 24};
};

}  // namespace

TEST_F(FFontDataState, DrawingLeavesTheUsualState) {
    const std::vector<double> before = state();
    drawn(gl, face, "first", 0.0F, 0.0F, 1.0F, 1.0F);
    EXPECT_EQ(state(), before);
    drawn(gl, face, "again", 0.0F, 0.0F, 1.0F, 1.0F);
    EXPECT_EQ(state(), before);
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(FFontDataState, DrawingLeavesUnusualStateAndIsNotDisturbedByIt) {
    const auto usual = drawn(gl, face, "Score: 100", -2.0F, 0.0F, 1.0F, 1.0F);
    unsigned int callersTexture = 0;
    glGenTextures(1, &callersTexture);
    makeUnusual(callersTexture);
    ASSERT_TRUE(gl.noErrors());
    // Another face, so that its pictures are uploaded under this state too.
    FFontData fresh("Fonts/Vera.ttf", 24);
    glColor4f(1.0F, 1.0F, 1.0F, 1.0F);
    const std::vector<double> before = state();
    const auto unusual = drawn(gl, fresh, "Score: 100", -2.0F, 0.0F, 1.0F, 1.0F);
    EXPECT_EQ(state(), before);
    EXPECT_EQ(largestDifference(unusual, usual), 0);
    EXPECT_TRUE(gl.noErrors());
}

TEST_F(FFontDataState, WritesNoDepth) {
    glEnable(GL_DEPTH_TEST);
    glClear(GL_DEPTH_BUFFER_BIT);
    drawn(gl, face, "H", 0.0F, 0.0F, 6.0F, 6.0F);
    std::vector<float> depths(std::size_t{640} * 480);
    glReadPixels(0, 0, 640, 480, GL_DEPTH_COMPONENT, GL_FLOAT, depths.data());
    EXPECT_THAT(depths, testing::Each(1.0F));
}

TEST_F(FFontDataState, OwnsOneTextureAndDeletesIt) {
    const auto textures = [] {
        int count = 0;
        for (unsigned int name = 1; name < 1000; ++name) {
            count += glIsTexture(name);
        }
        return count;
    };
    for (const float scale : {0.3F, 1.0F, 4.0F}) {
        drawn(gl, face, "Score: 100", -2.0F, 0.0F, scale, scale);
        EXPECT_EQ(textures(), 1);
    }
    face.init("Fonts/Vera.ttf", 48);
    drawn(gl, face, "Score: 100", -2.0F, 0.0F, 1.0F, 1.0F);
    EXPECT_EQ(textures(), 1);
    face.release();
    EXPECT_EQ(textures(), 0);
    {
        FFontData other("Fonts/Vera.ttf", 24);
        drawn(gl, other, "text", 0.0F, 0.0F, 1.0F, 1.0F);
        EXPECT_EQ(textures(), 1);
    }
    EXPECT_EQ(textures(), 0);
}
