#pragma once

#include "scene/CameraCommon.h"

/// A camera that the mouse moves. With the middle button held a drag turns it, or pans it while Shift is
/// held; with the right button held a drag moves it along its viewing axis. Feed it the window's mouse
/// events; after every drag it asks for a redraw through `refresh()`. Its movement has no limits.
class InteractiveCameraView : public CameraCommon {
public:
    /// Whether a Shift key is held.
    virtual bool shiftActive() = 0;

    /// A press (`down`) or release of GLUT's `button` at (`x`, `y`) in pixels, y down. Returns 1: consumed.
    virtual int mouse(int button, bool down, int x, int y);

    /// The pointer is now at (`x`, `y`) in pixels, y down.
    virtual void motion(int x, int y);

    /// Called after every motion; does nothing here.
    virtual void refresh();

private:
    void turn(double dx, double dy);
    void pan(double dx, double dy);

    int buttonState = 0;  ///< 0 with no button held, else GLUT's button number + 1
    int lastX = 0;        ///< pixels
    int lastY = 0;        ///< pixels
};
