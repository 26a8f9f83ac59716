#include "tests/support/Widgets.h"

#include <memory>

namespace widgets {

wt::wtWindow* window(const std::string& title) {
    for (wt::wtWidget* candidate : wt::wtWindowManager::windows()) {
        if (candidate->name() == title) {
            return dynamic_cast<wt::wtWindow*>(candidate);
        }
    }
    return nullptr;
}

static Pixel pixelAt(float x, float y, int width, int height) {
    return {static_cast<int>((x + 1.0f) / 2.0f * static_cast<float>(width)),
            static_cast<int>((1.0f - y) / 2.0f * static_cast<float>(height))};
}

Pixel middle(const wt::wtWidget& widget, int width, int height) {
    const tavi::Vec2<float> corner = widget.origin();
    const wt::Rect rect = widget.rect();
    return pixelAt(corner.x + rect.w / 2.0f, corner.y + rect.h / 2.0f, width, height);
}

Pixel inRow(const wt::wtListBox& list, int row, float share, int width, int height) {
    const tavi::Vec2<float> corner = list.origin();
    const wt::Rect rect = list.rowRect(row);
    return pixelAt(corner.x + rect.x + rect.w * share, corner.y + rect.y + rect.h / 2.0f, width, height);
}

void click(Pixel at) {
    constexpr int leftButton = 0;
    wt::wtWindowManager::motionCallback(at.x, at.y);
    for (const int up : {0, 1}) {
        wt::wtWindowManager::mouseCallback(leftButton, up, at.x, at.y);
    }
}

wt::wtWidget* below(wt::wtWidget* root, const std::string& name) {
    for (const std::unique_ptr<wt::wtWidget>& child : root->children()) {
        if (child->name() == name) {
            return child.get();
        }
        if (wt::wtWidget* found = below(child.get(), name)) {
            return found;
        }
    }
    return nullptr;
}

}  // namespace widgets
