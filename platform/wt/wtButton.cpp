#include "platform/wt/wtButton.h"

namespace wt {

wtButton::wtButton(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
                   const tavi::Vec2<float>& size_, const std::string& label)
    : wtWidget(name, pos, size_, 0), text(label), requested(size_) {
    if (parent) {
        parent->add(this);
    }
}

void wtButton::setText(const std::string& label) {
    text = label;
}

boost::signals2::connection wtButton::connectButtonPressed(const PressedSignal::slot_type& slot) {
    return pressed.connect(slot);
}

void wtButton::draw() {
}
void wtButton::animate() {
}
void wtButton::setShowing(int showing) {
    wtWidget::setShowing(showing);
}
SizeHint wtButton::sizeHint() const {
    return wtWidget::sizeHint();
}
bool wtButton::press(const tavi::Vec2<float>&) {
    return armed = true;
}
void wtButton::drag(const tavi::Vec2<float>& point) {
    armed = Rect{0, 0, size.x, size.y}.contains(point);
}
void wtButton::release(const tavi::Vec2<float>&) {
    if (armed) {
        armed = false;
        pressed();
    }
}
void wtButton::cancel() {
    armed = false;
}
void wtButton::hover(const tavi::Vec2<float>&) {
    hovered = true;
}
void wtButton::leave() {
    hovered = false;
}

}  // namespace wt
