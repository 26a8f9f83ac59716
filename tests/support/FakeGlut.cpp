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

namespace {

/// The real library ends the process when it is used while not initialised.
void requireInitialised(const char* call) {
    if (!state().initialised) {
        std::fprintf(stderr, "%s called without glutInit\n", call);
        std::exit(1);
    }
}

}  // namespace

}  // namespace fakeglut

using fakeglut::requireInitialised;
using fakeglut::state;

extern "C" {

void glutInit(int* count, char** arguments) {
    state().initialised = true;
    state().arguments.assign(arguments, arguments + *count);
}

void glutSetOption(GLenum what, int value) {
    requireInitialised("glutSetOption");
    if (what == GLUT_ACTION_ON_WINDOW_CLOSE) {
        state().actionOnClose = value;
    }
}

void glutInitWindowSize(int width, int height) {
    state().initialWidth = width;
    state().initialHeight = height;
}

void glutInitDisplayMode(unsigned int mode) {
    state().displayMode = mode;
}

int glutCreateWindow(const char* title) {
    requireInitialised("glutCreateWindow");
    state().title = title;
    state().currentWindow = 1;
    return 1;
}

int glutGetWindow() {
    requireInitialised("glutGetWindow");
    return state().currentWindow;
}

void glutSetWindowData(void* data) {
    requireInitialised("glutSetWindowData");
    state().windowData = data;
}

void* glutGetWindowData() {
    requireInitialised("glutGetWindowData");
    return state().windowData;
}

int glutGet(GLenum what) {
    if (what == GLUT_INIT_STATE) {
        return state().initialised ? 1 : 0;
    }
    requireInitialised("glutGet");
    return what == GLUT_WINDOW_WIDTH ? state().width : what == GLUT_WINDOW_HEIGHT ? state().height : 0;
}

void glutSetKeyRepeat(int mode) {
    requireInitialised("glutSetKeyRepeat");
    state().keyRepeat = mode;
}

int glutGetModifiers() {
    return state().modifiers;
}

void glutPostRedisplay() {
    requireInitialised("glutPostRedisplay");
    ++state().redisplays;
}

void glutSwapBuffers() {
    requireInitialised("glutSwapBuffers");
    ++state().swaps;
}

void glutMainLoop() {
    requireInitialised("glutMainLoop");
    if (state().mainLoop) {
        state().mainLoop();
    }
}

void glutLeaveMainLoop() {
    requireInitialised("glutLeaveMainLoop");
    ++state().loopsLeft;
}

void glutTimerFunc(unsigned int, void (*callback)(int), int) {
    requireInitialised("glutTimerFunc");
    if (callback == nullptr) {
        std::fprintf(stderr, "a null timer callback ends the loop with a crash\n");
        std::abort();
    }
    ++state().timers;
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
