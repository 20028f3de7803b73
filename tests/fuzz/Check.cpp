#include <cstdio>
#include <cstdlib>

#include "tests/fuzz/FuzzInput.h"

namespace vantorin::fuzz {

void Check(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "property failed: %s\n", what);
    std::abort();
}

}  // namespace vantorin::fuzz
