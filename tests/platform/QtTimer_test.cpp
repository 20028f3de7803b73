#include "platform/QtTimer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

namespace vantorin {
namespace {

// Runs the event loop for `ms` milliseconds.
void RunFor(int ms) {
    QTimer::singleShot(ms, [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
}

// A timer fires after one full interval of its own, never early; disabling
// and enabling it starts the count again; an interval of 0 never fires, so it
// cannot spin.
TEST(QtTimer, FiresAfterAFullIntervalCountedFromItsLastStartAndNeverAtZero) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    QCoreApplication app(argc, argv);
    QtTimer timer;
    QElapsedTimer clock;
    std::vector<qint64> fired;
    timer.onTimer = [&] {
        fired.push_back(clock.elapsed());
        timer.SetEnabled(false);
    };
    timer.SetInterval(60);
    clock.start();
    timer.SetEnabled(true);
    RunFor(30);
    timer.SetEnabled(false);  // restarted: the count begins again here
    timer.SetEnabled(true);
    const qint64 restarted = clock.elapsed();
    RunFor(150);
    ASSERT_EQ(fired.size(), 1u);
    EXPECT_GE(fired[0], restarted + 60);

    timer.SetInterval(0);
    timer.SetEnabled(true);
    RunFor(50);
    EXPECT_EQ(std::pair(fired.size(), timer.Enabled()), std::pair(std::size_t{1}, true));
}

}  // namespace
}  // namespace vantorin
