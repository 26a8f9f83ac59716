#include "platform/wt/LinearLayout.h"

#include <algorithm>
#include <iterator>

#include "platform/wt/Screen.h"

namespace wt {
namespace {

/// One cell's demands along the stack.
struct Track {
    float margins;
    float least;
    float preferred;
    float weight;
    bool expands;
};

/// The lengths of all cells, margins included, for a stack that is `length` long.
std::vector<float> share(const std::vector<Track>& tracks, float length) {
    float margins = 0;
    float least = 0;
    float preferred = 0;
    float expandingWeight = 0;
    float totalWeight = 0;
    bool anyExpands = false;
    for (const Track& track : tracks) {
        margins += track.margins;
        least += track.least;
        preferred += track.preferred;
        totalWeight += track.weight;
        expandingWeight += track.expands ? track.weight : 0.0f;
        anyExpands = anyExpands || track.expands;
    }
    // From the least sizes (0) to the preferred ones (1), and what is beyond those or short of the least.
    const float room = length - margins;
    const float comfort =
        preferred > least ? std::clamp((room - least) / (preferred - least), 0.0f, 1.0f) : 1.0f;
    const float spare = std::max(room - preferred, 0.0f);
    const float squeeze = margins + least > length ? std::max(length, 0.0f) / (margins + least) : 1.0f;
    const float weights = anyExpands ? expandingWeight : totalWeight;

    std::vector<float> lengths;
    for (const Track& track : tracks) {
        const float size = track.least + (track.preferred - track.least) * comfort;
        const bool takesSpare = (track.expands || !anyExpands) && weights > 0;
        const float part = takesSpare ? spare * track.weight / weights : 0.0f;
        lengths.push_back((track.margins + size + part) * squeeze);
    }
    return lengths;
}

}  // namespace

LinearLayout::Attributes::Attributes(float left_, float right_, float bottom_, float top_, float weight_,
                                     int fill_, wtAlign align_, int)
    : left(left_), right(right_), bottom(bottom_), top(top_), weight(weight_), fill(fill_), align(align_) {
}

void LinearLayout::add(wtWidget* widget, const Attributes& attributes) {
    items.push_back({widget, attributes});
    widget->invalidateLayout();
}

std::vector<LinearLayout::Item> LinearLayout::shownItems() const {
    std::vector<Item> shown;
    std::copy_if(items.begin(), items.end(), std::back_inserter(shown),
                 [](const Item& item) { return item.widget->isShowing() != 0; });
    return shown;
}

SizeHint LinearLayout::sizeHint() const {
    SizeHint sum;
    for (const Item& item : shownItems()) {
        const SizeHint hint = item.widget->sizeHint();
        const tavi::Vec2<float> margins(item.attributes.left + item.attributes.right,
                                        item.attributes.bottom + item.attributes.top);
        const auto include = [&](tavi::Vec2<float>& total, const tavi::Vec2<float>& own) {
            const tavi::Vec2<float> cell = own + margins;
            total = direction == bottomToTop ? tavi::Vec2<float>(std::max(total.x, cell.x), total.y + cell.y)
                                             : tavi::Vec2<float>(total.x + cell.x, std::max(total.y, cell.y));
        };
        include(sum.least, hint.least);
        include(sum.preferred, hint.preferred);
    }
    return sum;
}

void LinearLayout::place(const Rect& area) {
    const bool upward = direction == bottomToTop;
    const std::vector<Item> shown = shownItems();
    std::vector<Track> tracks;
    for (const Item& item : shown) {
        const Attributes& a = item.attributes;
        const SizeHint hint = item.widget->sizeHint();
        const int flags = item.widget->flags();
        tracks.push_back(upward ? Track{a.bottom + a.top, hint.least.y, hint.preferred.y, a.weight,
                                        (flags & wtWidget::expandY) != 0}
                                : Track{a.left + a.right, hint.least.x, hint.preferred.x, a.weight,
                                        (flags & wtWidget::expandX) != 0});
    }
    const std::vector<float> lengths = share(tracks, upward ? area.h : area.w);

    float start = upward ? area.y : area.x;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const Attributes& a = shown[i].attributes;
        wtWidget* const widget = shown[i].widget;
        Rect cell =
            upward ? Rect{area.x, start, area.w, lengths[i]} : Rect{start, area.y, lengths[i], area.h};
        start += lengths[i];
        cell = cell.without(a.left, a.right, a.bottom, a.top);

        const tavi::Vec2<float> preferred = widget->sizeHint().preferred;
        const bool wide = (widget->flags() & wtWidget::expandX) != 0 || (upward && a.fill != 0);
        const bool high = (widget->flags() & wtWidget::expandY) != 0 || (!upward && a.fill != 0);
        const float w = wide ? cell.w : std::min(preferred.x, cell.w);
        const float h = high ? cell.h : std::min(preferred.y, cell.h);
        widget->place(screen().snapped(
            {cell.x + alignedX(a.align, cell.w, w), cell.y + alignedY(a.align, cell.h, h), w, h}));
    }
}

}  // namespace wt
