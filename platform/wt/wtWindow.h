#pragma once

#include <memory>
#include <string>

#include "platform/wt/GridGraphic.h"
#include "platform/wt/LayoutManager.h"
#include "platform/wt/Screen.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// A top-level panel: a background, a drop shadow, at will a title bar, and widgets placed by a layout.
/// Handed to the window manager once it is built; takes the window defaults of the moment.
///
///     auto* window = new wt::wtWindow("Frequency", {-0.4F, -0.5F}, {0.8F, 0.9F},
///                                     wt::wtWindow::titleBar | wt::wtWindow::closeBox);
///     window->setLayoutManager(layout);
///     wt::wtWindowManager::appendWidget(window);
class wtWindow : public wtWidget {
public:
    /// Bits of a window's flags; 0 is a fixed panel without a title bar. A close box needs a title bar.
    enum WindowFlag : int { titleBar = 0x001, closeBox = 0x100 };

    /// `pos` and `size` of the whole with its title bar, screen units. Where its widgets need more room it
    /// grows about its middle; it never leaves the screen.
    wtWindow(const std::string& title, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size,
             int flags);
    ~wtWindow() override;

    const std::string& getTitle() const { return name(); }
    /// Takes the layout, in the place of an earlier one; null leaves the widgets where they are.
    void setLayoutManager(LayoutManager* layout);
    /// Replaces the theme's panel. Widgets take the colours that suit the middle cell.
    void setBackground(const GridGraphic& background);
    /// Asks the widgets anew how much room they need.
    void recomputeMinSize();
    /// Covers the whole screen from now on, whatever its size, without a title bar.
    void maximize();
    bool isMaximized() const { return maximized; }
    /// Puts the lower left corner there, as far as the whole window stays on the screen.
    void moveTo(const tavi::Vec2<float>& corner);

    void setShowing(int showing) override;
    void resize(float width, float height) override;
    void draw() override;
    /// What its widgets, padding and title bar need.
    SizeHint sizeHint() const override;
    void place(const Rect& rect) override;
    void invalidateLayout() override { upToDate = false; }
    void ensureLayout() override;
    bool press(const tavi::Vec2<float>& point) override;
    bool wheel(int steps) override;
    const Palette& palette() const override;
    float emPixels() const override;
    bool staysBehind() const override { return maximized; }

private:
    Rect wantedRect() const;

    GridGraphic background;
    GridGraphic shadow;
    tavi::Vec2<float> shadowOffset;
    std::unique_ptr<LayoutManager> layout;
    /// The child along the upper edge, null without one.
    wtWidget* bar = nullptr;
    /// What was asked for, whatever room the widgets need and the screen has.
    Rect requested;
    bool maximized = false;
    bool onLight = false;
    /// Whether places follow from what there is now, on a screen as `placedOn`.
    bool upToDate = false;
    Screen placedOn;
};

}  // namespace wt
