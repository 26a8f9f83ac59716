#pragma once

#include <vector>

#include "platform/wt/Align.h"
#include "platform/wt/LayoutManager.h"

namespace wt {

/// Stacks widgets in one direction, in the order in which they were added.
///
///     auto* layout = new wt::LinearLayout(wt::bottomToTop);
///     layout->add(button, wt::LinearLayout::Attributes(0.01f, 0.01f, 0.01f, 0.01f, 1, 0, alignment, 0));
///     window->setLayoutManager(layout);
///
/// A widget and its margins make a cell. Along the stack, widgets that expand share the spare room by weight.
/// If no widget expands, all cells share it, and each widget sits in its cell by its alignment. Across the
/// stack a widget has its preferred size, or the size of the cell if it expands or has `fill`. If there is
/// less room than preferred, all shrink to their least sizes, and below those in proportion. Hidden widgets
/// have no cell.
class LinearLayout : public LayoutManager {
public:
    /// How one widget sits in the stack.
    struct Attributes {
        /// Margins, screen units, and weight >= 0; `fill` other than 0 stretches the widget across the stack;
        /// `reserved` has no meaning.
        Attributes(float left, float right, float bottom, float top, float weight, int fill, wtAlign align,
                   int reserved);

        float left;
        float right;
        float bottom;
        float top;
        float weight;
        int fill;
        wtAlign align;
    };

    explicit LinearLayout(wtOrientation orientation) : direction(orientation) {}

    /// The parent keeps owning the widget, which must live as long as the layout.
    virtual void add(wtWidget* widget, const Attributes& attributes);

    SizeHint sizeHint() const override;
    void place(const Rect& area) override;

private:
    struct Item {
        wtWidget* widget;
        Attributes attributes;
    };
    std::vector<Item> shownItems() const;

    wtOrientation direction;
    std::vector<Item> items;
};

}  // namespace wt
