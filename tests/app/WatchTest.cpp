#include "app/Watch.h"

#include <gtest/gtest.h>

#include "app/StopWatch.h"
#include "tests/support/FakeClock.h"

namespace {

constexpr std::int64_t aSecond = 1000000;  // microseconds

class WatchTest : public testing::Test {
protected:
    void SetUp() override { fakeclock::set(100 * aSecond); }
    void TearDown() override { fakeclock::state().broken = false; }
};

TEST_F(WatchTest, ReadingAndDifferenceAreCutToWholeMilliseconds) {
    fakeclock::set(5 * aSecond + 123999);
    EXPECT_DOUBLE_EQ(tavi::Watch().asDouble(), 5.123);
    const struct {
        std::int64_t before;
        std::int64_t after;
        double seconds;
    } examples[] = {
        {7 * aSecond + 900000, 9 * aSecond + 100000, 1.2},  // borrows a second for negative microseconds
        {7 * aSecond + 999, 7 * aSecond + 1998, 0.0},       // cut after subtracting
        {7200 * aSecond, 3600 * aSecond, -3600.0},          // a clock that was set back
    };
    for (const auto& example : examples) {
        fakeclock::set(example.before);
        const tavi::Watch before;
        fakeclock::set(example.after);
        EXPECT_DOUBLE_EQ((tavi::Watch() - before).asDouble(), example.seconds);
    }
}

TEST_F(WatchTest, FailedReadingIsReportedAndKeepsTheOldOne) {
    tavi::Watch watch;
    fakeclock::advance(1.0);
    fakeclock::state().broken = true;
    testing::internal::CaptureStdout();
    watch.update();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "error getting time of day\n");
    EXPECT_DOUBLE_EQ(watch.asDouble(), 100.0);
}

TEST_F(WatchTest, StopWatchCountsFromItsStartOrLastResetAndStaysAtZeroUntilItIsStarted) {
    tavi::StopWatch watch(false);
    const tavi::StopWatch started(true);
    fakeclock::advance(1.0);
    EXPECT_DOUBLE_EQ(watch, 0.0);
    EXPECT_DOUBLE_EQ(started, 1.0);
    watch.reset();
    fakeclock::advance(0.5);
    EXPECT_DOUBLE_EQ(watch, 0.0);
    watch.start();
    fakeclock::advance(0.5);
    watch.start();
    EXPECT_DOUBLE_EQ(watch, 0.5) << "it runs already";
    watch.reset();
    fakeclock::advance(0.25);
    EXPECT_DOUBLE_EQ(watch, 0.25);
}

}  // namespace
