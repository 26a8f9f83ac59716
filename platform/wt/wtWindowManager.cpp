#include "platform/wt/wtWindowManager.h"

#include <GL/gl.h>

#include <algorithm>
#include <memory>
#include <utility>

#include "platform/wt/GLState.h"
#include "platform/wt/Screen.h"
#include "platform/wt/wtWidget.h"

namespace wt {
namespace {

constexpr int leftButton = 0;
constexpr int wheelUp = 3;
constexpr int wheelDown = 4;
constexpr int down = 0;

/// Where the pointer is and which widget has it. Never destroyed, because the last widgets still use it.
struct Pointer {
    bool known;  // whether it was ever seen
    bool held;   // the left button is down
    int column;  // pixels
    int row;
    wtWidget* captor;  // has the pointer while the button is held, or null
    wtWidget* hovered;
};
Pointer pointer;

struct Windows {
    std::vector<boost::function<void()>> deferred;
    std::vector<std::unique_ptr<wtWidget>> backToFront;
};

Windows& state() {
    static Windows instance;
    return instance;
}

tavi::Vec2<float> pointOn(const wtWidget* widget) {
    return screen().fromPixel(pointer.column, pointer.row) - widget->origin();
}

void ensureLayout() {
    for (const auto& window : state().backToFront) {
        if (window->isShowing() != 0) {
            window->ensureLayout();
        }
    }
}

/// The deepest widget of the frontmost window under the pointer, or null.
wtWidget* widgetUnderPointer() {
    auto& windows = state().backToFront;
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        if (wtWidget* const hit = (*window)->widgetAt(pointOn(window->get()))) {
            return hit;
        }
    }
    return nullptr;
}

wtWidget* windowOf(wtWidget* widget) {
    while (widget->parent() != nullptr) {
        widget = widget->parent();
    }
    return widget;
}

void updateHover() {
    wtWidget* const under = pointer.known && !pointer.held ? widgetUnderPointer() : nullptr;
    if (under != pointer.hovered) {
        if (wtWidget* const left = std::exchange(pointer.hovered, under)) {
            left->leave();
        }
    }
    if (under != nullptr) {
        under->hover(pointOn(under));
    }
}

void press() {
    // A second press without a release between: the release was lost outside.
    if (wtWidget* const lost = std::exchange(pointer.captor, nullptr)) {
        lost->cancel();
    }
    pointer.held = true;
    wtWidget* const hit = widgetUnderPointer();
    if (hit == nullptr) {
        return;
    }
    wtWidget* const window = windowOf(hit);
    if (!window->staysBehind()) {
        wtWindowManager::raiseWidget(window, 0);
    }
    for (wtWidget* widget = hit; widget != nullptr; widget = widget->parent()) {
        if (widget->isEnabled() != 0 && widget->press(pointOn(widget))) {
            pointer.captor = widget;
            return;
        }
    }
}

void release() {
    pointer.held = false;
    if (wtWidget* const captor = std::exchange(pointer.captor, nullptr)) {
        captor->release(pointOn(captor));
    }
}

void turnWheel(int steps) {
    for (wtWidget* widget = widgetUnderPointer(); widget != nullptr; widget = widget->parent()) {
        if (widget->isEnabled() != 0 && widget->wheel(steps)) {
            return;
        }
    }
}

/// What every event starts with.
void movePointer(int column, int row) {
    pointer.known = true;
    pointer.column = column;
    pointer.row = row;
    ensureLayout();
}

/// What every event ends with. A callback may change anything, so only the queue is used after it.
void finishEvent() {
    ensureLayout();
    updateHover();
    while (!state().deferred.empty()) {
        const boost::function<void()> run = state().deferred.front();
        state().deferred.erase(state().deferred.begin());
        run();
    }
}

}  // namespace

void wtWindowManager::init(int width, int height, bool) {
    clear();
    setViewport(width, height);
}

void wtWindowManager::appendWidget(wtWidget* window) {
    state().backToFront.emplace_back(window);
}

void wtWindowManager::raiseWidget(wtWidget* window, int depth) {
    auto& all = state().backToFront;
    const auto found =
        std::find_if(all.begin(), all.end(), [window](const auto& each) { return each.get() == window; });
    if (found == all.end()) {
        return;
    }
    std::unique_ptr<wtWidget> moved = std::move(*found);
    all.erase(found);
    const int others = static_cast<int>(all.size());
    all.insert(all.begin() + (others - std::clamp(depth, 0, others)), std::move(moved));
}

std::vector<wtWidget*> wtWindowManager::windows() {
    std::vector<wtWidget*> all;
    for (const auto& window : state().backToFront) {
        all.push_back(window.get());
    }
    return all;
}

void wtWindowManager::clear() {
    state().backToFront.clear();
    state().deferred.clear();
    pointer = {};
}

void wtWindowManager::setViewport(int width, int height) {
    Screen viewport = screen();
    viewport.width = width;
    viewport.height = height;
    setScreen(viewport);
    ensureLayout();
}

void wtWindowManager::mouseCallback(int button, int buttonState, int x, int y) {
    movePointer(x, y);
    if (button == leftButton && buttonState == down) {
        press();
    } else if (button == leftButton && pointer.held) {
        release();
    } else if ((button == wheelUp || button == wheelDown) && buttonState == down && !pointer.held) {
        turnWheel(button == wheelUp ? 1 : -1);
    }
    finishEvent();
}

void wtWindowManager::motionCallback(int x, int y) {
    movePointer(x, y);
    if (pointer.captor != nullptr) {
        pointer.captor->drag(pointOn(pointer.captor));
    }
    finishEvent();
}

void wtWindowManager::displayWidgets() {
    const Screen& s = screen();
    GLint viewport[4] = {s.x, s.y, s.width, s.height};
    glGetIntegerv(GL_VIEWPORT, viewport);
    if (viewport[2] < 1 || viewport[3] < 1) {
        return;
    }
    setScreen({viewport[0], viewport[1], viewport[2], viewport[3]});
    ensureLayout();
    updateHover();

    const auto& windows = state().backToFront;
    if (std::none_of(windows.begin(), windows.end(), [](const auto& w) { return w->isShowing() != 0; })) {
        return;
    }
    const GLState toolkitState;
    for (const auto& window : windows) {
        window->drawTree();
    }
}

void wtWindowManager::animate() {
    for (const auto& window : state().backToFront) {
        window->animateTree();
    }
}

void wtWindowManager::defer(const boost::function<void()>& callback) {
    state().deferred.push_back(callback);
}

void wtWindowManager::takePointerFrom(const wtWidget* widget) {
    if (pointer.captor != nullptr && pointer.captor->isIn(widget)) {
        std::exchange(pointer.captor, nullptr)->cancel();
    }
    if (pointer.hovered != nullptr && pointer.hovered->isIn(widget)) {
        std::exchange(pointer.hovered, nullptr)->leave();
    }
}

void wtWindowManager::forget(const wtWidget* widget) {
    pointer.captor = pointer.captor == widget ? nullptr : pointer.captor;
    pointer.hovered = pointer.hovered == widget ? nullptr : pointer.hovered;
}

}  // namespace wt
