// A list of text items: the seam behind the main window's list boxes (the queue
// List1 and the links-not-taken List2). The window implements it over its list
// widgets; tests and the headless run use VectorList.
#pragma once

#include <string>
#include <vector>

namespace vantorin {

class StringList {
public:
    virtual ~StringList() = default;
    virtual void AddItem(const std::string& item) = 0;
    virtual int ListCount() const = 0;
    // 0-based index, as list boxes count.
    virtual std::string Item(int index) const = 0;
    virtual void RemoveItem(int index) = 0;
    virtual void Clear() = 0;
};

class VectorList : public StringList {
public:
    void AddItem(const std::string& item) override { items_.push_back(item); }
    int ListCount() const override { return static_cast<int>(items_.size()); }
    std::string Item(int index) const override {
        return index >= 0 && index < ListCount() ? items_[static_cast<std::size_t>(index)]
                                                 : std::string();
    }
    void RemoveItem(int index) override {
        if (index >= 0 && index < ListCount()) items_.erase(items_.begin() + index);
    }
    void Clear() override { items_.clear(); }
    const std::vector<std::string>& Items() const { return items_; }

private:
    std::vector<std::string> items_;
};

}  // namespace vantorin
