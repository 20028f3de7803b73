// The jobs' event loop in a test: turned by hand, so a test decides what
// happens while a job waits (a stop, a timeout, more data) and when it goes on.
#pragma once

#include <functional>
#include <optional>

#include "platform/EventLoop.h"
#include "platform/Task.h"

namespace vantorin::testing {

class HandTurnedLoop : public EventLoop {
public:
    void ResumeLater(std::coroutine_handle<> job) override { waiting_.Add(job); }
    bool Idle() const { return waiting_.Empty(); }
    // Runs `betweenTurns` (what other events would do), then one turn.
    void Turn() {
        if (betweenTurns) betweenTurns();
        waiting_.Turn();
    }
    void RunUntilIdle() {
        while (!Idle()) Turn();
    }
    std::function<void()> betweenTurns;

private:
    TurnQueue waiting_;
};

// Runs a task to its end on `loop` (and gives its result).
inline void RunToEnd(Task<> task, HandTurnedLoop& loop) {
    Jobs jobs;
    jobs.Start(std::move(task));
    loop.RunUntilIdle();
}

template <class T>
T RunToEnd(Task<T> task, HandTurnedLoop& loop) {
    std::optional<T> result;
    const auto keep = [](Task<T> t, std::optional<T>& out) -> Task<> {
        out.emplace(co_await std::move(t));
    };
    RunToEnd(keep(std::move(task), result), loop);
    return std::move(*result);
}

// A task whose result nobody reads, for Jobs::Start.
template <class T>
Task<> Ignoring(Task<T> task) {
    co_await std::move(task);
}

}  // namespace vantorin::testing
