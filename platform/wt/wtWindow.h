#pragma once

#include <memory>
#include <string>

#include "platform/wt/GridGraphic.h"
#include "platform/wt/LayoutManager.h"
#include "platform/wt/Screen.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// A top-level panel: a background, a drop shadow, an optional title bar, and widgets placed by a layout. It
/// copies the window defaults when it is created. Hand it to the window manager once it is built.
///
///     auto* window = new wt::wtWindow("Frequency", {-0.4f, -0.5f}, {0.8f, 0.9f},
///                                     wt::wtWindow::titleBar | wt::wtWindow::closeBox);
///     window->setLayoutManager(layout);
///     wt::wtWindowManager::appendWidget(window);
class wtWindow : public wtWidget {
public:
    /// Bits of a window's flags; 0 is a fixed panel without a title bar. A close box needs a title bar.
    enum WindowFlag : int { titleBar = 0x001, closeBox = 0x100 };

    /// `pos` and `size` include the title bar, in screen units. If its widgets need more room, it grows about
    /// its middle. It never leaves the screen.
    wtWindow(const std::string& title, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size,
             int flags);
    ~wtWindow() override;

    const std::string& getTitle() const { return name(); }
    /// Takes ownership of the layout and drops an earlier one. Null leaves the widgets where they are.
    void setLayoutManager(LayoutManager* layout);
    /// Replaces the theme's panel. Widgets take the colours that suit the middle cell.
    void setBackground(const GridGraphic& background);
    /// Asks the widgets again how much room they need.
    void recomputeMinSize();
    /// Covers the whole screen from now on, without a title bar.
    void maximize();
    bool isMaximized() const { return maximized; }
    /// Moves the lower left corner to `corner`, or as near as the screen allows.
    void moveTo(const tavi::Vec2<float>& corner);

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
    /// The title bar, or null.
    wtWidget* bar = nullptr;
    /// The lower left corner that was asked for, with `wantedSize`; widgets and screen may need another.
    tavi::Vec2<float> wantedCorner;
    bool maximized = false;
    bool onLight = false;
    /// Whether the layout is up to date, for a screen equal to `placedOn`.
    bool upToDate = false;
    Screen placedOn;
};

}  // namespace wt
