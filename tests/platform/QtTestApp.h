// One QCoreApplication for the platform tests that need an event loop, made
// before the first test and destroyed after the last, never at static exit.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <functional>
#include <memory>

namespace vantorin::testing {

struct QtAppEnvironment : ::testing::Environment {
    void SetUp() override { app = std::make_unique<QCoreApplication>(argc, argv); }
    void TearDown() override { app.reset(); }
    int argc = 1;
    char name[14] = "test_platform";
    char* argv[2] = {name, nullptr};
    std::unique_ptr<QCoreApplication> app;
};

inline ::testing::Environment* const kQtAppEnvironment =
    ::testing::AddGlobalTestEnvironment(new QtAppEnvironment);

// Runs the event loop until `done` holds or `limitMs` pass; false on the limit.
inline bool PumpUntil(const std::function<bool()>& done, int limitMs = 2000) {
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.elapsed() > limitMs) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return true;
}

// Runs the event loop for `ms` milliseconds.
inline void Pump(int ms) {
    PumpUntil([] { return false; }, ms);
}

}  // namespace vantorin::testing
