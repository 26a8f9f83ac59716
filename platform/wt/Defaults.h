#pragma once

#include "platform/wt/GridGraphic.h"

namespace wt {

/// Each window copies these values when it is created. A change affects later windows only.
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
/// theme's typeface and the fragment programs. Without a GL context it loads no programs and draws no text;
/// layout still works.
void loadDefaults(int width, int height);

}  // namespace wt
