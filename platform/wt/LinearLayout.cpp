#include "platform/wt/LinearLayout.h"

#include <algorithm>

namespace wt {

LinearLayout::Attributes::Attributes(float left_, float right_, float bottom_, float top_, float weight_,
                                     int fill_, wtAlign align_, int)
    : left(left_), right(right_), bottom(bottom_), top(top_), weight(weight_), fill(fill_), align(align_) {
}

void LinearLayout::add(wtWidget* widget, const Attributes& attributes) {
    items.push_back({widget, attributes});
}

SizeHint LinearLayout::sizeHint() const {
    return {};
}

void LinearLayout::place(const Rect& area) {
    float at = direction == bottomToTop ? area.y : area.x;
    for (const Item& item : items) {
        const float n = static_cast<float>(items.size());
        const Rect cell = direction == bottomToTop ? Rect{area.x, at, area.w, area.h / n}
                                                   : Rect{at, area.y, area.w / n, area.h};
        at += direction == bottomToTop ? cell.h : cell.w;
        item.widget->place(cell.inset(item.attributes.left, item.attributes.bottom));
    }
}

}  // namespace wt
