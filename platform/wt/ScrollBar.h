#pragma once

#include "platform/wt/ScrollRange.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// A vertical scroll bar. The arrow at each end scrolls one row, the thumb can be dragged, and a press on the
/// trough scrolls a page. An arrow that cannot scroll further is faint.
class ScrollBar : public wtWidget {
public:
    /// Adds itself to `parent`, which owns the range. The range must live as long as the bar.
    ScrollBar(wtWidget* parent, ScrollRange& range);

    void draw() override;
    bool press(const tavi::Vec2<float>& point) override;
    void drag(const tavi::Vec2<float>& point) override;
    void release(const tavi::Vec2<float>&) override { dragging = false; }
    void cancel() override { dragging = false; }
    void hover(const tavi::Vec2<float>& point) override;
    void leave() override { hovered = false; }

    /// The thumb in the bar's own coordinates.
    Rect thumb() const;

private:
    float arrowLength() const;
    float troughLength() const;
    float leastThumb() const;

    ScrollRange& range;
    bool dragging = false;
    bool hovered = false;
    float grip = 0.0f;  // from the thumb's upper end down to the pointer that holds it
};

}  // namespace wt
