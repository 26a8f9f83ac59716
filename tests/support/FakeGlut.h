#pragma once

#include <functional>
#include <string>
#include <vector>

/// A link-time double of GLUT: a test program that links zanto_fake_glut gets these definitions in place of
/// the library's. Nothing is opened; the registered callbacks are kept for the test to fire.
///
///     fakeglut::reset(640, 480);
///     Window window(640, 480);
///     fakeglut::state().display();
namespace fakeglut {

struct State {
    int width = 0;   ///< pixels, what the window's live size is
    int height = 0;  ///< pixels
    int modifiers = 0;
    bool initialised = false;
    int currentWindow = 0;  ///< 0 when there is none
    void* windowData = nullptr;

    std::vector<std::string> arguments;  ///< what glutInit was given
    int initialWidth = 0;
    int initialHeight = 0;
    unsigned int displayMode = 0;
    std::string title;
    int actionOnClose = -1;
    int keyRepeat = -1;
    std::vector<std::string> registered;  ///< callback kinds in the order of their registration

    int redisplays = 0;
    int swaps = 0;
    int timers = 0;
    int loopsLeft = 0;  ///< calls of glutLeaveMainLoop

    void (*keyboard)(unsigned char, int, int) = nullptr;
    void (*keyboardUp)(unsigned char, int, int) = nullptr;
    void (*display)() = nullptr;
    void (*close)() = nullptr;
    void (*idle)() = nullptr;
    void (*entry)(int) = nullptr;
    void (*reshape)(int, int) = nullptr;
    void (*motion)(int, int) = nullptr;
    void (*passive)(int, int) = nullptr;
    void (*mouse)(int, int, int, int) = nullptr;

    std::function<void()> mainLoop;  ///< what glutMainLoop does; nothing when empty
};

State& state();

/// Forgets everything; the next window's live size will be `width` by `height` pixels.
void reset(int width, int height);

/// What GLUT does once its main loop has returned: nothing is initialised and there is no window.
void shutDown();

}  // namespace fakeglut
