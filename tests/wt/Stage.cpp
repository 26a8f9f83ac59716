#include "tests/wt/Stage.h"

#include <gmock/gmock.h>

#include <array>
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

Stage::Pixel Stage::onRow(const wt::wtListBox& list, int row) {
    const wt::Rect rect = list.rowRect(row);
    return at(list.origin().x + rect.x + rect.w / 2, list.origin().y + rect.y + rect.h / 2);
}

void Stage::expectRect(const wt::Rect& actual, const wt::Rect& expected, float pixels) {
    const auto sides = [](const wt::Rect& rect) {
        const wt::Screen& s = wt::screen();
        return std::array{rect.x / s.pixelX(), rect.y / s.pixelY(), rect.w / s.pixelX(), rect.h / s.pixelY()};
    };
    EXPECT_THAT(sides(actual), testing::Pointwise(testing::FloatNear(pixels), sides(expected)));
}

wt::wtWindow* Stage::window(const std::string& title, const wt::Rect& rect, int flags) {
    auto* made = new wt::wtWindow(title, {rect.x, rect.y}, {rect.w, rect.h}, flags);
    wt::wtWindowManager::appendWidget(made);
    return made;
}

Probe::Probe(wt::wtWidget* parent, const wt::Rect& rect, int flags)
    : wtWidget("probe", {rect.x, rect.y}, {rect.w, rect.h}, flags) {
    if (parent != nullptr) {
        parent->add(this);
    }
}

bool Probe::note(const std::string& event, const tavi::Vec2<float>& point) {
    events.push_back(event);
    lastPoint = point;
    return takes;
}
