#include "platform/wt/Symbols.h"

#include <GL/gl.h>
#include <GL/glext.h>

namespace wt {
namespace {

const char* const solidSource =
    "#version 110\n"
    "void main() { gl_FragColor = gl_Color; }\n";

/// A program of this fragment source alone, 0 when GL refuses it.
unsigned int link(const char* source) {
    const GLuint shader = glCreateShader(GL_FRAGMENT_SHADER);
    if (shader == 0) {
        return 0;
    }
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLuint program = glCreateProgram();
    glAttachShader(program, shader);
    glLinkProgram(program);
    // Marked only: it stays for as long as the program does.
    glDeleteShader(shader);
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    if (linked == GL_FALSE) {
        glDeleteProgram(program);
        program = 0;
    }
    return program;
}

}  // namespace

std::unordered_map<std::string, unsigned int> wtSymbols::fragProgs;

bool haveFragmentPrograms() {
    // Null without a context; the version's first figure otherwise.
    const GLubyte* const version = glGetString(GL_VERSION);
    return version != nullptr && version[0] >= '2' && version[0] <= '9';
}

void loadFragmentPrograms() {
    unsigned int& solid = wtSymbols::fragProgs["solid_shader"];
    if (!haveFragmentPrograms()) {
        solid = 0;
    } else if (solid == 0 || glIsProgram(solid) == GL_FALSE) {
        solid = link(solidSource);
    }
}

}  // namespace wt
