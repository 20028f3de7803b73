#include "platform/QtTimer.h"

#include <gtest/gtest.h>

#include "tests/platform/QtTestApp.h"

#include <QElapsedTimer>
#include <algorithm>
#include <memory>
#include <vector>

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
    timer.SetInterval(200);
    timer.SetEnabled(true);
    Pump(120);
    timer.SetEnabled(false);
    timer.SetEnabled(true);
    Pump(120);  // 240 ms since the first start, 120 since the restart
    EXPECT_EQ(ticks, 0);
}

// A slot's timeout runs after a full interval of silence: a tick that came
// early would turn a slow answer into a retry.
TEST(QtTimerTiming, NoTickBeforeAFullInterval) {
    std::vector<std::unique_ptr<QtTimer>> timers;
    std::vector<qint64> firstTick;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 24; ++i) {
        auto& timer = timers.emplace_back(std::make_unique<QtTimer>());
        firstTick.push_back(-1);
        timer->onTimer = [&, i] {
            if (firstTick[i] < 0) firstTick[i] = clock.elapsed();
        };
        timer->SetInterval(60 + 13 * i);
        timer->SetEnabled(true);
    }
    ASSERT_TRUE(PumpUntil([&] { return std::ranges::count(firstTick, -1) == 0; }));
    for (int i = 0; i < 24; ++i) EXPECT_GE(firstTick[i], 60 + 13 * i) << i;
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
    EXPECT_TRUE(PumpUntil([&] { return ticks > 1 && depth == 0; }));
    EXPECT_EQ(deepest, 1);
}

}  // namespace
}  // namespace vantorin::testing
