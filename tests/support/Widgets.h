#pragma once

#include <string>

#include "platform/wt/wt.h"

/// Finds toolkit widgets by name and uses them as a player's pointer does.
namespace widgets {

/// The window with this title, shown or not, or null.
wt::wtWindow* window(const std::string& title);

/// The middle of a widget in pixels, y down, for a viewport of `width` by `height` pixels.
struct Pixel {
    int x;
    int y;
};
Pixel middle(const wt::wtWidget& widget, int width, int height);

/// The pixel half-way up a row of a list, at a share of its width from the left.
Pixel inRow(const wt::wtListBox& list, int row, float share, int width, int height);

/// Presses and releases the left button at a pixel.
void click(Pixel at);

/// What has this name among all that a widget consists of, or null.
wt::wtWidget* below(wt::wtWidget* root, const std::string& name);

/// The widget of type `Widget` with this name in the window with that title, or null.
template <class Widget>
Widget* in(const std::string& title, const std::string& name) {
    wt::wtWindow* root = window(title);
    return root == nullptr ? nullptr : dynamic_cast<Widget*>(below(root, name));
}

}  // namespace widgets
