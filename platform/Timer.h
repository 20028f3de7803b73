// An interface timer: interval in ms, enable/disable. Disabling then enabling
// restarts the count; an interval of 0 never fires.
#pragma once

#include <functional>
#include <memory>

namespace vantorin {

class Timer {
public:
    virtual ~Timer() = default;
    virtual void SetInterval(int ms) = 0;
    virtual int Interval() const = 0;
    virtual void SetEnabled(bool enabled) = 0;
    virtual bool Enabled() const = 0;

    std::function<void()> onTimer;
};

using TimerFactory = std::function<std::unique_ptr<Timer>()>;

}  // namespace vantorin
