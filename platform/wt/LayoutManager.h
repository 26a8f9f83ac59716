#pragma once

#include "platform/wt/Rect.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// A way to place a window's widgets: it says what room they want, then puts them into the room there is.
/// Owned by its window; knows the widgets, does not own them.
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
