#include "platform/wt/wtStaticText.h"

namespace wt {

wtStaticText::wtStaticText(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
                           const tavi::Vec2<float>& size_, const std::string& text_, int alignment_)
    : wtWidget(name, pos, size_, 0), text(text_), alignment(alignment_), requested(size_) {
    if (parent) {
        parent->add(this);
    }
}

void wtStaticText::setText(const std::string& text_) {
    text = text_;
}

void wtStaticText::draw() {
    (void)alignment;
}

SizeHint wtStaticText::sizeHint() const {
    return {requested, requested};
}

}  // namespace wt
