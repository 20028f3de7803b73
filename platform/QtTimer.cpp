#include "platform/QtTimer.h"

#include <QTimer>

namespace vantorin {

QtTimer::QtTimer() : timer_(std::make_unique<QTimer>()) {
    // Qt's default coarse timers may fire up to 5 % early; a timeout must
    // measure a full interval of silence.
    timer_->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer_.get(), &QTimer::timeout, timer_.get(), [this] {
        if (onTimer) onTimer();
    });
}

QtTimer::~QtTimer() = default;

void QtTimer::SetInterval(int ms) {
    interval_ = ms;
    Apply();
}

void QtTimer::SetEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    Apply();
}

void QtTimer::Apply() {
    // start() restarts a running count, which a new interval or a fresh
    // enable asks for; a 0 ms timer must not spin.
    if (enabled_ && interval_ > 0) {
        timer_->start(interval_);
    } else {
        timer_->stop();
    }
}

TimerFactory QtTimerFactory() {
    return [] { return std::make_unique<QtTimer>(); };
}

}  // namespace vantorin
