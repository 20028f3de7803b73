// "Let pending events run": the event loop in the program, nothing in unit
// tests and benchmarks. Every caller must stay correct when another handler
// runs inside the call.
#pragma once

#include <functional>

namespace vantorin {

using Yield = std::function<void()>;

inline void RunPending(const Yield& yield) {
    if (yield) yield();
}

}  // namespace vantorin
