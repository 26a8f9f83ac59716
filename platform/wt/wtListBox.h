#pragma once

#include <boost/signals2/signal.hpp>
#include <list>
#include <string>
#include <vector>

#include "platform/wt/wtWidget.h"

namespace wt {

/// A list of one-line texts of which one can be selected.
///
///     auto* list = new wt::wtListBox(window, "List", {-0.3F, -0.3F}, {0.7F, 0.7F});
///     list->append(names);
///     list->connectItemSelected(boost::bind(&Chooser::chosen, &chooser, _1, _2));
class wtListBox : public wtWidget {
public:
    using ItemSelectedSignal = boost::signals2::signal<void(wtListBox*, int)>;

    /// Adds itself to `parent` unless that is null. Takes all the room that its layout has.
    wtListBox(wtWidget* parent, const std::string& name, const tavi::Vec2<float>& pos,
              const tavi::Vec2<float>& size);

    /// Adds rows at the end, in the list's order.
    void append(std::list<std::string>& rows);
    int rowCount() const { return static_cast<int>(rows.size()); }
    /// Requires 0 <= row < rowCount().
    const std::string& row(int row) const { return rows[static_cast<std::size_t>(row)]; }
    /// Index of the selected row, -1 for none.
    int selected() const { return selectedRow; }

    /// The slot gets the list and the index, from 0, of the row that the user selected, as the last thing in
    /// the event.
    boost::signals2::connection connectItemSelected(const ItemSelectedSignal::slot_type& slot);

    void draw() override;
    SizeHint sizeHint() const override;
    bool press(const tavi::Vec2<float>& point) override;

private:
    std::vector<std::string> rows;
    int selectedRow = -1;
    ItemSelectedSignal itemSelected;
};

}  // namespace wt
