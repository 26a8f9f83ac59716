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
///         void draw() override;    // covers position to position + size
///     };
///
/// Units are screen units, -1 to 1 over the viewport on both axes, y up. draw() finds the lower left corner
/// of the widget's parent at (0, 0). The pointer's positions are given from the widget's own lower left
/// corner.
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
    /// Whether `ancestor` is this widget or one that it is in.
    bool isIn(const wtWidget* ancestor) const;
    /// Where it is now, in its parent's coordinates.
    Rect rect() const { return {position.x, position.y, size.x, size.y}; }
    /// Its lower left corner on the screen.
    tavi::Vec2<float> origin() const;

    /// Takes the child, which is drawn after, and so above, the earlier ones.
    virtual void add(wtWidget* child);

    /// 0 hides it and all that is in it: it is neither drawn nor given events, and lets go of the pointer.
    virtual void setShowing(int showing);
    /// Its own flag, 0 or 1; a hidden parent hides it all the same.
    virtual int isShowing() const { return shown; }
    /// 0 makes it pale and deaf.
    virtual void setEnabled(int enabled);
    int isEnabled() const { return active; }
    /// Opacity, 0 to 1, of its background; what stands on it stays opaque.
    virtual void setAlpha(float alpha);
    float getAlpha() const { return alpha; }
    virtual void resize(float width, float height);

    /// Draws the widget alone, without its children.
    virtual void draw() {}
    /// Draws it and all that is in it, in its parent's coordinates.
    void drawTree();
    /// One frame of its own animation.
    virtual void animate() {}
    /// One frame for it and all that is in it.
    void animateTree();

    /// What it asks of a layout: the size that it was given, or little where it expands, unless a subclass
    /// knows better.
    virtual SizeHint sizeHint() const;
    /// Puts it there, in its parent's coordinates, and what is in it in its place.
    virtual void place(const Rect& rect);
    /// Tells the window that it is in that its size hint or its showing is no longer what it was.
    virtual void invalidateLayout();
    /// Brings places up to date with the viewport and the size hints, if they are not; for windows.
    virtual void ensureLayout() {}

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
    /// The pointer is over it and no button is held.
    virtual void hover(const tavi::Vec2<float>& point);
    /// The pointer is over it no more.
    virtual void leave() {}
    /// The wheel turned over it by `steps` notches, up positive. False: its parent is asked.
    virtual bool wheel(int steps);

    /// The colours that suit what is behind it.
    virtual const Palette& palette() const;
    /// The em of its text in pixels.
    virtual float emPixels() const;
    /// Whether a press leaves it behind the other windows.
    virtual bool staysBehind() const { return false; }

protected:
    /// Where it is, in its parent's coordinates, and its extent: it covers position to position + size.
    tavi::Vec2<float> position;
    tavi::Vec2<float> size;
    /// The size that it was given, whatever room it then got.
    tavi::Vec2<float> wantedSize;
    float alpha = 1.0F;

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
