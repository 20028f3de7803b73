// The interface timer over QTimer. Disabling then enabling restarts the
// count; an interval of 0 (or less) never fires.
#pragma once

#include <memory>

#include "platform/Timer.h"

class QTimer;

namespace vantorin {

class QtTimer : public Timer {
public:
    QtTimer();
    ~QtTimer() override;
    QtTimer(const QtTimer&) = delete;
    QtTimer& operator=(const QtTimer&) = delete;

    void SetInterval(int ms) override;
    int Interval() const override { return interval_; }
    void SetEnabled(bool enabled) override;
    bool Enabled() const override { return enabled_; }

private:
    void Apply();

    std::unique_ptr<QTimer> timer_;
    int interval_ = 0;
    bool enabled_ = false;
};

TimerFactory QtTimerFactory();

}  // namespace vantorin
