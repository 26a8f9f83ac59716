#include "platform/wt/LinearLayout.h"

#include <gtest/gtest.h>

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

TEST_F(LinearLayoutTest, OrientationOneStacksUpwardInTheOrderOfAdding) {
    Probe first(nullptr, "first", {0, 0, 0.2F, 0.2F}, expandBoth);
    Probe second(nullptr, "second", {0, 0, 0.2F, 0.2F}, expandBoth);
    upward.add(&first, attributes(0, 1));
    upward.add(&second, attributes(0, 1));
    upward.place({0, 0, 1, 1});
    expectRect(first, {0, 0, 1, 0.5F});
    expectRect(second, {0, 0.5F, 1, 0.5F});
}

TEST_F(LinearLayoutTest, OrientationZeroStacksFromTheLeft) {
    Probe first(nullptr, "first", {0, 0, 0.2F, 0.2F}, expandBoth);
    Probe second(nullptr, "second", {0, 0, 0.2F, 0.2F}, expandBoth);
    across.add(&first, attributes(0, 1));
    across.add(&second, attributes(0, 3));
    const float least = first.sizeHint().least.x;
    const float spare = 1 - 2 * least;
    across.place({0.1F, 0.2F, 1, 1});
    expectRect(first, {0.1F, 0.2F, least + spare / 4, 1});
    expectRect(second, {0.1F + least + spare / 4, 0.2F, least + spare * 3 / 4, 1});
}

TEST_F(LinearLayoutTest, SpareRoomGoesToTheWidgetsThatExpandByWeight) {
    Probe fixed(nullptr, "fixed", {0, 0, 0.3F, 0.2F});
    Probe one(nullptr, "one", {0, 0, 1, 1}, expandBoth);
    Probe three(nullptr, "three", {0, 0, 1, 1}, expandBoth);
    upward.add(&fixed, attributes(0, 5));
    upward.add(&one, attributes(0, 1));
    upward.add(&three, attributes(0, 3));
    const float least = one.sizeHint().least.y;
    const float spare = 1.0F - 0.2F - 2 * least;
    upward.place({0, 0, 1, 1});
    expectRect(fixed, {0.35F, 0, 0.3F, 0.2F});
    expectRect(one, {0, 0.2F, 1, least + spare / 4});
    expectRect(three, {0, 0.2F + least + spare / 4, 1, least + spare * 3 / 4});
}

TEST_F(LinearLayoutTest, WhereNothingExpandsEachWidgetSitsInTheMiddleOfItsShare) {
    Probe low(nullptr, "low", {0, 0, 0.4F, 0.2F});
    Probe high(nullptr, "high", {0, 0, 0.4F, 0.2F});
    upward.add(&low, attributes(0.01F, 1));
    upward.add(&high, attributes(0.01F, 1));
    upward.place({0, 0, 2, 2});
    expectRect(low, {0.8F, 0.4F, 0.4F, 0.2F});
    expectRect(high, {0.8F, 1.4F, 0.4F, 0.2F});
}

TEST_F(LinearLayoutTest, AlignmentBitsPlaceAWidgetInItsCell) {
    struct {
        int align;
        float x;
        float y;
    } const cases[] = {{0x01 | 0x08, 0, 0.8F},
                       {0x02 | 0x10, 0.6F, 0},
                       {0x04 | 0x20, 0.3F, 0.4F},
                       {0x01 | 0x20, 0, 0.4F},
                       {0, 0.3F, 0.4F}};
    for (const auto& each : cases) {
        wt::LinearLayout layout(wt::bottomToTop);
        Probe probe(nullptr, "align " + std::to_string(each.align), {0, 0, 0.4F, 0.2F});
        layout.add(&probe, attributes(0, 1, each.align));
        layout.place({0, 0, 1, 1});
        expectRect(probe, {each.x, each.y, 0.4F, 0.2F});
    }
}

TEST_F(LinearLayoutTest, MarginsAreLeftRightBottomTop) {
    Probe probe(nullptr, "probe", {0, 0, 1, 1}, expandBoth);
    upward.add(&probe, {0.1F, 0.2F, 0.3F, 0.4F, 1, 0, wt::wtAlign(0x24), 0});
    upward.place({0, 0, 2, 2});
    expectRect(probe, {0.1F, 0.3F, 1.7F, 1.3F});
}

TEST_F(LinearLayoutTest, FillStretchesAcrossTheStackOnly) {
    Probe probe(nullptr, "probe", {0, 0, 0.2F, 0.2F});
    upward.add(&probe, attributes(0, 1, 0x24, 1));
    upward.place({0, 0, 1, 1});
    expectRect(probe, {0, 0.4F, 1, 0.2F});
    across.add(&probe, attributes(0, 1, 0x24, 1));
    across.place({0, 0, 1, 1});
    expectRect(probe, {0.4F, 0, 0.2F, 1});
}

TEST_F(LinearLayoutTest, HiddenWidgetLeavesNoGap) {
    Probe first(nullptr, "first", {0, 0, 0.2F, 0.2F}, expandBoth);
    Probe second(nullptr, "second", {0, 0, 0.2F, 0.2F}, expandBoth);
    upward.add(&first, attributes(0.02F, 1));
    upward.add(&second, attributes(0, 1));
    first.setShowing(0);
    upward.place({0, 0, 1, 1});
    expectRect(second, {0, 0, 1, 1});
}

TEST_F(LinearLayoutTest, TooLittleRoomShrinksAllAlikeWithoutOverlap) {
    Probe a(nullptr, "a", {0, 0, 0.5F, 0.6F});
    Probe b(nullptr, "b", {0, 0, 0.5F, 0.6F});
    upward.add(&a, attributes(0.01F, 1));
    upward.add(&b, attributes(0.01F, 1));
    upward.place({0, 0, 0.3F, 0.62F});
    EXPECT_NEAR(a.rect().h, 0.3F, 0.02F);
    EXPECT_NEAR(b.rect().h, 0.3F, 0.02F);
    EXPECT_LE(a.rect().top(), b.rect().y);
    EXPECT_LE(b.rect().top(), 0.62F + wt::screen().pixelY());
    EXPECT_LE(a.rect().w, 0.3F);
}

TEST_F(LinearLayoutTest, SizeHintSumsAlongTheStackAndTakesTheLargestAcross) {
    Probe wide(nullptr, "wide", {0, 0, 0.5F, 0.1F});
    Probe high(nullptr, "high", {0, 0, 0.2F, 0.4F});
    upward.add(&wide, {0.01F, 0.02F, 0.03F, 0.04F, 1, 0, wt::wtAlign(0x24), 0});
    upward.add(&high, attributes(0, 1));
    EXPECT_NEAR(upward.sizeHint().preferred.x, 0.53F, 1e-6F);
    EXPECT_NEAR(upward.sizeHint().preferred.y, 0.57F, 1e-6F);
    across.add(&wide, attributes(0.01F, 1));
    across.add(&high, attributes(0, 1));
    EXPECT_NEAR(across.sizeHint().preferred.x, 0.72F, 1e-6F);
    EXPECT_NEAR(across.sizeHint().preferred.y, 0.4F, 1e-6F);
}

TEST_F(LinearLayoutTest, ZeroWeightsLeaveSpareRoomUnused) {
    Probe probe(nullptr, "probe", {0, 0, 0.2F, 0.2F});
    upward.add(&probe, attributes(0, 0));
    upward.place({0, 0, 1, 1});
    expectRect(probe, {0.4F, 0, 0.2F, 0.2F});
}

TEST_F(LinearLayoutTest, EmptyLayoutAsksForNothing) {
    EXPECT_EQ(upward.sizeHint().least, (tavi::Vec2<float>(0, 0)));
    upward.place({0, 0, 1, 1});
}

TEST_F(LinearLayoutTest, LayoutAgainAfterShrinkingGivesTheSameAsAtFirst) {
    Probe fixed(nullptr, "fixed", {0, 0, 0.3F, 0.3F});
    Probe plot(nullptr, "plot", {0, 0, 1, 1}, expandBoth);
    upward.add(&fixed, attributes(0.01F, 1));
    upward.add(&plot, attributes(0.01F, 1));
    upward.place({0, 0, 1, 1});
    const wt::Rect before = fixed.rect();
    const wt::Rect plotBefore = plot.rect();
    upward.place({0, 0, 0.1F, 0.1F});
    upward.place({0, 0, 1, 1});
    expectRect(fixed, before);
    expectRect(plot, plotBefore);
}

}  // namespace
