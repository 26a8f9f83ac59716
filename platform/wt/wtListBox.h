#pragma once

#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>
#include <list>
#include <memory>
#include <string>
#include <vector>

#include "platform/wt/ScrollRange.h"
#include "platform/wt/wtWidget.h"

namespace wt {

/// A list of one-line texts; one can be selected. It shows as many whole rows as fit; the wheel and a scroll
/// bar reach the others. A text that is too long ends in an ellipsis.
///
///     auto* list = new wt::wtListBox(window, "List", {-0.3f, -0.3f}, {0.7f, 0.7f});
///     list->append(names);
///     list->connectItemSelected(boost::bind(&Chooser::chosen, &chooser, _1, _2));
class wtListBox : public wtWidget {
public:
    using ItemSelectedSignal = boost::signals2::signal<void(wtListBox*, int)>;

    /// Adds itself to `parent` unless that is null. In a layout it takes all the room, and `size` has no
    /// effect.
    wtListBox(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
              const tavi::Vec2<float>& size);

    /// Adds rows at the end, in the list's order.
    void append(std::list<std::string>& rows);
    int rowCount() const { return static_cast<int>(rows.size()); }
    /// Requires 0 <= index < rowCount().
    const std::string& row(int index) const { return rows[static_cast<std::size_t>(index)]; }

    /// Index of the selected row, -1 for none.
    int selected() const { return selectedRow; }
    /// Selects a row and brings it into view; an index without a row selects none. Calls no slot.
    void select(int index);
    /// The slot gets the list and the index, from 0, of the row that the user selected. It runs at the end of
    /// the event.
    boost::signals2::connection connectItemSelected(const ItemSelectedSignal::slot_type& slot);

    /// Where the row is in the list's own coordinates; empty when it is out of view.
    Rect rowRect(int index) const;
    /// The row at a point of its own coordinates, -1 for none.
    int rowAt(const tavi::Vec2<float>& point) const;
    /// Which rows are in view.
    const ScrollRange& view() const { return range; }
    /// The row under the pointer, -1 for none.
    int hoveredRow() const { return hovered; }

    void draw() override;
    SizeHint sizeHint() const override;
    void place(const Rect& rect) override;
    bool press(const tavi::Vec2<float>& point) override;
    void hover(const tavi::Vec2<float>& point) override { hovered = rowAt(point); }
    void leave() override { hovered = -1; }
    bool wheel(int steps) override;

private:
    Rect rowsArea() const;
    void drawRow(int index) const;
    void drawEmpty() const;

    std::vector<std::string> rows;
    int selectedRow = -1;
    int hovered = -1;
    /// Whether the next layout has to bring the selected row into view.
    bool revealing = false;
    ScrollRange range;
    wtWidget* scrollBar;
    // Shared with the running callback, which may outlive the list.
    std::shared_ptr<ItemSelectedSignal> itemSelected;
};

}  // namespace wt
