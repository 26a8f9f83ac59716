#include "platform/wt/Symbols.h"

#include <GL/gl.h>
#include <GL/glext.h>

#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

namespace wt {
namespace {

const char* const solidSource =
    "#version 110\n"
    "void main() { gl_FragColor = gl_Color; }\n";

// For the fixed function a coordinate may have to be divided; a program that says otherwise takes less time
// in software.
const char* const pictureSource =
    "#version 110\n"
    "uniform sampler2D picture;\n"
    "void main() { gl_FragColor = texture2D(picture, gl_TexCoord[0].st); }\n";

const std::pair<const char*, const char*> sources[] = {{"solid_shader", solidSource},
                                                       {"picture_shader", pictureSource}};

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

bool haveExtension(const std::string& name) {
    const GLubyte* const all = glGetString(GL_EXTENSIONS);
    std::istringstream names(all != nullptr ? reinterpret_cast<const char*>(all) : "");
    return std::find(std::istream_iterator<std::string>(names), {}, name) !=
           std::istream_iterator<std::string>();
}

void loadFragmentPrograms() {
    const bool have = haveFragmentPrograms();
    for (const auto& [name, source] : sources) {
        unsigned int& program = wtSymbols::fragProgs[name];
        if (!have) {
            program = 0;
        } else if (program == 0 || glIsProgram(program) == GL_FALSE) {
            program = link(source);
        }
    }
    if (have && haveExtension("GL_ARB_ES2_compatibility")) {
        // Everything is compiled, and what did it is several MiB large.
        glReleaseShaderCompiler();
    }
}

}  // namespace wt
