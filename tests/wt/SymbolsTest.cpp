#include "platform/wt/Symbols.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include "tests/support/OffscreenGL.h"

namespace {

TEST(SymbolsTest, ProgramIsLinkedAndIsMadeAgainWhenItIsGone) {
    const OffscreenGL gl(16, 16);
    for (int i = 0; i < 2; ++i) {
        wt::loadFragmentPrograms();
        const unsigned int program = wt::wtSymbols::fragProgs["solid_shader"];
        GLint linked = GL_FALSE;
        glGetProgramiv(program, GL_LINK_STATUS, &linked);
        EXPECT_EQ(linked, GL_TRUE);
        wt::loadFragmentPrograms();
        EXPECT_EQ(wt::wtSymbols::fragProgs["solid_shader"], program);
        glDeleteProgram(program);
    }
    EXPECT_TRUE(gl.noErrors());
}

}  // namespace
