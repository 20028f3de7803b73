// Saving a finished download into the mirror: header stripped, dynamic pages
// renamed, links rewritten for offline browsing, search text recorded, the
// placeholder deleted.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "output/Mirror.h"

namespace vantorin {

// `received`: the whole response (header and body), "cancel" for a refused
// job, or the timeout text. `address`: "\" + host + path (or " \ " + host +
// path from the timeout path), changed in place. `slotHost`: the host of the
// slot that fetched it ("" for a slot number outside 1..24). `filesDone` is
// raised by one at the end, whatever happened to the write. `received` is
// read only before the first yield, so a caller may pass text that a handler
// running inside the yields later changes. True when the file was written.
bool SaveFile(const std::string& received, std::string& address, std::string_view slotHost,
              Mirror& m, std::int32_t& filesDone);

}  // namespace vantorin
