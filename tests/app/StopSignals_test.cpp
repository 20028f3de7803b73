#include "app/StopSignals.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>
#include <csignal>

namespace vantorin {

// Ctrl+C and a plain kill both stop the crawl through the event loop (so the
// placeholders are swept and the exit status is 130), never end the process
// at once: a signal without its handler would end this test with it.
TEST(StopSignals, InterruptAndTerminateEachReachTheLoopAsOneStop) {
    int argc = 0;  // no arguments: Qt then names none
    QCoreApplication app(argc, nullptr);
    int stops = 0;
    StopSignals handlers([&] {
        ++stops;
        QCoreApplication::exit();
    });
    for (int signal : {SIGINT, SIGTERM}) {
        std::raise(signal);
        QTimer::singleShot(5000, [] { QCoreApplication::exit(); });
        QCoreApplication::exec();
    }
    EXPECT_EQ(stops, 2);
}

}  // namespace vantorin
