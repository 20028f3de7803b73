// How the program's allocator treats large buffers.
#pragma once

namespace vantorin {

// A response is held whole, and its buffer grows by doubling while it
// arrives. Buffers of a mebibyte or more are given back to the system as soon
// as they are freed, instead of staying in the heap once the allocator has
// raised its own threshold: a 100 MiB page then peaks near twice its size
// (the response and the one copy the save or the scan works on), not two and
// a half times. No effect where the C library offers no such setting.
void ReturnLargeBuffersToTheSystem();

}  // namespace vantorin
