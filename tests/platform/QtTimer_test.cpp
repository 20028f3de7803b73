#include "platform/QtTimer.h"

#include <gtest/gtest.h>

#include "tests/platform/QtTestApp.h"

#include <QElapsedTimer>
#include <algorithm>
#include <memory>
#include <vector>

namespace vantorin::testing {
namespace {

// A 0 ms timer must not spin; disabling silences it; a fresh enable restarts
// the count, as the timeouts that measure silence rely on.
TEST(QtTimer, ZeroNeverFiresDisabledIsSilentAndEnablingRestartsTheCount) {
    QtTimer timer;
    int ticks = 0;
    timer.onTimer = [&ticks] { ++ticks; };
    timer.SetEnabled(true);
    Pump(60);
    EXPECT_EQ(ticks, 0);
    timer.SetInterval(200);
    Pump(120);
    timer.SetEnabled(false);
    timer.SetEnabled(true);
    Pump(120);  // 240 ms since the first start, 120 since the restart
    EXPECT_EQ(ticks, 0);
    ASSERT_TRUE(PumpUntil([&ticks] { return ticks > 0; }));
    timer.SetEnabled(false);
    const int seen = ticks;
    Pump(250);
    EXPECT_EQ(ticks, seen);
}

// A slot's timeout runs after a full interval of silence: a tick that came
// early would turn a slow answer into a retry.
TEST(QtTimer, NoTickBeforeAFullInterval) {
    std::vector<std::unique_ptr<QtTimer>> timers;
    std::vector<qint64> firstTick(24, -1);
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 24; ++i) {
        auto& timer = timers.emplace_back(std::make_unique<QtTimer>());
        timer->onTimer = [&, i] {
            if (firstTick[i] < 0) firstTick[i] = clock.elapsed();
        };
        timer->SetInterval(60 + 13 * i);
        timer->SetEnabled(true);
    }
    ASSERT_TRUE(PumpUntil([&] { return std::ranges::count(firstTick, -1) == 0; }));
    for (int i = 0; i < 24; ++i) EXPECT_GE(firstTick[i], 60 + 13 * i) << i;
}

}  // namespace
}  // namespace vantorin::testing
