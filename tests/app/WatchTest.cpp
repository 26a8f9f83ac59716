#include "app/Watch.h"

#include <gtest/gtest.h>

#include "app/StopWatch.h"
#include "tests/support/FakeClock.h"

namespace {

constexpr std::int64_t aSecond = 1000000;  // microseconds

class WatchTest : public testing::Test {
protected:
    void SetUp() override { fakeclock::set(100 * aSecond); }
    void TearDown() override { fakeclock::setBroken(false); }
};

TEST_F(WatchTest, ReadingIsCutToWholeMilliseconds) {
    fakeclock::set(5 * aSecond + 123999);
    EXPECT_DOUBLE_EQ(tavi::Watch().asDouble(), 5.123);
}

TEST_F(WatchTest, DifferenceBorrowsASecondForNegativeMicroseconds) {
    fakeclock::set(7 * aSecond + 900000);
    const tavi::Watch before;
    fakeclock::set(9 * aSecond + 100000);
    EXPECT_DOUBLE_EQ((tavi::Watch() - before).asDouble(), 1.2);
}

TEST_F(WatchTest, DifferenceIsCutAfterSubtracting) {
    fakeclock::set(7 * aSecond + 999);
    const tavi::Watch before;
    fakeclock::set(7 * aSecond + 1998);
    EXPECT_DOUBLE_EQ((tavi::Watch() - before).asDouble(), 0.0);
}

TEST_F(WatchTest, ClockSetBackGivesANegativeTime) {
    const tavi::Watch before;
    fakeclock::advance(-3600.0);
    EXPECT_DOUBLE_EQ((tavi::Watch() - before).asDouble(), -3600.0);
}

TEST_F(WatchTest, FailedReadingIsReportedAndKeepsTheOldOne) {
    tavi::Watch watch;
    fakeclock::advance(1.0);
    fakeclock::setBroken(true);
    testing::internal::CaptureStdout();
    watch.update();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "error getting time of day\n");
    EXPECT_DOUBLE_EQ(watch.asDouble(), 100.0);
}

TEST_F(WatchTest, StopWatchStartedAtOnceCounts) {
    const tavi::StopWatch watch(true);
    fakeclock::advance(1.25);
    EXPECT_DOUBLE_EQ(watch, 1.25);
}

TEST_F(WatchTest, StopWatchNotStartedStaysAtZero) {
    const tavi::StopWatch watch(false);
    fakeclock::advance(1.25);
    EXPECT_DOUBLE_EQ(watch, 0.0);
}

TEST_F(WatchTest, StartingARunningStopWatchDoesNothing) {
    tavi::StopWatch watch(true);
    fakeclock::advance(1.0);
    watch.start();
    EXPECT_DOUBLE_EQ(watch, 1.0);
}

TEST_F(WatchTest, StartingLateCountsFromThen) {
    tavi::StopWatch watch(false);
    fakeclock::advance(1.0);
    watch.start();
    fakeclock::advance(0.5);
    EXPECT_DOUBLE_EQ(watch, 0.5);
}

TEST_F(WatchTest, ResetGoesBackToZeroAndKeepsRunning) {
    tavi::StopWatch watch(true);
    fakeclock::advance(3.0);
    watch.reset();
    EXPECT_DOUBLE_EQ(watch, 0.0);
    fakeclock::advance(0.5);
    EXPECT_DOUBLE_EQ(watch, 0.5);
}

TEST_F(WatchTest, ResetDoesNotStartAStoppedWatch) {
    tavi::StopWatch watch(false);
    watch.reset();
    fakeclock::advance(0.5);
    EXPECT_DOUBLE_EQ(watch, 0.0);
}

}  // namespace
