#include "platform/MemoryPolicy.h"

#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

namespace vantorin {

void ReturnLargeBuffersToTheSystem() {
#ifdef M_MMAP_THRESHOLD
    // A fixed threshold also turns off glibc's raising of it after each free.
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
#endif
}

}  // namespace vantorin
