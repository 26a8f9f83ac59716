#include "platform/wt/Symbols.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include "platform/ffont/FixedFunction.h"

namespace wt {
namespace {

const char* const solidSource =
    "#version 110\n"
    "void main() { gl_FragColor = gl_Color; }\n";

/// A program of this fragment source alone; 0 when GL refuses it.
GLuint link(const char* source) {
    const GLuint shader = glCreateShader(GL_FRAGMENT_SHADER);
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    GLuint program = glCreateProgram();
    glAttachShader(program, shader);
    glLinkProgram(program);
    // GL keeps it as long as the program.
    glDeleteShader(shader);
    const GLubyte* const version = glGetString(GL_VERSION);
    if (version[0] > '4' || (version[0] == '4' && version[2] >= '1')) {
        // What compiled it takes several MiB.
        glReleaseShaderCompiler();
    }
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

void loadFragmentPrograms() {
    unsigned int& solid = wtSymbols::fragProgs["solid_shader"];
    if (!FixedFunction::programsExist()) {
        solid = 0;
    } else if (solid == 0 || glIsProgram(solid) == GL_FALSE) {
        solid = link(solidSource);
    }
}

}  // namespace wt
