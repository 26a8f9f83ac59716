#include "platform/wt/Symbols.h"

#include <GL/gl.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/support/OffscreenGL.h"

namespace {

TEST(SymbolsTest, ExtensionIsFoundByItsWholeNameOnly) {
    const OffscreenGL gl(16, 16);
    const std::string all(reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS)));
    const std::string first = all.substr(0, all.find(' '));
    const std::string last = all.substr(all.find_last_of(' ', all.find_last_not_of(' ')) + 1);
    ASSERT_GT(first.size(), 4U);
    EXPECT_TRUE(wt::haveExtension(first));
    EXPECT_TRUE(wt::haveExtension(last.substr(0, last.find(' '))));
    EXPECT_FALSE(wt::haveExtension(first.substr(0, first.size() - 1)));
    EXPECT_FALSE(wt::haveExtension(""));
}

TEST(SymbolsTest, ProgramsAreThereAndMoreCanBeMadeAfterThem) {
    const OffscreenGL gl(16, 16);
    wt::loadFragmentPrograms();
    for (const char* name : {"solid_shader", "picture_shader"}) {
        EXPECT_EQ(glIsProgram(wt::wtSymbols::fragProgs[name]), GL_TRUE) << name;
        glDeleteProgram(wt::wtSymbols::fragProgs[name]);
    }
    wt::loadFragmentPrograms();
    for (const char* name : {"solid_shader", "picture_shader"}) {
        EXPECT_EQ(glIsProgram(wt::wtSymbols::fragProgs[name]), GL_TRUE) << name;
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

bool isLinked(unsigned int program) {
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    return linked != GL_FALSE;
}

TEST(SymbolsTest, ProgramIsCompiledWhenItIsFirstDrawnWith) {
    const OffscreenGL gl(16, 16);
    wt::loadFragmentPrograms();
    for (const char* name : {"solid_shader", "picture_shader"}) {
        const unsigned int program = wt::wtSymbols::fragProgs[name];
        glDeleteProgram(program);
        wt::loadFragmentPrograms();
        const unsigned int anew = wt::wtSymbols::fragProgs[name];
        EXPECT_FALSE(isLinked(anew)) << name;
        EXPECT_EQ(wt::linkedProgram(anew), anew) << name;
        EXPECT_TRUE(isLinked(anew)) << name;
        EXPECT_EQ(wt::linkedProgram(anew), anew) << name;
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST(SymbolsTest, ProgramThatCannotBeLinkedIsTheFixedFunction) {
    const OffscreenGL gl(16, 16);
    unsigned int& program = wt::wtSymbols::fragProgs["solid_shader"];
    glDeleteProgram(program);
    wt::loadFragmentPrograms();
    glDeleteProgram(program);
    EXPECT_EQ(wt::linkedProgram(program), 0U);
    EXPECT_EQ(wt::linkedProgram(program), 0U);
    EXPECT_NE(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
    while (glGetError() != GL_NO_ERROR) {
    }
    wt::loadFragmentPrograms();
    EXPECT_EQ(wt::linkedProgram(program), program);
    EXPECT_NE(program, 0U);
}

TEST(SymbolsTest, ProgramOfSomebodyElseStaysWhatItIs) {
    const OffscreenGL gl(16, 16);
    wt::loadFragmentPrograms();
    const GLuint foreign = glCreateProgram();
    EXPECT_EQ(wt::linkedProgram(foreign), foreign);
    EXPECT_EQ(wt::linkedProgram(0), 0U);
}

}  // namespace
