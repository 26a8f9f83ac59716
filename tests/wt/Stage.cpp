#include "tests/wt/Stage.h"

#include <cmath>

Stage::Pixel Stage::at(float x, float y) {
    const wt::Screen& s = wt::screen();
    return {static_cast<int>(std::floor((x + 1) / s.pixelX())),
            static_cast<int>(std::floor((1 - y) / s.pixelY()))};
}

Stage::Pixel Stage::on(const wt::wtWidget& widget, float shareX, float shareY) {
    const tavi::Vec2<float> corner = widget.origin();
    return at(corner.x + widget.rect().w * shareX, corner.y + widget.rect().h * shareY);
}

wt::wtWindow* Stage::window(const std::string& title, const wt::Rect& rect, int flags) {
    auto* made = new wt::wtWindow(title, {rect.x, rect.y}, {rect.w, rect.h}, flags);
    wt::wtWindowManager::appendWidget(made);
    return made;
}

Probe::Probe(wt::wtWidget* parent, const wt::Rect& rect, int flags) : Probe(parent, "probe", rect, flags) {
}

Probe::Probe(wt::wtWidget* parent, const std::string& name, const wt::Rect& rect, int flags)
    : wtWidget(name, {rect.x, rect.y}, {rect.w, rect.h}, flags) {
    if (parent != nullptr) {
        parent->add(this);
    }
}

bool Probe::note(const std::string& event, const tavi::Vec2<float>& point) {
    events.push_back(event);
    lastPoint = point;
    return takes;
}
