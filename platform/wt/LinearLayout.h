#pragma once

#include <vector>

#include "platform/wt/Align.h"
#include "platform/wt/LayoutManager.h"

namespace wt {

/// Stacks widgets in one direction, in the order in which they were added.
///
///     auto* layout = new wt::LinearLayout(wt::bottomToTop);
///     layout->add(button, wt::LinearLayout::Attributes(0.01F, 0.01F, 0.01F, 0.01F, 1, 0, alignment, 0));
///     window->setLayoutManager(layout);
///
/// Room beyond the preferred sizes goes to the widgets that expand, by weight; where none does, the cells of
/// all grow by weight and each widget sits in its own cell by its alignment.
class LinearLayout : public LayoutManager {
public:
    /// How one widget sits in the stack.
    struct Attributes {
        /// Margins and weight >= 0; `fill` other than 0 stretches the widget across the stack; `reserved` has
        /// no meaning.
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

    virtual void add(wtWidget* widget, const Attributes& attributes);

    SizeHint sizeHint() const override;
    void place(const Rect& area) override;

private:
    struct Item {
        wtWidget* widget;
        Attributes attributes;
    };
    wtOrientation direction;
    std::vector<Item> items;
};

}  // namespace wt
