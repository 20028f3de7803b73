// The scheduler: every 20 ms tick hands the newest queued address to the
// first free connection among the first N (N from the connections box) and
// shows the counters. One tick starts at most one connection, so no crawl of
// F files takes less than (F - 1) x 20 ms.
#pragma once

#include <memory>
#include <string>

#include "platform/Timer.h"

namespace vantorin {

class CrawlEngine;

inline constexpr int kTickMs = 20;

class Scheduler {
public:
    Scheduler(CrawlEngine& crawl, std::unique_ptr<Timer> tick);
    ~Scheduler();
    Scheduler(const Scheduler&) = delete;
    Scheduler& operator=(const Scheduler&) = delete;

    // Starts fetching `address` on the first free connection; the start page
    // comes here directly, queued addresses from the tick. Nothing happens
    // while no crawl runs, or while no connection is free: the address then
    // stays queued for a later tick.
    void ConnectNext(std::string address);
    // 1 to N, the first connection whose socket is closed; 0 when none is.
    int FindFree() const;

    void Tick();
    void StartTicking() { tick_->SetEnabled(true); }
    void StopTicking() { tick_->SetEnabled(false); }
    bool Ticking() const { return tick_->Enabled(); }

private:
    CrawlEngine& crawl_;
    std::unique_ptr<Timer> tick_;
};

}  // namespace vantorin
