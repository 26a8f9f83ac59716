#pragma once

#include "platform/wt/wtButton.h"

namespace wt {

class wtWindow;

/// The bar along a window's upper edge: shows the title, and drags the window.
class TitleBar : public wtWidget {
public:
    /// Adds itself to the window. A close box, if it has one, sits at its right end.
    TitleBar(wtWindow* window, bool withCloseBox);

    void draw() override;
    SizeHint sizeHint() const override;
    void place(const Rect& rect) override;
    bool press(const tavi::Vec2<float>& point) override;
    void drag(const tavi::Vec2<float>& point) override;

private:
    wtWindow& window;
    wtWidget* closeBox = nullptr;
    /// The point of the bar that the pointer holds.
    tavi::Vec2<float> grip;
};

/// A small cross that hides a window when clicked.
class CloseBox : public wtButton {
public:
    /// Adds itself to the title bar.
    CloseBox(TitleBar* bar, wtWindow* window);

    void draw() override;
};

}  // namespace wt
