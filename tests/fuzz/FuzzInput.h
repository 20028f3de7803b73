// Splits one fuzz input into a few strings and small numbers, so that a target
// can drive routines that take several arguments.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace vantorin::fuzz {

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : data_(reinterpret_cast<const char*>(data)), size_(size) {}

    std::uint8_t Byte() { return at_ < size_ ? static_cast<std::uint8_t>(data_[at_++]) : 0; }
    // Up to the next NUL byte (or the end); the NUL is consumed.
    std::string Field() {
        std::string out;
        while (at_ < size_ && data_[at_] != '\0') out += data_[at_++];
        if (at_ < size_) ++at_;
        return out;
    }
    // Up to `n` bytes (fewer at the end).
    std::string Bytes(std::size_t n) {
        n = std::min(n, size_ - at_);
        std::string out(data_ + at_, n);
        at_ += n;
        return out;
    }
    bool AtEnd() const { return at_ >= size_; }
    std::string Rest() {
        std::string out(data_ + at_, size_ - at_);
        at_ = size_;
        return out;
    }

private:
    const char* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

// A failed property: abort so that both libFuzzer and the replay runner report it.
void Check(bool ok, const char* what);

}  // namespace vantorin::fuzz
