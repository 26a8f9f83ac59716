#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/tmath/Vec2.h"
#include "platform/wt/Rect.h"

namespace wt {

struct Palette;

/// What a widget asks of a layout, screen units: it can live with `least`, and looks best at `preferred`.
struct SizeHint {
    tavi::Vec2<float> least;
    tavi::Vec2<float> preferred;
};

/// Everything on the screen: a rectangle in its parent's coordinates, children on top of it, and answers to
/// the pointer. Made with `new` and handed to a parent or to the window manager, which own it from then on.
///
///     class Meter : public wt::wtWidget {
///         void draw() override;    // lower left corner of the parent at (0, 0); cover position to position
///         + size
///     };
///
/// Units are screen units, -1 to 1 over the viewport on both axes, y up. Pointer positions that handlers get
/// are measured from the widget's own lower left corner.
class wtWidget {
public:
    /// Bits of a widget's flags: it takes whatever room there is along that axis.
    enum Flag : int { expandX = 1, expandY = 2 };

    wtWidget(const std::string& name, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size, int flags);
    wtWidget(const wtWidget&) = delete;
    wtWidget& operator=(const wtWidget&) = delete;
    virtual ~wtWidget();

    const std::string& name() const { return widgetName; }
    int flags() const { return widgetFlags; }
    wtWidget* parent() const { return owner; }
    const std::vector<std::unique_ptr<wtWidget>>& children() const { return owned; }
    /// Where it is now, in its parent's coordinates.
    Rect rect() const { return {position.x, position.y, size.x, size.y}; }
    /// Its lower left corner on the screen.
    tavi::Vec2<float> origin() const;
    /// The window at its root, itself for a window.
    wtWidget* root();

    /// Takes the child, which is drawn after, and so above, the earlier ones.
    virtual void add(wtWidget* child);

    /// 0 hides it and all that is in it: it is neither drawn nor given events, and lets go of the pointer.
    virtual void setShowing(int showing);
    /// Its own flag, 0 or 1; a hidden parent hides it all the same.
    virtual int isShowing() const { return shown; }
    /// 0 makes it pale and deaf.
    virtual void setEnabled(int enabled);
    int isEnabled() const { return active; }
    /// Opacity, 0 to 1, of its background.
    virtual void setAlpha(float alpha);
    float getAlpha() const { return alpha; }
    virtual void resize(float width, float height);

    /// Draws the widget alone, without its children; see the class comment for the coordinates.
    virtual void draw() {}
    /// Draws it and all that is in it.
    void drawTree();
    /// One frame of its own animation.
    virtual void animate() {}

    virtual SizeHint sizeHint() const { return {size, size}; }
    /// Puts it somewhere, in its parent's coordinates, and what is in it in its place.
    virtual void place(const Rect& rect);
    /// Says that its size hint is no longer what it was: its window is laid out again before it is next used.
    void invalidateLayout();

    /// The deepest shown widget at a point of its own coordinates, or null.
    wtWidget* widgetAt(const tavi::Vec2<float>& point);
    /// The left button went down on it. True: it keeps the pointer until the release. False: its parent is
    /// asked.
    virtual bool press(const tavi::Vec2<float>& point);
    /// The pointer moved, wherever to, while it keeps it.
    virtual void drag(const tavi::Vec2<float>& point);
    /// The button went up, wherever; it no longer has the pointer.
    virtual void release(const tavi::Vec2<float>& point);
    /// The pointer was taken away without a release.
    virtual void cancel() {}
    /// The pointer is over it, no button held.
    virtual void hover(const tavi::Vec2<float>& point);
    /// The pointer is no longer over it.
    virtual void leave() {}
    /// The wheel turned over it by `steps`, up positive. False: its parent is asked.
    virtual bool wheel(int steps);

    /// The colours that suit what is behind it.
    virtual const Palette& palette() const;
    /// The em of its text in pixels.
    virtual float emPixels() const;
    /// Whether presses leave it behind the other windows.
    virtual bool staysBehind() const { return false; }

protected:
    /// Where it is, in its parent's coordinates, and its extent: it covers position to position + size.
    tavi::Vec2<float> position;
    tavi::Vec2<float> size;
    float alpha = 1.0F;

    virtual void layoutChanged() {}

private:
    std::string widgetName;
    int widgetFlags;
    int shown = 1;
    int active = 1;
    wtWidget* owner = nullptr;
    std::vector<std::unique_ptr<wtWidget>> owned;
};

}  // namespace wt
