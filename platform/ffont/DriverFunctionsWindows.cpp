#include "platform/ffont/DriverFunctions.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <windows.h>

// Under the names that the GL library has elsewhere.
namespace {

/// An entry point of the driver; null where the driver has none.
template <typename Function>
class EntryPoint {
public:
    void load(const char* name) {
        // Some drivers give small numbers for what they do not have.
        const auto address = reinterpret_cast<INT_PTR>(wglGetProcAddress(name));
        if (address > 3 || address < -1) {
            function = reinterpret_cast<Function>(address);
        }
    }
    explicit operator bool() const { return function != nullptr; }
    /// Does nothing, and gives 0, where the driver has none.
    template <typename... Arguments>
    auto operator()(Arguments... arguments) const {
        using Result = decltype(function(arguments...));
        return function == nullptr ? Result() : function(arguments...);
    }

private:
    Function function = nullptr;
};

EntryPoint<PFNGLACTIVETEXTUREPROC> activeTexture;
EntryPoint<PFNGLATTACHSHADERPROC> attachShader;
EntryPoint<PFNGLBLENDEQUATIONPROC> blendEquation;
EntryPoint<PFNGLBLENDFUNCSEPARATEPROC> blendFuncSeparate;
EntryPoint<PFNGLCOMPILESHADERPROC> compileShader;
EntryPoint<PFNGLCREATEPROGRAMPROC> createProgram;
EntryPoint<PFNGLCREATESHADERPROC> createShader;
EntryPoint<PFNGLDELETEPROGRAMPROC> deleteProgram;
EntryPoint<PFNGLDELETESHADERPROC> deleteShader;
EntryPoint<PFNGLGETPROGRAMIVPROC> getProgramiv;
EntryPoint<PFNGLISPROGRAMPROC> isProgram;
EntryPoint<PFNGLLINKPROGRAMPROC> linkProgram;
EntryPoint<PFNGLMULTITEXCOORD2FPROC> multiTexCoord2f;
EntryPoint<PFNGLRELEASESHADERCOMPILERPROC> releaseShaderCompiler;
EntryPoint<PFNGLSHADERSOURCEPROC> shaderSource;
EntryPoint<PFNGLUSEPROGRAMPROC> useProgram;

}  // namespace

void loadDriverFunctions() {
    activeTexture.load("glActiveTexture");
    attachShader.load("glAttachShader");
    blendEquation.load("glBlendEquation");
    blendFuncSeparate.load("glBlendFuncSeparate");
    compileShader.load("glCompileShader");
    createProgram.load("glCreateProgram");
    createShader.load("glCreateShader");
    deleteProgram.load("glDeleteProgram");
    deleteShader.load("glDeleteShader");
    getProgramiv.load("glGetProgramiv");
    isProgram.load("glIsProgram");
    linkProgram.load("glLinkProgram");
    multiTexCoord2f.load("glMultiTexCoord2f");
    releaseShaderCompiler.load("glReleaseShaderCompiler");
    shaderSource.load("glShaderSource");
    useProgram.load("glUseProgram");
}

extern "C" {

void glActiveTexture(GLenum unit) {
    activeTexture(unit);
}
void glAttachShader(GLuint program, GLuint shader) {
    attachShader(program, shader);
}
void glBlendEquation(GLenum mode) {
    blendEquation(mode);
}
void glBlendFuncSeparate(GLenum source, GLenum target, GLenum sourceAlpha, GLenum targetAlpha) {
    if (blendFuncSeparate) {
        blendFuncSeparate(source, target, sourceAlpha, targetAlpha);
    } else {
        glBlendFunc(source, target);
    }
}
void glCompileShader(GLuint shader) {
    compileShader(shader);
}
GLuint glCreateProgram() {
    return createProgram();
}
GLuint glCreateShader(GLenum kind) {
    return createShader(kind);
}
void glDeleteProgram(GLuint program) {
    deleteProgram(program);
}
void glDeleteShader(GLuint shader) {
    deleteShader(shader);
}
void glGetProgramiv(GLuint program, GLenum name, GLint* value) {
    getProgramiv(program, name, value);
}
GLboolean glIsProgram(GLuint program) {
    return isProgram(program);
}
void glLinkProgram(GLuint program) {
    linkProgram(program);
}
void glMultiTexCoord2f(GLenum unit, GLfloat s, GLfloat t) {
    if (multiTexCoord2f) {
        multiTexCoord2f(unit, s, t);
    } else if (unit == GL_TEXTURE0) {
        glTexCoord2f(s, t);
    }
}
void glReleaseShaderCompiler() {
    releaseShaderCompiler();
}
void glShaderSource(GLuint shader, GLsizei count, const GLchar* const* text, const GLint* lengths) {
    shaderSource(shader, count, text, lengths);
}
void glUseProgram(GLuint program) {
    useProgram(program);
}

}  // extern "C"
