#include "platform/wt/wtStaticText.h"

#include <algorithm>
#include <cmath>

#include "platform/wt/Screen.h"
#include "platform/wt/Text.h"
#include "platform/wt/Theme.h"

namespace wt {
namespace {

/// Enough for a few letters and an ellipsis.
constexpr float leastWidthEm = 4.0f;

}  // namespace

wtStaticText::wtStaticText(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
                           const tavi::Vec2<float>& size_, const std::string& text, int alignment_)
    : wtWidget(name, pos, size_, size_.x < 0 ? 0 : expandX), line(text), alignment(alignment_) {
    if (parent != nullptr) {
        parent->add(this);
    }
}

void wtStaticText::setText(const std::string& text) {
    if (text == line) {
        return;
    }
    line = text;
    if (wantedSize.x < 0) {
        invalidateLayout();
    }
}

SizeHint wtStaticText::sizeHint() const {
    const float em = emPixels();
    const tavi::Vec2<float> own(std::ceil(text::width(line, em)) * screen().pixelX(),
                                std::ceil(text::height(em)) * screen().pixelY());
    const float width = wantedSize.x < 0 ? own.x : wantedSize.x;
    return {{std::min(width, emsX(leastWidthEm)), own.y}, {width, own.y}};
}

void wtStaticText::draw() {
    text::draw(line, rect(), alignment, emPixels(), palette().text);
}

}  // namespace wt
