#pragma once

#include <algorithm>
#include <cmath>

namespace wt {

/// Which rows of a list are in view: the arithmetic of scrolling and of scroll bars. Lengths are in the
/// caller's units, from the upper end down.
class ScrollRange {
public:
    /// Sets how many rows there are; the first in view moves only as far as it must.
    void setRows(int count) {
        rows = std::max(count, 0);
        scrollTo(first);
    }
    /// Sets how many whole rows can be seen at once, at least 1.
    void setVisible(int count) {
        visible = std::max(count, 1);
        scrollTo(first);
    }
    void scrollTo(int row) { first = std::clamp(row, 0, last()); }
    void scrollBy(int delta) { scrollTo(first + delta); }
    /// Scrolls no further than needed to bring the row into view.
    void reveal(int row) { scrollTo(std::clamp(first, row - visible + 1, row)); }

    int firstRow() const { return first; }
    int visibleRows() const { return visible; }
    /// One past the last row in view.
    int endRow() const { return std::min(first + visible, rows); }
    bool inView(int row) const { return row >= first && row < endRow(); }
    bool scrolls() const { return rows > visible; }
    bool moreAbove() const { return first > 0; }
    bool moreBelow() const { return first < last(); }

    /// How long the thumb is in a trough of length `trough`: the share in view, but at least `least`.
    float thumbLength(float trough, float least) const {
        const float share = static_cast<float>(visible) / static_cast<float>(std::max(rows, visible));
        return std::min(std::max(trough * share, least), trough);
    }
    /// How far the thumb's upper end is from the trough's.
    float thumbStart(float trough, float least) const {
        return last() > 0 ? (trough - thumbLength(trough, least)) * static_cast<float>(first) /
                                static_cast<float>(last())
                          : 0.0f;
    }
    /// The first row in view when the thumb starts nearest to `start`.
    int firstRowAt(float start, float trough, float least) const {
        const float way = trough - thumbLength(trough, least);
        const float share = way > 0 ? std::clamp(start / way, 0.0f, 1.0f) : 0.0f;
        return static_cast<int>(std::lround(share * static_cast<float>(last())));
    }

private:
    /// The largest first row.
    int last() const { return std::max(rows - visible, 0); }

    int rows = 0;
    int visible = 1;
    int first = 0;
};

}  // namespace wt
