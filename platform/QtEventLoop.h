// The Qt event loop as the jobs' event loop: the jobs waiting for a turn are
// resumed from one posted event, which Qt delivers after the socket and timer
// events that were pending when it was posted.
#pragma once

#include <memory>

#include "platform/EventLoop.h"

class QObject;

namespace vantorin {

class QtEventLoop : public EventLoop {
public:
    QtEventLoop();
    ~QtEventLoop() override;
    QtEventLoop(const QtEventLoop&) = delete;
    QtEventLoop& operator=(const QtEventLoop&) = delete;

    void ResumeLater(std::coroutine_handle<> job) override;

private:
    void Turn();

    TurnQueue waiting_;
    bool posted_ = false;
    // Receives the posted turns; gone with this loop, and the turns with it.
    std::unique_ptr<QObject> context_;
};

}  // namespace vantorin
