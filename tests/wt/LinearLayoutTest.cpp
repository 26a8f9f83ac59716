#include "platform/wt/LinearLayout.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/wt/Screen.h"
#include "tests/wt/Stage.h"

namespace {

constexpr int expandBoth = wt::wtWidget::expandX | wt::wtWidget::expandY;

/// Rectangles lie on pixels, so that they may be off by half of one at either end.
class LinearLayoutTest : public Stage {
protected:
    static void expectRect(const wt::wtWidget& widget, const wt::Rect& expected) {
        const float px = wt::screen().pixelX();
        const float py = wt::screen().pixelY();
        EXPECT_NEAR(widget.rect().x, expected.x, px) << widget.name();
        EXPECT_NEAR(widget.rect().y, expected.y, py) << widget.name();
        EXPECT_NEAR(widget.rect().w, expected.w, px) << widget.name();
        EXPECT_NEAR(widget.rect().h, expected.h, py) << widget.name();
    }

    wt::wtWidget root{"root", {-1, -1}, {2, 2}, 0};
    wt::LinearLayout upward{wt::bottomToTop};
    wt::LinearLayout across{wt::leftToRight};
};

TEST_F(LinearLayoutTest, OrientationOneStacksUpwardInTheOrderOfAddingWithoutAGapForTheHidden) {
    Probe first(nullptr, "first", {0, 0, 0.2f, 0.2f}, expandBoth);
    Probe second(nullptr, "second", {0, 0, 0.2f, 0.2f}, expandBoth);
    upward.add(&first, attributes(0, 1));
    upward.add(&second, attributes(0, 1));
    upward.place({0, 0, 1, 1});
    expectRect(first, {0, 0, 1, 0.5f});
    expectRect(second, {0, 0.5f, 1, 0.5f});
    first.setShowing(0);
    upward.place({0, 0, 1, 1});
    expectRect(second, {0, 0, 1, 1});
}

TEST_F(LinearLayoutTest, OrientationZeroStacksFromTheLeft) {
    Probe first(nullptr, "first", {0, 0, 0.2f, 0.2f}, expandBoth);
    Probe second(nullptr, "second", {0, 0, 0.2f, 0.2f}, expandBoth);
    across.add(&first, attributes(0, 1));
    across.add(&second, attributes(0, 3));
    const float least = first.sizeHint().least.x;
    const float spare = 1 - 2 * least;
    across.place({0.1f, 0.2f, 1, 1});
    expectRect(first, {0.1f, 0.2f, least + spare / 4, 1});
    expectRect(second, {0.1f + least + spare / 4, 0.2f, least + spare * 3 / 4, 1});
}

TEST_F(LinearLayoutTest, SpareRoomGoesToTheWidgetsThatExpandByWeight) {
    Probe fixed(nullptr, "fixed", {0, 0, 0.3f, 0.2f});
    Probe one(nullptr, "one", {0, 0, 1, 1}, expandBoth);
    Probe three(nullptr, "three", {0, 0, 1, 1}, expandBoth);
    upward.add(&fixed, attributes(0, 5));
    upward.add(&one, attributes(0, 1));
    upward.add(&three, attributes(0, 3));
    const float least = one.sizeHint().least.y;
    const float spare = 1.0f - 0.2f - 2 * least;
    upward.place({0, 0, 0.1f, 0.1f});  // and again, which forgets this
    upward.place({0, 0, 1, 1});
    expectRect(fixed, {0.35f, 0, 0.3f, 0.2f});
    expectRect(one, {0, 0.2f, 1, least + spare / 4});
    expectRect(three, {0, 0.2f + least + spare / 4, 1, least + spare * 3 / 4});
}

TEST_F(LinearLayoutTest, WhereNothingExpandsEachWidgetSitsInTheMiddleOfItsShare) {
    Probe low(nullptr, "low", {0, 0, 0.4f, 0.2f});
    Probe high(nullptr, "high", {0, 0, 0.4f, 0.2f});
    upward.add(&low, attributes(0.01f, 1));
    upward.add(&high, attributes(0.01f, 1));
    upward.place({0, 0, 2, 2});
    expectRect(low, {0.8f, 0.4f, 0.4f, 0.2f});
    expectRect(high, {0.8f, 1.4f, 0.4f, 0.2f});
}

TEST_F(LinearLayoutTest, AlignmentBitsPlaceAWidgetInItsCell) {
    const std::map<int, tavi::Vec2<float>> corners = {{0x01 | 0x08, {0, 0.8f}},
                                                      {0x02 | 0x10, {0.6f, 0}},
                                                      {0x04 | 0x20, {0.3f, 0.4f}},
                                                      {0x01 | 0x20, {0, 0.4f}},
                                                      {0, {0.3f, 0.4f}}};
    for (const auto& [align, corner] : corners) {
        wt::LinearLayout layout(wt::bottomToTop);
        Probe probe(nullptr, "align " + std::to_string(align), {0, 0, 0.4f, 0.2f});
        layout.add(&probe, attributes(0, 1, align));
        layout.place({0, 0, 1, 1});
        expectRect(probe, {corner.x, corner.y, 0.4f, 0.2f});
    }
}

TEST_F(LinearLayoutTest, MarginsAreLeftRightBottomTop) {
    Probe probe(nullptr, "probe", {0, 0, 1, 1}, expandBoth);
    upward.add(&probe, {0.1f, 0.2f, 0.3f, 0.4f, 1, 0, wt::wtAlign(0x24), 0});
    upward.place({0, 0, 2, 2});
    expectRect(probe, {0.1f, 0.3f, 1.7f, 1.3f});
}

TEST_F(LinearLayoutTest, FillStretchesAcrossTheStackOnly) {
    Probe probe(nullptr, "probe", {0, 0, 0.2f, 0.2f});
    upward.add(&probe, attributes(0, 1, 0x24, 1));
    upward.place({0, 0, 1, 1});
    expectRect(probe, {0, 0.4f, 1, 0.2f});
    across.add(&probe, attributes(0, 1, 0x24, 1));
    across.place({0, 0, 1, 1});
    expectRect(probe, {0.4f, 0, 0.2f, 1});
}

TEST_F(LinearLayoutTest, TooLittleRoomShrinksAllAlikeWithoutOverlap) {
    Probe a(nullptr, "a", {0, 0, 0.5f, 0.6f});
    Probe b(nullptr, "b", {0, 0, 0.5f, 0.6f});
    upward.add(&a, attributes(0.01f, 1));
    upward.add(&b, attributes(0.01f, 1));
    upward.place({0, 0, 0.3f, 0.62f});
    EXPECT_NEAR(a.rect().h, 0.3f, 0.02f);
    EXPECT_NEAR(b.rect().h, 0.3f, 0.02f);
    EXPECT_LE(a.rect().top(), b.rect().y);
    EXPECT_LE(b.rect().top(), 0.62f + wt::screen().pixelY());
    EXPECT_LE(a.rect().w, 0.3f);
}

TEST_F(LinearLayoutTest, SizeHintSumsAlongTheStackAndTakesTheLargestAcross) {
    Probe wide(nullptr, "wide", {0, 0, 0.5f, 0.1f});
    Probe high(nullptr, "high", {0, 0, 0.2f, 0.4f});
    upward.add(&wide, {0.01f, 0.02f, 0.03f, 0.04f, 1, 0, wt::wtAlign(0x24), 0});
    upward.add(&high, attributes(0, 1));
    EXPECT_NEAR(upward.sizeHint().preferred.x, 0.53f, 1e-6f);
    EXPECT_NEAR(upward.sizeHint().preferred.y, 0.57f, 1e-6f);
    across.add(&wide, attributes(0.01f, 1));
    across.add(&high, attributes(0, 1));
    EXPECT_NEAR(across.sizeHint().preferred.x, 0.72f, 1e-6f);
    EXPECT_NEAR(across.sizeHint().preferred.y, 0.4f, 1e-6f);
}

TEST_F(LinearLayoutTest, EmptyLayoutAsksForNothingAndZeroWeightsLeaveSpareRoomUnused) {
    EXPECT_EQ(upward.sizeHint().least, (tavi::Vec2<float>(0, 0)));
    upward.place({0, 0, 1, 1});
    Probe probe(nullptr, "probe", {0, 0, 0.2f, 0.2f});
    upward.add(&probe, attributes(0, 0));
    upward.place({0, 0, 1, 1});
    expectRect(probe, {0.4f, 0, 0.2f, 0.2f});
}

}  // namespace
