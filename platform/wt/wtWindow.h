#pragma once

#include <memory>
#include <string>

#include "platform/wt/GridGraphic.h"
#include "platform/wt/LayoutManager.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// A top-level panel: a background, a drop shadow, at will a title bar, and widgets placed by a layout.
/// Handed to the window manager once it is built.
class wtWindow : public wtWidget {
public:
    /// Bits of a window's flags. 0 is a fixed panel without a title bar.
    enum WindowFlag : int { titleBar = 0x001, closeBox = 0x100 };

    /// `pos` and `size` of the whole window with its title bar, screen units. Where its widgets need more
    /// room it grows about its middle; it never leaves the screen.
    wtWindow(const std::string& title, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size,
             int flags);
    ~wtWindow() override;

    const std::string& getTitle() const { return name(); }
    /// Takes the layout, in the place of an earlier one.
    void setLayoutManager(LayoutManager* layout);
    void setBackground(const GridGraphic& background);
    /// Asks the widgets anew how much room they need.
    void recomputeMinSize();
    /// Covers the whole screen from now on, whatever its size, without a title bar.
    void maximize();
    bool isMaximized() const { return maximized; }

    void resize(float width, float height) override;
    void draw() override;
    SizeHint sizeHint() const override;
    const Palette& palette() const override;
    float emPixels() const override;
    bool staysBehind() const override { return maximized; }

private:
    GridGraphic background;
    GridGraphic shadow;
    tavi::Vec2<float> shadowOffset;
    std::unique_ptr<LayoutManager> layout;
    Rect requested;
    int windowFlags;
    bool maximized = false;
};

}  // namespace wt
