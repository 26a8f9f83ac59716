#pragma once

#include "tests/support/Widgets.h"
#include "tests/wt/DrawnStage.h"

/// A screen with an empty window manager, as the menus find it at start-up.
class MenuFixture : public DrawnStage {
protected:
    static void click(const wt::wtWidget& widget) { DrawnStage::click(on(widget)); }

    /// Where both panels stand.
    static void expectPanelsPlace(const wt::Rect& rect) { expectRect(rect, {-0.4f, -0.5f, 0.8f, 0.9f}); }
};
