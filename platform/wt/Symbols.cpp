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

/// Programs of ours that have not been drawn with, by their GL names, with their fragment sources; null for
/// those that GL refused.
std::unordered_map<unsigned int, const char*> unlinked;

/// Whether GL makes the program of this fragment source alone.
bool link(unsigned int program, const char* source) {
    const GLuint shader = glCreateShader(GL_FRAGMENT_SHADER);
    if (shader == 0) {
        return false;
    }
    glShaderSource(shader, 1, &source, nullptr);
    glCompileShader(shader);
    glAttachShader(program, shader);
    glLinkProgram(program);
    // Marked only: it stays for as long as the program does.
    glDeleteShader(shader);
    if (haveExtension("GL_ARB_ES2_compatibility")) {
        // What compiled it is several MiB large.
        glReleaseShaderCompiler();
    }
    GLint linked = GL_FALSE;
    glGetProgramiv(program, GL_LINK_STATUS, &linked);
    return linked != GL_FALSE;
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
            program = glCreateProgram();
            if (program != 0) {
                unlinked[program] = source;
            }
        }
    }
}

unsigned int linkedProgram(unsigned int program) {
    const auto found = unlinked.find(program);
    if (found == unlinked.end()) {
        return program;
    }
    if (found->second != nullptr && link(program, std::exchange(found->second, nullptr))) {
        unlinked.erase(found);
        return program;
    }
    return 0;
}

}  // namespace wt
