#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/tmath/Vec2.h"
#include "platform/wt/Rect.h"

namespace wt {

struct Palette;

/// What a widget asks of a layout, screen units: it needs at least `least`, and looks best at `preferred`.
struct SizeHint {
    tavi::Vec2<float> least;
    tavi::Vec2<float> preferred;
};

/// Everything on the screen: a rectangle in its parent's coordinates, children on top of it, and answers to
/// the pointer. Made with `new` and handed to a parent or to the window manager, which own it from then on.
///
///     class Meter : public wt::wtWidget {
///         void draw() override;    // covers position to position + size
///     };
///
/// Units are screen units, -1 to 1 over the viewport on both axes, y up. draw() finds the lower left corner
/// of the widget's parent at (0, 0). The pointer's positions are given from the widget's own lower left
/// corner.
class wtWidget {
public:
    /// Bits of a widget's flags: it takes all the room along that axis.
    enum Flag : int { expandX = 1, expandY = 2 };

    wtWidget(const std::string& name, const tavi::Vec2<float>& pos, const tavi::Vec2<float>& size, int flags);
    wtWidget(const wtWidget&) = delete;
    wtWidget& operator=(const wtWidget&) = delete;
    virtual ~wtWidget();

    const std::string& name() const { return widgetName; }
    int flags() const { return widgetFlags; }
    wtWidget* parent() const { return owner; }
    const std::vector<std::unique_ptr<wtWidget>>& children() const { return owned; }
    /// Whether `ancestor` is this widget or one that it is in.
    bool isIn(const wtWidget* ancestor) const;
    /// Where it is now, in its parent's coordinates.
    Rect rect() const { return {position.x, position.y, size.x, size.y}; }
    /// Its lower left corner on the screen.
    tavi::Vec2<float> origin() const;

    /// Takes ownership of the child, which is drawn above the earlier ones.
    virtual void add(wtWidget* child);

    /// 0 hides it and its children: it is not drawn, gets no events, and loses the pointer.
    virtual void setShowing(int showing);
    /// Its own flag, 0 or 1. A hidden parent hides it too.
    virtual int isShowing() const { return shown; }
    /// 0 makes it pale, and it ignores the pointer.
    virtual void setEnabled(int enabled);
    int isEnabled() const { return active; }
    /// Opacity of its background, 0 to 1. Its children stay opaque.
    virtual void setAlpha(float alpha);
    float getAlpha() const { return alpha; }
    virtual void resize(float width, float height);

    /// Draws the widget alone, without its children.
    virtual void draw() {}
    /// Draws it and its children, in its parent's coordinates.
    void drawTree();
    /// One frame of its own animation.
    virtual void animate() {}
    /// One frame for it and its children.
    void animateTree();

    /// What it asks of a layout. By default the size that it was given, or little along an axis where it
    /// expands.
    virtual SizeHint sizeHint() const;
    /// Moves it to `rect`, in its parent's coordinates, and places its children.
    virtual void place(const Rect& rect);
    /// Tells its window that its size hint or its showing has changed.
    virtual void invalidateLayout();
    /// For windows: places the widgets again if the viewport or a size hint has changed.
    virtual void ensureLayout() {}

    /// The deepest shown widget at a point of its own coordinates, or null.
    wtWidget* widgetAt(const tavi::Vec2<float>& point);
    /// The left button went down on it. True: it keeps the pointer until the release. False: its parent is
    /// asked.
    virtual bool press(const tavi::Vec2<float>& point);
    /// The pointer moved, here or elsewhere, while the widget keeps it.
    virtual void drag(const tavi::Vec2<float>& point);
    /// The button went up, here or elsewhere; the widget no longer has the pointer.
    virtual void release(const tavi::Vec2<float>& point);
    /// The pointer was taken away without a release.
    virtual void cancel() {}
    /// The pointer is over it and no button is held.
    virtual void hover(const tavi::Vec2<float>& point);
    /// The pointer has left it.
    virtual void leave() {}
    /// The wheel turned over it by `steps` notches, up positive. False: its parent is asked.
    virtual bool wheel(int steps);

    /// The colours that suit what is behind it.
    const virtual Palette& palette() const;
    /// The em of its text in pixels.
    virtual float emPixels() const;
    /// Whether it stays behind the other windows when pressed.
    virtual bool staysBehind() const { return false; }

protected:
    /// Where it is, in its parent's coordinates, and its extent: it covers position to position + size.
    tavi::Vec2<float> position;
    tavi::Vec2<float> size;
    /// The size that was asked for; a layout may have given another.
    tavi::Vec2<float> wantedSize;
    float alpha = 1.0f;

    /// `ems` of its text in screen units, whole pixels.
    float emsX(float ems) const;
    float emsY(float ems) const;
    /// Whether a point of its own coordinates lies on it.
    bool covers(const tavi::Vec2<float>& point) const { return Rect{0, 0, size.x, size.y}.contains(point); }

private:
    std::string widgetName;
    int widgetFlags;
    int shown = 1;
    int active = 1;
    wtWidget* owner = nullptr;
    std::vector<std::unique_ptr<wtWidget>> owned;
};

}  // namespace wt
