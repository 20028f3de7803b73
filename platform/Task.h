// A job that can wait for the event loop: a C++20 coroutine that suspends at
// `co_await NextTurn(loop)` and is resumed from the top of the event loop once
// the events pending then have run. While it waits, other connections'
// handlers, timers and buttons run; none of them runs inside it, so the stack
// never grows with the number of jobs waiting.
//
// A Task starts when it is awaited (`co_await SaveFile(...)`) and resumes its
// awaiter when it ends; the outermost one is started by a Jobs list, which
// owns it until it ends. Tasks are never copied.
#pragma once

#include <coroutine>
#include <exception>
#include <list>
#include <optional>
#include <utility>

namespace vantorin {

template <class T>
class Task;

namespace task_detail {

class Owner;

struct PromiseBase {
    std::coroutine_handle<> awaiter;  // resumed when this task ends
    // Set for an outermost task: the list that owns it, and its place there.
    Owner* owner = nullptr;
    std::list<std::coroutine_handle<>>::iterator place;

    std::suspend_always initial_suspend() noexcept { return {}; }
    void unhandled_exception() noexcept { std::terminate(); }
    struct Ending {
        bool await_ready() noexcept { return false; }
        template <class P>
        std::coroutine_handle<> await_suspend(std::coroutine_handle<P> ending) noexcept;
        void await_resume() noexcept {}
    };
    Ending final_suspend() noexcept { return {}; }
};

// The outermost tasks running now; each removes itself when it ends.
class Owner {
public:
    Owner() = default;
    Owner(const Owner&) = delete;
    Owner& operator=(const Owner&) = delete;
    // The tasks still waiting are destroyed: nothing will resume them now.
    ~Owner() { DropAll(); }

    void DropAll() {
        while (!running_.empty()) {
            const std::coroutine_handle<> job = running_.front();
            running_.pop_front();
            job.destroy();
        }
    }
    std::size_t Count() const { return running_.size(); }
    // Called by a task as it ends.
    void Forget(std::list<std::coroutine_handle<>>::iterator place) { running_.erase(place); }

protected:
    template <class P>
    void Adopt(std::coroutine_handle<P> job) {
        job.promise().owner = this;
        job.promise().place = running_.insert(running_.end(), job);
        job.resume();
    }

private:
    std::list<std::coroutine_handle<>> running_;
};

template <class P>
std::coroutine_handle<> PromiseBase::Ending::await_suspend(
    std::coroutine_handle<P> ending) noexcept {
    PromiseBase& promise = ending.promise();
    if (promise.awaiter) return promise.awaiter;
    if (promise.owner) {
        // An outermost task ends here: it leaves its list and is gone.
        promise.owner->Forget(promise.place);
        ending.destroy();
    }
    return std::noop_coroutine();
}

template <class T>
struct Promise : PromiseBase {
    std::optional<T> value;
    Task<T> get_return_object() noexcept;
    template <class U>
    void return_value(U&& v) {
        value.emplace(std::forward<U>(v));
    }
};

template <>
struct Promise<void> : PromiseBase {
    Task<void> get_return_object() noexcept;
    void return_void() noexcept {}
};

}  // namespace task_detail

template <class T = void>
class [[nodiscard]] Task {
public:
    using promise_type = task_detail::Promise<T>;
    using Handle = std::coroutine_handle<promise_type>;

    explicit Task(Handle handle) : handle_(handle) {}
    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, {})) {}
    Task& operator=(Task&&) = delete;
    ~Task() {
        if (handle_) handle_.destroy();
    }

    // Awaited: starts the task and goes on when it has ended.
    bool await_ready() const noexcept { return false; }
    std::coroutine_handle<> await_suspend(std::coroutine_handle<> awaiter) noexcept {
        handle_.promise().awaiter = awaiter;
        return handle_;
    }
    T await_resume() {
        if constexpr (!std::is_void_v<T>) return std::move(*handle_.promise().value);
    }

    // For Jobs: hands the coroutine over to its owner.
    Handle Release() { return std::exchange(handle_, {}); }

private:
    Handle handle_;
};

template <class T>
Task<T> task_detail::Promise<T>::get_return_object() noexcept {
    return Task<T>(Task<T>::Handle::from_promise(*this));
}

inline Task<void> task_detail::Promise<void>::get_return_object() noexcept {
    return Task<void>(Task<void>::Handle::from_promise(*this));
}

// The outermost jobs of an owner (the engine): Start runs a task until it
// first waits and keeps it until it ends; the ones still waiting when the
// list goes are destroyed with it.
class Jobs : public task_detail::Owner {
public:
    void Start(Task<void> task) { Adopt(task.Release()); }
};

}  // namespace vantorin
