#pragma once

#include <string>

#include "platform/tmath/Vec2.h"
#include "platform/wt/Color.h"
#include "platform/wt/Rect.h"

namespace wt {

/// One line of UTF-8 text in the theme's typeface. Sizes are in pixels. Measuring needs no GL context.
/// Without a typeface, text has no width and its line has the usual height.
namespace text {

/// Loads the theme's typeface and drops an earlier one.
void loadTypeface();

float width(const std::string& line, float emPx);
/// From the line's bottom to its top.
float height(float emPx);
/// The line, shortened with an ellipsis if it is wider than `widthPx`.
std::string shortened(const std::string& line, float emPx, float widthPx);

/// Draws the line inside `box` of the current coordinates, aligned by the bits of wtAlign, shortened to the
/// box's width.
void draw(const std::string& line, const Rect& box, int alignment, float emPx, const Color& color);

}  // namespace text
}  // namespace wt
