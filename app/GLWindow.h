#pragma once

#include "scene/InteractiveCameraView.h"

/// The one GLUT window as an object: GLUT's callbacks become virtual operations, and every frame has one
/// shape (clear, projection, modelview, scene, swap). It is its own camera. Only one may live at a time;
/// everything runs on the thread that created it.
///
///     class Game : public GLWindow { void drawScene() override; };
///     Game game(640, 480);
///     game.loop(true);
///
/// The handlers return true when they consumed the event.
class GLWindow : public InteractiveCameraView {
public:
    /// Opens a window of `width` by `height` pixels. Where there is no display, GLUT ends the process.
    GLWindow(int width, int height);
    GLWindow(const GLWindow&) = delete;
    GLWindow& operator=(const GLWindow&) = delete;
    ~GLWindow() override;

    /// The live size of the window in pixels.
    int width() override;
    int height() override;

    /// Whether a Shift key was held at the last press or release of a mouse button.
    bool shiftActive() override;

    /// Asks for another frame.
    void refresh() override;

    virtual void draw();
    virtual void drawScene();
    virtual void swapBuffers();
    virtual bool keyboardUp(unsigned char key, int x, int y);
    virtual bool keyboard(unsigned char key, int x, int y);
    virtual void idle();
    virtual void closing();
    virtual void entry(int state);
    virtual void reshape(int w, int h);
    /// Called in every round of the main loop, also while nothing is drawn because nothing can be seen.
    virtual void tend();

    /// With true runs GLUT's main loop until the window is closed; with false asks that loop to return.
    void loop(bool run);

private:
    void initialize(int width, int height, int flags);

    static void staticKeyboard(unsigned char key, int x, int y);
    static void staticKeyboardUp(unsigned char key, int x, int y);
    static void staticDisplay();
    static void staticClose();
    static void staticIdle();
    static void staticEntry(int state);
    static void staticReshape(int w, int h);
    static void staticMotion(int x, int y);
    static void staticPassive(int x, int y);
    static void staticMouse(int button, int state, int x, int y);

    int modifiers = 0;           ///< GLUT's modifier bits at the last mouse-button event
    bool frameWasDrawn = false;  ///< in this round of the main loop
};
