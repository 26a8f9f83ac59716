#pragma once

#include "platform/wt/Color.h"

namespace wt {

/// The colours of what stands on a background: one set for dark panels, one for light ones.
struct Palette {
    /// Text directly on the panel.
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
    /// The text's em as a share of the viewport's height. It is at least `leastEmPx` pixels, unless that is
    /// more than `mostEmShare` of the height.
    float emShare = 1.0f / 42;
    float leastEmPx = 14;
    float mostEmShare = 1.0f / 23;
    /// How much larger text is in a maximised window.
    float maximizedTextScale = 1.5f;

    /// Fill of polygons without a colour.
    Color solid{0.085f, 0.10f, 0.17f};
    /// Windows without a background: their ground, title bar and outline.
    Color panel{0.085f, 0.10f, 0.17f};
    Color titleBar{0.15f, 0.19f, 0.31f};
    Color titleText{0.95f, 0.96f, 1.0f};
    Color panelLine{0.36f, 0.41f, 0.55f};
    /// Outline of grid graphics that have one.
    Color border{0.47f, 0.51f, 0.66f};
    /// The close box under the pointer, and held down.
    Color closeHover{0.78f, 0.24f, 0.27f};
    Color closePressed{0.58f, 0.15f, 0.19f};
    /// Drop shadow of windows, unless the defaults say otherwise, and where it lies, screen units.
    Color shadow{0.0f, 0.0f, 0.0f, 0.35f};
    float shadowOffsetX = 0.012f;
    float shadowOffsetY = -0.016f;

    Palette onDark{{0.93f, 0.95f, 1.0f},  {0.05f, 0.06f, 0.10f}, {0.30f, 0.35f, 0.48f}, {0.93f, 0.95f, 1.0f},
                   {0.17f, 0.21f, 0.34f}, {0.22f, 0.26f, 0.37f}, {0.11f, 0.13f, 0.20f}, {0.40f, 0.46f, 0.62f},
                   {0.55f, 0.62f, 0.80f}, {0.75f, 0.80f, 0.93f}};
    Palette onLight{{0.06f, 0.08f, 0.16f}, {0.97f, 0.975f, 1.0f}, {0.47f, 0.51f, 0.66f},
                    {0.06f, 0.08f, 0.16f}, {0.84f, 0.885f, 1.0f}, {0.76f, 0.79f, 0.88f},
                    {0.90f, 0.91f, 0.95f}, {0.58f, 0.63f, 0.78f}, {0.42f, 0.48f, 0.66f},
                    {0.25f, 0.31f, 0.50f}};

    Color button{0.17f, 0.36f, 0.72f};
    Color buttonHover{0.19f, 0.40f, 0.79f};
    Color buttonPressed{0.11f, 0.25f, 0.53f};
    Color buttonDisabled{0.27f, 0.30f, 0.37f};
    Color buttonText{1.0f, 1.0f, 1.0f};
    Color buttonTextDisabled{0.82f, 0.84f, 0.89f};
    /// How much lighter a button's upper edge is than its lower one.
    float buttonSheen = 0.10f;
    Color buttonShadow{0.0f, 0.0f, 0.05f, 0.30f};
    Color selected{0.17f, 0.36f, 0.72f};
    Color selectedText{1.0f, 1.0f, 1.0f};

    /// Rounding of buttons and fields, ems.
    float cornerEm = 0.36f;
    /// Between a window's edge and its widgets.
    float paddingEm = 0.6f;
    float titleBarEm = 1.9f;
    float buttonHeightEm = 2.1f;
    float buttonLeastWidthEm = 8.0f;
    float buttonPaddingEm = 1.2f;
    float rowEm = 1.5f;
    float rowPaddingEm = 0.6f;
    float scrollBarEm = 1.0f;
    float leastThumbEm = 1.4f;
};

/// The theme in use. Changes take effect with the next frame.
Theme& theme();

}  // namespace wt
