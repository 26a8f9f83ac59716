#include "app/GLWindow.h"

#include <GL/freeglut.h>
#include <unistd.h>

#include <utility>

#include "app/DesktopHints.h"
#include "platform/settings/Settings.h"

namespace {

constexpr int windowFlags = 30;
constexpr unsigned int baseDisplayMode = GLUT_DOUBLE | GLUT_ALPHA | GLUT_DEPTH;
constexpr unsigned int stencilDisplayMode = GLUT_DOUBLE | GLUT_DEPTH | GLUT_STENCIL;

void doNothing(int) {
}

constexpr unsigned int unseenPauseMicroseconds = 20000;

/// The live window, or null before the first one and after the last.
GLWindow* liveWindow() {
    return static_cast<GLWindow*>(glutGetWindowData());
}

}  // namespace

GLWindow::GLWindow(int width, int height) {
    initialize(width, height, windowFlags);
}

GLWindow::~GLWindow() {
    // A main loop that returned has shut GLUT down, and GLUT then ends the process at any other call.
    if (glutGet(GLUT_INIT_STATE) == 0) {
        return;
    }
    if (glutGetWindow() != 0) {
        glutSetWindowData(nullptr);
    }
    glutTimerFunc(0, doNothing, 0);
}

void GLWindow::initialize(int width, int height, int flags) {
    int argumentCount = 1;
    char programName[] = "program";
    char* arguments[] = {programName, nullptr};
#ifdef _WIN32
    // freeglut would look for a screen of that name, which may be an X server's.
    settings::set("DISPLAY", "");
#endif
    glutInit(&argumentCount, arguments);
    glutSetOption(GLUT_ACTION_ON_WINDOW_CLOSE, GLUT_ACTION_GLUTMAINLOOP_RETURNS);
    glutInitWindowSize(width, height);
    unsigned int displayMode = baseDisplayMode;
    if ((static_cast<unsigned int>(flags) & stencilDisplayMode) != 0) {
        displayMode |= stencilDisplayMode;
    }
    glutInitDisplayMode(displayMode);
    glutCreateWindow("");
    glutSetWindowData(this);
    // A key that is held down is one press.
    glutSetKeyRepeat(GLUT_KEY_REPEAT_OFF);
    giveDesktopHints();

    glutKeyboardFunc(staticKeyboard);
    glutKeyboardUpFunc(staticKeyboardUp);
    glutDisplayFunc(staticDisplay);
    glutCloseFunc(staticClose);
    glutIdleFunc(staticIdle);
    glutEntryFunc(staticEntry);
    glutReshapeFunc(staticReshape);
    glutMotionFunc(staticMotion);
    glutPassiveMotionFunc(staticPassive);
    glutMouseFunc(staticMouse);
}

void GLWindow::loop(bool run) {
    if (run) {
        glutMainLoop();
    } else {
        glutLeaveMainLoop();
    }
}

int GLWindow::width() {
    return glutGet(GLUT_WINDOW_WIDTH);
}

int GLWindow::height() {
    return glutGet(GLUT_WINDOW_HEIGHT);
}

bool GLWindow::shiftActive() {
    return (modifiers & GLUT_ACTIVE_SHIFT) != 0;
}

void GLWindow::refresh() {
    glutPostRedisplay();
}

void GLWindow::draw() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    applyProjection();
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    applyModelview();
    drawScene();
    swapBuffers();
}

void GLWindow::drawScene() {
    glBegin(GL_QUADS);
    glVertex2d(-1, -1);
    glVertex2d(1, -1);
    glVertex2d(1, 1);
    glVertex2d(-1, 1);
    glEnd();
}

void GLWindow::swapBuffers() {
    glutSwapBuffers();
}

bool GLWindow::keyboardUp(unsigned char, int, int) {
    return false;
}

bool GLWindow::keyboard(unsigned char, int, int) {
    return false;
}

void GLWindow::idle() {
}

void GLWindow::closing() {
}

void GLWindow::entry(int) {
}

void GLWindow::reshape(int w, int h) {
    glViewport(0, 0, w, h);
}

void GLWindow::tend() {
}

void GLWindow::staticKeyboard(unsigned char key, int x, int y) {
    if (GLWindow* window = liveWindow()) {
        window->keyboard(key, x, y);
    }
}

void GLWindow::staticKeyboardUp(unsigned char key, int x, int y) {
    if (GLWindow* window = liveWindow()) {
        window->keyboardUp(key, x, y);
    }
}

void GLWindow::staticDisplay() {
    if (GLWindow* window = liveWindow()) {
        window->draw();
        window->frameWasDrawn = true;
    }
}

void GLWindow::staticClose() {
    if (GLWindow* window = liveWindow()) {
        window->closing();
    }
}

void GLWindow::staticIdle() {
    GLWindow* const window = liveWindow();
    if (window != nullptr) {
        window->idle();
        window->tend();
    }
    // An invisible window gets no frames, and GLUT's loop would run without a pause.
    if (window == nullptr || !std::exchange(window->frameWasDrawn, false)) {
        usleep(unseenPauseMicroseconds);
    }
}

void GLWindow::staticEntry(int state) {
    if (GLWindow* window = liveWindow()) {
        window->entry(state);
    }
}

void GLWindow::staticReshape(int w, int h) {
    if (GLWindow* window = liveWindow()) {
        window->reshape(w, h);
    }
}

void GLWindow::staticMotion(int x, int y) {
    if (GLWindow* window = liveWindow()) {
        window->motion(x, y);
    }
}

void GLWindow::staticPassive(int x, int y) {
    if (GLWindow* window = liveWindow()) {
        window->motion(x, y);
    }
}

void GLWindow::staticMouse(int button, int state, int x, int y) {
    if (GLWindow* window = liveWindow()) {
        window->modifiers = glutGetModifiers();
        window->mouse(button, state == GLUT_DOWN, x, y);
    }
}
