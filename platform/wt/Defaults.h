#pragma once

#include "platform/wt/GridGraphic.h"

namespace wt {

/// Values that every window takes over when it is created; a change counts for the windows made after it.
struct wtDefaults {
    struct Window {
        /// Opacity of the whole window, 0 to 1.
        static float alpha;
        /// Where the drop shadow lies from the window, screen units.
        static float shadowOffsX;
        static float shadowOffsY;
        /// What the drop shadow looks like.
        static GridGraphic shadow_bg;
    };
};

/// Loads what the toolkit draws with, for a viewport of `width` by `height` pixels: the window defaults, the
/// theme's typeface and the fragment programs. Without a GL context there are no programs and no picture of
/// the typeface, and layout works all the same.
void loadDefaults(int width, int height);

}  // namespace wt
