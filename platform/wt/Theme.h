#pragma once

#include "platform/wt/Color.h"

namespace wt {

/// The colours of what stands on a background: one set for dark panels, one for light ones.
struct Palette {
    Color text;
    Color faintText;
    /// Lines around and between things.
    Color line;
    /// Ground of list boxes.
    Color field;
    Color fieldText;
    Color fieldLine;
    Color rowHover;
    Color scrollThumb;
    Color scrollThumbHover;
};

/// The look of the toolkit: every colour and measure in one place.
struct Theme {
    /// The one typeface, a path relative to the working directory, and the size at which it is loaded.
    const char* facePath = "Fonts/Vera.ttf";
    unsigned int faceSize = 24;

    /// Colour of polygons that were given none.
    Color solid{0.085F, 0.10F, 0.17F};
    /// Background of windows that were given none, and their title bars.
    Color panel{0.085F, 0.10F, 0.17F};
    Color titleBar{0.13F, 0.16F, 0.26F};
    Color titleText{0.95F, 0.96F, 1.0F};
    Color shadow{0.0F, 0.0F, 0.0F, 0.35F};

    Palette onDark{{0.93F, 0.95F, 1.0F},  {0.70F, 0.74F, 0.84F}, {0.36F, 0.41F, 0.55F},
                   {0.05F, 0.06F, 0.10F}, {0.93F, 0.95F, 1.0F},  {0.30F, 0.35F, 0.48F},
                   {0.17F, 0.21F, 0.34F}, {0.40F, 0.46F, 0.62F}, {0.55F, 0.62F, 0.80F}};
    Palette onLight{{0.06F, 0.08F, 0.16F}, {0.22F, 0.25F, 0.36F}, {0.45F, 0.48F, 0.62F},
                    {0.97F, 0.975F, 1.0F}, {0.06F, 0.08F, 0.16F}, {0.55F, 0.58F, 0.72F},
                    {0.84F, 0.885F, 1.0F}, {0.55F, 0.60F, 0.74F}, {0.38F, 0.44F, 0.62F}};

    Color button{0.17F, 0.36F, 0.72F};
    Color buttonHover{0.20F, 0.42F, 0.82F};
    Color buttonPressed{0.11F, 0.25F, 0.55F};
    Color buttonDisabled{0.27F, 0.30F, 0.37F};
    Color buttonText{1.0F, 1.0F, 1.0F};
    Color buttonTextDisabled{0.82F, 0.84F, 0.89F};
    Color selected{0.17F, 0.36F, 0.72F};
    Color selectedText{1.0F, 1.0F, 1.0F};
};

/// The theme in use; changes count from the next frame on.
Theme& theme();

}  // namespace wt
