#include "engine/Scheduler.h"

#include <algorithm>

#include "engine/CrawlEngine.h"
#include "extractor/AddressRules.h"
#include "text/Strings.h"

namespace vantorin {

Scheduler::Scheduler(CrawlEngine& crawl, std::unique_ptr<Timer> tick)
    : crawl_(crawl), tick_(std::move(tick)) {
    tick_->SetEnabled(false);
    tick_->SetInterval(kTickMs);
    tick_->onTimer = [this] { Tick(); };
}

Scheduler::~Scheduler() {
    tick_->onTimer = nullptr;
}

void Scheduler::Tick() {
    // Newest first: the address admitted last is fetched first.
    const AddressList& queue = crawl_.model_.queue;
    if (!queue.Empty()) ConnectNext(queue.Last());
    crawl_.ShowCounts();
}

void Scheduler::ConnectNext(std::string address) {
    if (!crawl_.model_.Running()) return;
    address = Replace(StripHttp(address), ".jpeg", ".jpg");
    const int free = FindFree();
    if (free == 0) return;
    // Takes the queue's last item, which is where a tick found the address;
    // the start page arrives with the queue empty and takes nothing.
    crawl_.model_.queue.RemoveLast();
    crawl_.At(free).Fetch(address);
}

int Scheduler::FindFree() const {
    // Connections above N are never handed out, even when theirs are closed.
    const long long n =
        std::min<long long>(RoundHalfEven(crawl_.ConnectionLimit()), kConnectionCount);
    for (int i = 1; i <= n; ++i)
        if (crawl_.ConnectionAt(i).IsFree()) return i;
    return 0;
}

}  // namespace vantorin
