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

void glutKeyboardFunc(void (*callback)(unsigned char, int, int)) {
    state().keyboard = callback;
    state().registered.emplace_back("keyboard");
}

void glutKeyboardUpFunc(void (*callback)(unsigned char, int, int)) {
    state().keyboardUp = callback;
    state().registered.emplace_back("keyboardUp");
}

void glutDisplayFunc(void (*callback)()) {
    state().display = callback;
    state().registered.emplace_back("display");
}

void glutCloseFunc(void (*callback)()) {
    state().close = callback;
    state().registered.emplace_back("close");
}

void glutIdleFunc(void (*callback)()) {
    state().idle = callback;
    state().registered.emplace_back("idle");
}

void glutEntryFunc(void (*callback)(int)) {
    state().entry = callback;
    state().registered.emplace_back("entry");
}

void glutReshapeFunc(void (*callback)(int, int)) {
    state().reshape = callback;
    state().registered.emplace_back("reshape");
}

void glutMotionFunc(void (*callback)(int, int)) {
    state().motion = callback;
    state().registered.emplace_back("motion");
}

void glutPassiveMotionFunc(void (*callback)(int, int)) {
    state().passive = callback;
    state().registered.emplace_back("passive");
}

void glutMouseFunc(void (*callback)(int, int, int, int)) {
    state().mouse = callback;
    state().registered.emplace_back("mouse");
}

}  // extern "C"
