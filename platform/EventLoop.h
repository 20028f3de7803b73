// The top-level event loop as a job sees it: where a job waits for the events
// pending now (socket data, timer ticks, clicks) to run before it goes on. The
// program hands in the Qt loop; tests hand in one they turn by hand. An
// engine's jobs must not outlive the loop, nor the loop resume a job of an
// engine that is gone: whoever owns both destroys the loop's queue first.
#pragma once

#include <coroutine>
#include <deque>

namespace vantorin {

class EventLoop {
public:
    virtual ~EventLoop() = default;
    // Resumes `job` once the events pending now have run; never inside the caller.
    virtual void ResumeLater(std::coroutine_handle<> job) = 0;
};

// co_await NextTurn(loop): let pending events run, then go on.
struct NextTurn {
    EventLoop& loop;
    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> job) { loop.ResumeLater(job); }
    void await_resume() const noexcept {}
};

// The jobs waiting for the next turn, in the order they began to wait. A turn
// resumes those that waited when it began; a job that waits again during the
// turn waits for the next one, so the events that came meanwhile run first.
class TurnQueue {
public:
    void Add(std::coroutine_handle<> job) { waiting_.push_back(job); }
    bool Empty() const { return waiting_.empty(); }
    void Turn() {
        std::deque<std::coroutine_handle<>> now;
        now.swap(waiting_);
        for (std::coroutine_handle<> job : now) job.resume();
    }
    void Clear() { waiting_.clear(); }

private:
    std::deque<std::coroutine_handle<>> waiting_;
};

}  // namespace vantorin
