#include "platform/wt/wtListBox.h"

namespace wt {

wtListBox::wtListBox(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
                     const tavi::Vec2<float>& size_)
    : wtWidget(name, pos, size_, expandX | expandY) {
    if (parent) {
        parent->add(this);
    }
}

void wtListBox::append(std::list<std::string>& added) {
    rows.insert(rows.end(), added.begin(), added.end());
}

boost::signals2::connection wtListBox::connectItemSelected(const ItemSelectedSignal::slot_type& slot) {
    return itemSelected.connect(slot);
}

void wtListBox::draw() {
}

SizeHint wtListBox::sizeHint() const {
    return wtWidget::sizeHint();
}

bool wtListBox::press(const tavi::Vec2<float>& point) {
    const int row = static_cast<int>((size.y - point.y) / 0.08F);
    if (row >= 0 && row < rowCount()) {
        selectedRow = row;
        itemSelected(this, row);
    }
    return true;
}

}  // namespace wt
