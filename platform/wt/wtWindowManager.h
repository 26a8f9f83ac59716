#pragma once

#include <boost/function.hpp>
#include <vector>

namespace wt {

class wtWidget;

/// Keeps the top-level windows from back to front, gives them the pointer, and draws them over the frame. One
/// for the process; all operations are static.
///
/// A press goes to the frontmost window under the pointer, and there to the deepest widget that wants it.
/// That widget keeps the pointer until the release. The press also brings the window to the front, unless it
/// is maximised. A press outside every window is ignored, with all events until its release.
class wtWindowManager {
public:
    wtWindowManager() = delete;

    /// Starts again without windows, for a viewport of `width` by `height` pixels. The last argument has no
    /// meaning.
    static void init(int width, int height, bool reserved);
    /// Takes ownership of the window and puts it in front of the others.
    static void appendWidget(wtWidget* window);
    /// Puts the window behind `depth` others; 0 is the front. A window that was not appended is ignored.
    static void raiseWidget(wtWidget* window, int depth);
    /// The windows, shown or not, from back to front.
    static std::vector<wtWidget*> windows();
    /// Destroys all windows and forgets the pointer: a clean start for tests.
    static void clear();
    /// The size in pixels that layout and pointer use until the next displayWidgets().
    static void setViewport(int width, int height);

    /// GLUT's mouse button event: button 0 is the left one, 3 and 4 the wheel; state 0 is down; pixels, y
    /// down.
    static void mouseCallback(int button, int state, int x, int y);
    /// GLUT's motion event, with or without a button held.
    static void motionCallback(int x, int y);

    /// Draws every shown window, back to front, into the current GL viewport, and restores GL's state.
    static void displayWidgets();
    /// Advances the widgets' own animations by one frame.
    static void animate();

    /// For widgets: runs `callback` at the end of the current event. The callback may destroy the widget, so
    /// it must not use the widget afterwards.
    static void defer(const boost::function<void()>& callback);
    /// For widgets: takes the pointer from `widget` and its children and cancels their press.
    static void takePointerFrom(const wtWidget* widget);
    /// For widgets: `widget` is being destroyed.
    static void forget(const wtWidget* widget);
};

}  // namespace wt
