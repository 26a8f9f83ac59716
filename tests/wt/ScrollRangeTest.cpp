#include "platform/wt/ScrollRange.h"

#include <gtest/gtest.h>

namespace {

wt::ScrollRange rangeOf(int rows, int visible) {
    wt::ScrollRange range;
    range.setRows(rows);
    range.setVisible(visible);
    return range;
}

TEST(ScrollRangeTest, RevealGoesNoFurtherThanNeeded) {
    wt::ScrollRange range = rangeOf(20, 5);
    range.reveal(3);
    EXPECT_EQ(range.firstRow(), 0);
    range.reveal(7);
    EXPECT_EQ(range.firstRow(), 3);
    range.reveal(2);
    EXPECT_EQ(range.firstRow(), 2);
    EXPECT_TRUE(range.inView(6));
    EXPECT_FALSE(range.inView(7));
}

TEST(ScrollRangeTest, FewerRowsOrMoreRoomPullTheViewBack) {
    wt::ScrollRange range = rangeOf(20, 5);
    range.scrollTo(15);
    range.setVisible(8);
    EXPECT_EQ(range.firstRow(), 12);
    range.setRows(9);
    EXPECT_EQ(range.firstRow(), 1);
    range.setRows(-4);
    EXPECT_EQ(range.endRow(), 0);
}

TEST(ScrollRangeTest, ThumbShowsWhichShareIsInView) {
    wt::ScrollRange range = rangeOf(20, 5);
    EXPECT_FLOAT_EQ(range.thumbLength(100, 10), 25);
    for (const int first : {0, 5, 15}) {
        range.scrollTo(first);
        EXPECT_FLOAT_EQ(range.thumbStart(100, 10), static_cast<float>(5 * first));
    }
}

TEST(ScrollRangeTest, ThumbOfAVeryLongListKeepsItsLeastLengthAndReachesBothEnds) {
    wt::ScrollRange range = rangeOf(100000, 5);
    EXPECT_FLOAT_EQ(range.thumbLength(100, 10), 10);
    range.scrollTo(100000);
    EXPECT_FLOAT_EQ(range.thumbStart(100, 10), 90);
    EXPECT_EQ(range.firstRowAt(90, 100, 10), 99995);
    EXPECT_FLOAT_EQ(range.thumbLength(6, 10), 6);
    EXPECT_EQ(range.firstRowAt(3, 6, 10), 0);
}

TEST(ScrollRangeTest, ThumbPositionAndFirstRowAreEachOthersInverse) {
    wt::ScrollRange range = rangeOf(37, 6);
    for (int first = 0; first <= 31; ++first) {
        range.scrollTo(first);
        EXPECT_EQ(range.firstRowAt(range.thumbStart(100, 10), 100, 10), first);
    }
    EXPECT_EQ(range.firstRowAt(-50, 100, 10), 0);
    EXPECT_EQ(range.firstRowAt(500, 100, 10), 31);
}

}  // namespace
