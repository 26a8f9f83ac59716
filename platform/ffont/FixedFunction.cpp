#include "platform/ffont/FixedFunction.h"

#include <GL/gl.h>
#include <GL/glext.h>

FixedFunction::FixedFunction() {
    if (programsExist()) {
        GLint program = 0;
        glGetIntegerv(GL_CURRENT_PROGRAM, &program);
        programBefore = static_cast<GLuint>(program);
        glUseProgram(0);
    }
}

FixedFunction::~FixedFunction() {
    if (programBefore != 0) {
        glUseProgram(programBefore);
    }
}

bool FixedFunction::programsExist() {
    // Null without a context, else it begins with the major version.
    const GLubyte* const version = glGetString(GL_VERSION);
    return version != nullptr && version[0] >= '2' && version[0] <= '9';
}
