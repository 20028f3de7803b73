// SIGINT and SIGTERM for the headless run. The handler only writes a byte to
// a pipe; the event loop reads it and calls onStop on the UI thread, where
// stopping the crawl is safe.
#pragma once

#include <functional>
#include <memory>

class QSocketNotifier;

namespace vantorin {

class StopSignals {
public:
    // Installs the handlers; they are put back to the defaults when destroyed.
    explicit StopSignals(std::function<void()> onStop);
    ~StopSignals();
    StopSignals(const StopSignals&) = delete;
    StopSignals& operator=(const StopSignals&) = delete;

private:
    std::function<void()> onStop_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace vantorin
