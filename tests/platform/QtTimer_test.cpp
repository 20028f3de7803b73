#include "platform/QtTimer.h"

#include <gtest/gtest.h>

#include "tests/platform/QtTestApp.h"

#include <algorithm>

namespace vantorin::testing {
namespace {

class QtTimerTest : public ::testing::Test {
protected:
    void SetUp() override {
        timer.onTimer = [this] { ++ticks; };
    }
    QtTimer timer;
    int ticks = 0;
};

TEST_F(QtTimerTest, ZeroIntervalNeverFiresAndADisabledTimerIsSilent) {
    timer.SetInterval(0);
    timer.SetEnabled(true);
    Pump(60);
    EXPECT_EQ(ticks, 0);
    timer.SetInterval(5);
    Pump(60);
    EXPECT_GT(ticks, 0);
    timer.SetEnabled(false);
    const int seen = ticks;
    Pump(60);
    EXPECT_EQ(ticks, seen);
    EXPECT_EQ(timer.Interval(), 5);
    EXPECT_FALSE(timer.Enabled());
}

TEST_F(QtTimerTest, DisableThenEnableRestartsTheCount) {
    timer.SetInterval(1000);
    timer.SetEnabled(true);
    Pump(600);
    timer.SetEnabled(false);
    timer.SetEnabled(true);
    Pump(600);  // 1200 ms since the first start, 600 since the restart
    EXPECT_EQ(ticks, 0);
}

TEST_F(QtTimerTest, TickDuringItsOwnHandlerIsDroppedNotNested) {
    int depth = 0, deepest = 0;
    timer.onTimer = [&] {
        ++ticks;
        deepest = std::max(deepest, ++depth);
        if (ticks == 1) Pump(50);  // lets events run, as a yield does
        --depth;
    };
    timer.SetInterval(5);
    timer.SetEnabled(true);
    Pump(120);
    EXPECT_GT(ticks, 1);
    EXPECT_EQ(deepest, 1);
}

}  // namespace
}  // namespace vantorin::testing
