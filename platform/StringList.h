// An ordered list of text items, as a list box holds them: the queue List1 and
// the links-not-taken List2. Items are appended at the end and the scheduler
// takes the last, so both are cheap however long the queue grows. Whoever shows
// the list (the window) is told of each change after it is made.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vantorin {

class StringList {
public:
    enum class Change { Added, Removed, Cleared };

    void AddItem(std::string item) {
        items_.push_back(std::move(item));
        Tell(Change::Added, ListCount() - 1);
    }
    int ListCount() const { return static_cast<int>(items_.size()); }
    // 0-based, as list boxes count; "" outside the list.
    std::string Item(int index) const { return Valid(index) ? At(index) : std::string(); }
    void RemoveItem(int index) {
        if (!Valid(index)) return;
        items_.erase(items_.begin() + index);
        Tell(Change::Removed, index);
    }
    void Clear() {
        items_.clear();
        Tell(Change::Cleared, 0);
    }
    const std::vector<std::string>& Items() const { return items_; }

    // The change and the index it happened at (0 for Cleared).
    std::function<void(Change, int)> onChange;

private:
    bool Valid(int index) const { return index >= 0 && index < ListCount(); }
    const std::string& At(int index) const { return items_[static_cast<std::size_t>(index)]; }
    void Tell(Change change, int index) {
        if (onChange) onChange(change, index);
    }

    std::vector<std::string> items_;
};

}  // namespace vantorin
