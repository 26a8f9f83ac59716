#include "platform/wt/LinearLayout.h"

#include <deque>
#include <map>
#include <vector>

#include "platform/wt/Screen.h"
#include "tests/wt/Stage.h"

namespace {

constexpr int expandBoth = wt::wtWidget::expandX | wt::wtWidget::expandY;

class LinearLayoutTest : public Stage {
protected:
    /// Adds a widget that would like to be of that size.
    void add(wt::LinearLayout& layout, const tavi::Vec2<float>& size,
             const wt::LinearLayout::Attributes& inCell, int flags = 0) {
        layout.add(&added.emplace_back(nullptr, wt::Rect{0, 0, size.x, size.y}, flags), inCell);
    }
    /// Where the widgets stand in a room, in the order of adding.
    void expectPlaces(wt::LinearLayout& layout, const wt::Rect& room, const std::vector<wt::Rect>& expected) {
        layout.place(room);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            SCOPED_TRACE(i);
            expectRect(added[i].rect(), expected[i]);
        }
    }

    std::deque<Probe> added;
    wt::LinearLayout upward{wt::bottomToTop};
    wt::LinearLayout across{wt::leftToRight};
};

TEST_F(LinearLayoutTest, OrientationOneStacksUpwardInTheOrderOfAddingWithoutAGapForTheHidden) {
    add(upward, {0.2f, 0.2f}, attributes(0, 1), expandBoth);
    add(upward, {0.2f, 0.2f}, attributes(0, 1), expandBoth);
    expectPlaces(upward, {0, 0, 1, 1}, {{0, 0, 1, 0.5f}, {0, 0.5f, 1, 0.5f}});
    added[0].setShowing(0);
    expectPlaces(upward, {0, 0, 1, 1}, {added[0].rect(), {0, 0, 1, 1}});
}

TEST_F(LinearLayoutTest, OrientationZeroStacksFromTheLeft) {
    add(across, {0.2f, 0.2f}, attributes(0, 1), expandBoth);
    add(across, {0.2f, 0.2f}, attributes(0, 3), expandBoth);
    const float least = added[0].sizeHint().least.x;
    const float quarter = (1 - 2 * least) / 4;
    expectPlaces(across, {0.1f, 0.2f, 1, 1},
                 {{0.1f, 0.2f, least + quarter, 1}, {0.1f + least + quarter, 0.2f, least + 3 * quarter, 1}});
}

TEST_F(LinearLayoutTest, SpareRoomGoesToTheWidgetsThatExpandByWeight) {
    add(upward, {0.3f, 0.2f}, attributes(0, 5));
    add(upward, {1, 1}, attributes(0, 1), expandBoth);
    add(upward, {1, 1}, attributes(0, 3), expandBoth);
    const float least = added[1].sizeHint().least.y;
    const float quarter = (1 - 0.2f - 2 * least) / 4;
    upward.place({0, 0, 0.1f, 0.1f});  // and again, which forgets this
    expectPlaces(upward, {0, 0, 1, 1},
                 {{0.35f, 0, 0.3f, 0.2f},
                  {0, 0.2f, 1, least + quarter},
                  {0, 0.2f + least + quarter, 1, least + 3 * quarter}});
}

TEST_F(LinearLayoutTest, WhereNothingExpandsEachWidgetSitsInTheMiddleOfItsShare) {
    add(upward, {0.4f, 0.2f}, attributes(0.01f, 1));
    add(upward, {0.4f, 0.2f}, attributes(0.01f, 1));
    expectPlaces(upward, {0, 0, 2, 2}, {{0.8f, 0.4f, 0.4f, 0.2f}, {0.8f, 1.4f, 0.4f, 0.2f}});
}

TEST_F(LinearLayoutTest, AlignmentBitsPlaceAWidgetInItsCell) {
    const std::map<int, tavi::Vec2<float>> corners = {{0x01 | 0x08, {0, 0.8f}},
                                                      {0x02 | 0x10, {0.6f, 0}},
                                                      {0x04 | 0x20, {0.3f, 0.4f}},
                                                      {0x01 | 0x20, {0, 0.4f}},
                                                      {0, {0.3f, 0.4f}}};
    for (const auto& [align, corner] : corners) {
        SCOPED_TRACE(align);
        wt::LinearLayout layout(wt::bottomToTop);
        added.clear();
        add(layout, {0.4f, 0.2f}, attributes(0, 1, align));
        expectPlaces(layout, {0, 0, 1, 1}, {{corner.x, corner.y, 0.4f, 0.2f}});
    }
}

TEST_F(LinearLayoutTest, MarginsAreLeftRightBottomTop) {
    add(upward, {1, 1}, {0.1f, 0.2f, 0.3f, 0.4f, 1, 0, wt::wtAlign(0x24), 0}, expandBoth);
    expectPlaces(upward, {0, 0, 2, 2}, {{0.1f, 0.3f, 1.7f, 1.3f}});
}

TEST_F(LinearLayoutTest, FillStretchesAcrossTheStackOnly) {
    add(upward, {0.2f, 0.2f}, attributes(0, 1, 0x24, 1));
    expectPlaces(upward, {0, 0, 1, 1}, {{0, 0.4f, 1, 0.2f}});
    across.add(&added[0], attributes(0, 1, 0x24, 1));
    expectPlaces(across, {0, 0, 1, 1}, {{0.4f, 0, 0.2f, 1}});
}

TEST_F(LinearLayoutTest, TooLittleRoomShrinksAllAlikeWithoutOverlap) {
    add(upward, {0.5f, 0.6f}, attributes(0.01f, 1));
    add(upward, {0.5f, 0.6f}, attributes(0.01f, 1));
    upward.place({0, 0, 0.3f, 0.62f});
    const wt::Rect low = added[0].rect();
    const wt::Rect high = added[1].rect();
    EXPECT_NEAR(low.h, 0.3f, 0.02f);
    EXPECT_NEAR(high.h, 0.3f, 0.02f);
    EXPECT_LE(low.top(), high.y);
    EXPECT_LE(high.top(), 0.62f + wt::screen().pixelY());
    EXPECT_LE(low.w, 0.3f);
}

TEST_F(LinearLayoutTest, SizeHintSumsAlongTheStackAndTakesTheLargestAcross) {
    add(upward, {0.5f, 0.1f}, {0.01f, 0.02f, 0.03f, 0.04f, 1, 0, wt::wtAlign(0x24), 0});
    add(upward, {0.2f, 0.4f}, attributes(0, 1));
    EXPECT_NEAR(upward.sizeHint().preferred.x, 0.53f, 1e-6f);
    EXPECT_NEAR(upward.sizeHint().preferred.y, 0.57f, 1e-6f);
    across.add(&added[0], attributes(0.01f, 1));
    across.add(&added[1], attributes(0, 1));
    EXPECT_NEAR(across.sizeHint().preferred.x, 0.72f, 1e-6f);
    EXPECT_NEAR(across.sizeHint().preferred.y, 0.4f, 1e-6f);
}

TEST_F(LinearLayoutTest, EmptyLayoutAsksForNothingAndZeroWeightsLeaveSpareRoomUnused) {
    EXPECT_EQ(upward.sizeHint().least, (tavi::Vec2<float>(0, 0)));
    upward.place({0, 0, 1, 1});
    add(upward, {0.2f, 0.2f}, attributes(0, 0));
    expectPlaces(upward, {0, 0, 1, 1}, {{0.4f, 0, 0.2f, 0.2f}});
}

}  // namespace
