#include "platform/wt/wtWindowManager.h"

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "platform/wt/wtWidget.h"

namespace wt {
namespace {

struct State {
    int width = 640;
    int height = 480;
    std::vector<std::unique_ptr<wtWidget>> windows;
    wtWidget* captured = nullptr;
};

State& state() {
    static State instance;
    return instance;
}

tavi::Vec2<float> toScreen(int x, int y) {
    return {-1 + 2 * (static_cast<float>(x) + 0.5F) / static_cast<float>(state().width),
            1 - 2 * (static_cast<float>(y) + 0.5F) / static_cast<float>(state().height)};
}

}  // namespace

void wtWindowManager::init(int width, int height, bool) {
    clear();
    setViewport(width, height);
}

void wtWindowManager::appendWidget(wtWidget* window) {
    state().windows.emplace_back(window);
}

void wtWindowManager::raiseWidget(wtWidget* window, int) {
    auto& windows = state().windows;
    const auto found = std::find_if(windows.begin(), windows.end(),
                                    [window](const auto& candidate) { return candidate.get() == window; });
    if (found != windows.end()) {
        std::rotate(found, found + 1, windows.end());
    }
}

void wtWindowManager::clear() {
    state().captured = nullptr;
    state().windows.clear();
}

void wtWindowManager::setViewport(int width, int height) {
    state().width = std::max(width, 1);
    state().height = std::max(height, 1);
}

void wtWindowManager::mouseCallback(int button, int pressed, int x, int y) {
    if (button != 0) {
        return;
    }
    const tavi::Vec2<float> point = toScreen(x, y);
    if (pressed != 0) {
        if (wtWidget* const target = std::exchange(state().captured, nullptr)) {
            target->release(point - target->origin());
        }
        return;
    }
    auto& windows = state().windows;
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        if (wtWidget* const hit = (*window)->widgetAt(point - (*window)->origin())) {
            state().captured = hit;
            hit->press(point - hit->origin());
            return;
        }
    }
}

void wtWindowManager::motionCallback(int x, int y) {
    if (wtWidget* const target = state().captured) {
        target->drag(toScreen(x, y) - target->origin());
    }
}

void wtWindowManager::displayWidgets() {
    for (const auto& window : state().windows) {
        window->drawTree();
    }
}

void wtWindowManager::animate() {
}

}  // namespace wt
