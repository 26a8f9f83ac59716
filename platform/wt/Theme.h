#pragma once

#include "platform/wt/Color.h"

namespace wt {

/// The colours of what stands on a background: one set for dark panels, one for light ones.
struct Palette {
    /// Text right on the panel.
    Color text;
    /// Ground, outline and text of list boxes, and the row under the pointer.
    Color field;
    Color fieldLine;
    Color fieldText;
    Color rowHover;
    /// What an empty list box shows.
    Color emptyMark;
    /// Scroll bars: the trough, the thumb at rest and in use, the arrows that lead somewhere.
    Color trough;
    Color thumb;
    Color thumbHover;
    Color arrow;
};

/// The look of the toolkit: every colour and measure in one place. Lengths in ems are multiples of the text
/// size that a widget has.
struct Theme {
    /// The one typeface, a path relative to the working directory, and the size at which it is loaded.
    const char* facePath = "Fonts/Vera.ttf";
    unsigned int faceSize = 24;
    /// The text's em as a share of the viewport's height, and the pixels that it does not go below while it
    /// takes up no more than the largest share.
    float emShare = 1.0F / 42;
    float leastEmPx = 14;
    float mostEmShare = 1.0F / 23;
    /// How much larger text is in a maximised window.
    float maximizedTextScale = 1.5F;

    /// Fill of polygons that were given none.
    Color solid{0.085F, 0.10F, 0.17F};
    /// Ground of windows that were given none, their title bars, and the line around them.
    Color panel{0.085F, 0.10F, 0.17F};
    Color titleBar{0.15F, 0.19F, 0.31F};
    Color titleText{0.95F, 0.96F, 1.0F};
    Color panelLine{0.36F, 0.41F, 0.55F};
    /// Outline of grid graphics that have one.
    Color border{0.47F, 0.51F, 0.66F};
    /// The close box under the pointer, and held down.
    Color closeHover{0.78F, 0.24F, 0.27F};
    Color closePressed{0.58F, 0.15F, 0.19F};
    /// Drop shadow of windows, unless the defaults say otherwise, and where it lies, screen units.
    Color shadow{0.0F, 0.0F, 0.0F, 0.35F};
    float shadowOffsetX = 0.012F;
    float shadowOffsetY = -0.016F;

    Palette onDark{{0.93F, 0.95F, 1.0F},  {0.05F, 0.06F, 0.10F}, {0.30F, 0.35F, 0.48F}, {0.93F, 0.95F, 1.0F},
                   {0.17F, 0.21F, 0.34F}, {0.22F, 0.26F, 0.37F}, {0.11F, 0.13F, 0.20F}, {0.40F, 0.46F, 0.62F},
                   {0.55F, 0.62F, 0.80F}, {0.75F, 0.80F, 0.93F}};
    Palette onLight{{0.06F, 0.08F, 0.16F}, {0.97F, 0.975F, 1.0F}, {0.47F, 0.51F, 0.66F},
                    {0.06F, 0.08F, 0.16F}, {0.84F, 0.885F, 1.0F}, {0.76F, 0.79F, 0.88F},
                    {0.90F, 0.91F, 0.95F}, {0.58F, 0.63F, 0.78F}, {0.42F, 0.48F, 0.66F},
                    {0.25F, 0.31F, 0.50F}};

    Color button{0.17F, 0.36F, 0.72F};
    Color buttonHover{0.19F, 0.40F, 0.79F};
    Color buttonPressed{0.11F, 0.25F, 0.53F};
    Color buttonDisabled{0.27F, 0.30F, 0.37F};
    Color buttonText{1.0F, 1.0F, 1.0F};
    Color buttonTextDisabled{0.82F, 0.84F, 0.89F};
    /// How much lighter a button's upper edge is than its lower one.
    float buttonSheen = 0.10F;
    Color buttonShadow{0.0F, 0.0F, 0.05F, 0.30F};
    Color selected{0.17F, 0.36F, 0.72F};
    Color selectedText{1.0F, 1.0F, 1.0F};

    /// Rounding of buttons and fields, ems.
    float cornerEm = 0.36F;
    /// Between a window's edge and its widgets.
    float paddingEm = 0.6F;
    float titleBarEm = 1.9F;
    float buttonHeightEm = 2.1F;
    float buttonLeastWidthEm = 8.0F;
    float buttonPaddingEm = 1.2F;
    float rowEm = 1.5F;
    float rowPaddingEm = 0.6F;
    float scrollBarEm = 1.0F;
    float leastThumbEm = 1.4F;
};

/// The theme in use; changes count from the next frame on.
Theme& theme();

}  // namespace wt
