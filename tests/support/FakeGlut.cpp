#include "tests/support/FakeGlut.h"

#include <GL/freeglut.h>

#include <cstdio>
#include <cstdlib>

namespace fakeglut {

State& state() {
    static State instance;
    return instance;
}

void reset(int width, int height) {
    state() = State();
    state().width = width;
    state().height = height;
}

void shutDown() {
    state().initialised = false;
    state().currentWindow = 0;
    state().windowData = nullptr;
}

}  // namespace fakeglut

using fakeglut::state;

namespace {

/// The state, for a call at which the real library ends the process while it is not initialised.
fakeglut::State& initialised(const char* call) {
    if (!state().initialised) {
        std::fprintf(stderr, "%s called without glutInit\n", call);
        std::exit(1);
    }
    return state();
}

}  // namespace

extern "C" {

void glutInit(int* count, char** arguments) {
    state().initialised = true;
    state().arguments.assign(arguments, arguments + *count);
}

void glutSetOption(GLenum what, int value) {
    fakeglut::State& now = initialised("glutSetOption");
    now.actionOnClose = what == GLUT_ACTION_ON_WINDOW_CLOSE ? value : now.actionOnClose;
}

void glutInitWindowSize(int width, int height) {
    state().initialWidth = width;
    state().initialHeight = height;
}

void glutInitDisplayMode(unsigned int mode) {
    state().displayMode = mode;
}

int glutCreateWindow(const char* title) {
    initialised("glutCreateWindow").title = title;
    return state().currentWindow = 1;
}

int glutGetWindow() {
    return initialised("glutGetWindow").currentWindow;
}

void glutSetWindowData(void* data) {
    initialised("glutSetWindowData").windowData = data;
}

void* glutGetWindowData() {
    return initialised("glutGetWindowData").windowData;
}

int glutGet(GLenum what) {
    if (what == GLUT_INIT_STATE) {
        return state().initialised ? 1 : 0;
    }
    const fakeglut::State& now = initialised("glutGet");
    return what == GLUT_WINDOW_WIDTH ? now.width : what == GLUT_WINDOW_HEIGHT ? now.height : 0;
}

void glutSetKeyRepeat(int mode) {
    initialised("glutSetKeyRepeat").keyRepeat = mode;
}

int glutGetModifiers() {
    return state().modifiers;
}

void glutPostRedisplay() {
    ++initialised("glutPostRedisplay").redisplays;
}

void glutSwapBuffers() {
    ++initialised("glutSwapBuffers").swaps;
}

void glutMainLoop() {
    if (initialised("glutMainLoop").mainLoop) {
        state().mainLoop();
    }
}

void glutLeaveMainLoop() {
    ++initialised("glutLeaveMainLoop").loopsLeft;
}

void glutTimerFunc(unsigned int, void (*callback)(int), int) {
    ++initialised("glutTimerFunc").timers;
    if (callback == nullptr) {
        std::fprintf(stderr, "a null timer callback ends the loop with a crash\n");
        std::abort();
    }
}

// Each glut...Func keeps its callback in the state's field of that name.
#define KEEP_CALLBACK(call, field, parameters)   \
    void call(void(*callback) parameters) {      \
        state().field = callback;                \
        state().registered.emplace_back(#field); \
    }
KEEP_CALLBACK(glutKeyboardFunc, keyboard, (unsigned char, int, int))
KEEP_CALLBACK(glutKeyboardUpFunc, keyboardUp, (unsigned char, int, int))
KEEP_CALLBACK(glutDisplayFunc, display, ())
KEEP_CALLBACK(glutCloseFunc, close, ())
KEEP_CALLBACK(glutIdleFunc, idle, ())
KEEP_CALLBACK(glutEntryFunc, entry, (int))
KEEP_CALLBACK(glutReshapeFunc, reshape, (int, int))
KEEP_CALLBACK(glutMotionFunc, motion, (int, int))
KEEP_CALLBACK(glutPassiveMotionFunc, passive, (int, int))
KEEP_CALLBACK(glutMouseFunc, mouse, (int, int, int, int))
#undef KEEP_CALLBACK

}  // extern "C"
