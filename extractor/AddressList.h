// An ordered list of addresses: the crawl's queue (newest last, and the
// scheduler takes the last) and its list of links not taken. Items are added
// and taken at the end, so both stay cheap however long the queue grows. The
// window shows the queue at its own pace: the list remembers from which index
// on it changed since the window last looked.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

namespace vantorin {

class AddressList {
public:
    void Add(std::string address) { items_.push_back(std::move(address)); }
    std::size_t Count() const { return items_.size(); }
    bool Empty() const { return items_.empty(); }
    // "" for an index outside the list.
    const std::string& At(std::size_t index) const {
        static const std::string none;
        return index < items_.size() ? items_[index] : none;
    }
    const std::string& Last() const { return Empty() ? At(0) : items_.back(); }
    void RemoveLast() {
        if (Empty()) return;
        items_.pop_back();
        changedFrom_ = std::min(changedFrom_, items_.size());
    }
    void Clear() {
        items_.clear();
        changedFrom_ = 0;
    }
    const std::vector<std::string>& Items() const { return items_; }

    // The first index whose item may differ from what the window last showed
    // (items added since lie at or after the count it showed).
    std::size_t ChangedFrom() const { return changedFrom_; }
    // The window's own bookkeeping, so it may keep it on a list it only reads.
    void MarkShown() const { changedFrom_ = items_.size(); }

private:
    std::vector<std::string> items_;
    mutable std::size_t changedFrom_ = 0;
};

}  // namespace vantorin
