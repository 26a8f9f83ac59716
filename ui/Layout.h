#pragma once

#include "platform/wt/wt.h"

/// How menus and panels place their widgets: a vertical stack, centred.
namespace ui {

/// Centred in both directions.
inline constexpr wt::wtAlign centred = wt::alignCentreY | wt::alignCentreX;

/// Weight 1, with a margin of 0.01 screen units left and right and of `above` and `below` for the others.
inline wt::LinearLayout::Attributes attributes(float below, float above) {
    return {0.01f, 0.01f, below, above, 1.0f, 0, centred, 0};
}

/// For buttons, lists and plots.
inline wt::LinearLayout::Attributes plainAttributes() {
    return attributes(0.01f, 0.01f);
}

/// For a line of text with more space above and below.
inline wt::LinearLayout::Attributes airyAttributes() {
    return attributes(0.02f, 0.02f);
}

}  // namespace ui
