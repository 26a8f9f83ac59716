#pragma once

#include "platform/wt/ScrollRange.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// An upright scroll bar: an arrow at either end that goes one row, a thumb that drags, and a trough that
/// goes a page towards where it was pressed. An arrow that leads nowhere is faint.
class ScrollBar : public wtWidget {
public:
    /// Adds itself to `parent`. The range is the parent's, and lives as long as the bar.
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
    float grip = 0.0F;  // from the thumb's upper end down to the pointer that holds it
};

}  // namespace wt
