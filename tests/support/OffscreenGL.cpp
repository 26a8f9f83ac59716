#include "tests/support/OffscreenGL.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <stdexcept>
#include <string>

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <GL/gl.h>
#include <GL/glext.h>

namespace {

void require(bool done, const char* step) {
    if (!done) {
        char code[32];
        std::snprintf(code, sizeof code, " (EGL error 0x%04x)", static_cast<unsigned>(eglGetError()));
        throw std::runtime_error(std::string("no offscreen OpenGL: ") + step + code);
    }
}

// One display for the process, never terminated: that would unload the driver, and with it all that points to
// the driver's own memory, which would then count as leaked.
EGLDisplay openDisplay() {
    EGLDisplay display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    require(display != EGL_NO_DISPLAY, "opening the surfaceless display");
    require(eglInitialize(display, nullptr, nullptr), "initialising EGL");
    return display;
}

EGLConfig chooseConfig(EGLDisplay display) {
    const EGLint wanted[][2] = {{EGL_SURFACE_TYPE, EGL_PBUFFER_BIT},
                                {EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT},
                                {EGL_RED_SIZE, 8},
                                {EGL_GREEN_SIZE, 8},
                                {EGL_BLUE_SIZE, 8},
                                {EGL_ALPHA_SIZE, 8},
                                {EGL_DEPTH_SIZE, 24},
                                {EGL_STENCIL_SIZE, 8},
                                {EGL_NONE, EGL_NONE}};
    EGLConfig config = nullptr;
    EGLint count = 0;
    require(eglChooseConfig(display, &wanted[0][0], &config, 1, &count) && count == 1,
            "choosing a configuration");
    return config;
}

}  // namespace

OffscreenGL::OffscreenGL(int width, int height) : widthPx(width), heightPx(height), display(openDisplay()) {
    require(eglBindAPI(EGL_OPENGL_API), "binding desktop OpenGL");
    EGLConfig config = chooseConfig(display);
    const EGLint size[] = {EGL_WIDTH, width, EGL_HEIGHT, height, EGL_NONE};
    surface = eglCreatePbufferSurface(display, config, size);
    require(surface != EGL_NO_SURFACE, "creating the surface");
    const EGLint profile[] = {EGL_CONTEXT_OPENGL_PROFILE_MASK, EGL_CONTEXT_OPENGL_COMPATIBILITY_PROFILE_BIT,
                              EGL_NONE};
    context = eglCreateContext(display, config, EGL_NO_CONTEXT, profile);
    require(context != EGL_NO_CONTEXT, "creating the context");
    require(eglMakeCurrent(display, surface, surface, context), "making the context current");
    glViewport(0, 0, width, height);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT | GL_STENCIL_BUFFER_BIT);
}

OffscreenGL::~OffscreenGL() {
    eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display, context);
    eglDestroySurface(display, surface);
}

tavi::Image<unsigned char> OffscreenGL::read() const {
    const int channels = 4;
    tavi::Image<unsigned char> picture(widthPx, heightPx, channels);
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_ROW_LENGTH, 0);
    glPixelStorei(GL_PACK_SKIP_ROWS, 0);
    glPixelStorei(GL_PACK_SKIP_PIXELS, 0);
    glReadPixels(0, 0, widthPx, heightPx, GL_RGBA, GL_UNSIGNED_BYTE, picture.data());
    glPopClientAttrib();
    unsigned char* top = picture.data();
    unsigned char* bottom = top + static_cast<std::ptrdiff_t>(widthPx) * channels * (heightPx - 1);
    const std::ptrdiff_t rowBytes = static_cast<std::ptrdiff_t>(widthPx) * channels;
    for (; top < bottom; top += rowBytes, bottom -= rowBytes) {
        std::swap_ranges(top, top + rowBytes, bottom);
    }
    return picture;
}

bool OffscreenGL::noErrors() const {
    bool none = true;
    for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
        std::fprintf(stderr, "OpenGL error 0x%04x\n", error);
        none = false;
    }
    return none;
}
