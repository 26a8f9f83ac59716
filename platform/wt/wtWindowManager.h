#pragma once

namespace wt {

class wtWidget;

/// Keeps the top-level windows from back to front, gives them the pointer, and draws them over the frame. One
/// for the process; all operations are static.
class wtWindowManager {
public:
    wtWindowManager() = delete;

    /// Starts afresh, without windows, for a viewport of `width` by `height` pixels. The last argument has no
    /// meaning.
    static void init(int width, int height, bool reserved);
    /// Takes the window, in front of the others, for the rest of the program.
    static void appendWidget(wtWidget* window);
    /// Puts the window behind `depth` others; 0 is the front.
    static void raiseWidget(wtWidget* window, int depth);
    /// Destroys all windows and forgets the pointer: a clean start for tests.
    static void clear();
    /// The size in pixels that layout and pointer positions go by until the next displayWidgets().
    static void setViewport(int width, int height);

    /// GLUT's mouse button event: button 0 is the left one, 3 and 4 the wheel; state 0 is down; pixels, y
    /// down.
    static void mouseCallback(int button, int state, int x, int y);
    /// GLUT's motion event, with or without a button held.
    static void motionCallback(int x, int y);

    /// Draws every shown window, back to front, into the current GL viewport, and leaves GL's state as it
    /// was.
    static void displayWidgets();
    /// Advances the widgets' own animations by one frame.
    static void animate();
};

}  // namespace wt
