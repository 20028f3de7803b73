#include "platform/QtTimer.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

namespace vantorin {

// Runs the event loop for `ms` milliseconds, or until something ends it.
static void RunFor(int ms) {
    QTimer limit;
    QObject::connect(&limit, &QTimer::timeout, [] { QCoreApplication::exit(); });
    limit.start(ms);
    QCoreApplication::exec();
}

// A timer fires after one full interval of its own, never early, whatever the
// phase it starts at (the system's coarse timers move a deadline up to 5 % to
// share wake-ups); disabling and enabling it starts the count again; an
// interval of 0 never fires, so it cannot spin.
TEST(QtTimer, FiresAfterAFullIntervalCountedFromItsLastStartAndNeverAtZero) {
    int argc = 0;  // no arguments: Qt then names none
    QCoreApplication app(argc, nullptr);
    QtTimer timer;
    QElapsedTimer clock;
    std::vector<qint64> waited;
    timer.onTimer = [&] {
        waited.push_back(clock.elapsed());
        timer.SetEnabled(false);
        QCoreApplication::exit();
    };
    timer.SetInterval(60);
    timer.SetEnabled(true);
    RunFor(30);
    timer.SetEnabled(false);  // restarted below: the count begins again
    for (int phase = 0; phase < 10; ++phase) {
        QThread::msleep(static_cast<unsigned long>(phase));
        clock.start();
        timer.SetEnabled(true);
        RunFor(1000);  // or until it fires
        ASSERT_EQ(waited.size(), static_cast<std::size_t>(phase + 1));
        EXPECT_GE(waited.back(), 60) << phase;
    }

    timer.SetInterval(0);
    timer.SetEnabled(true);
    RunFor(50);
    EXPECT_EQ(std::pair(waited.size(), timer.Enabled()), std::pair(std::size_t{10}, true));
}

}  // namespace vantorin
