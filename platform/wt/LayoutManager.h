#pragma once

#include "platform/wt/Rect.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// Places a window's widgets: says how much room they want, then puts them into the room that the window has.
/// The window owns it; it does not own the widgets.
class LayoutManager {
public:
    LayoutManager() = default;
    LayoutManager(const LayoutManager&) = delete;
    LayoutManager& operator=(const LayoutManager&) = delete;
    virtual ~LayoutManager() = default;

    virtual SizeHint sizeHint() const = 0;
    /// Places the shown widgets inside `area` of their parent's coordinates; they do not overlap.
    virtual void place(const Rect& area) = 0;
};

}  // namespace wt
