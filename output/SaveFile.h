// Saving a finished download into the mirror: header stripped, dynamic pages
// renamed, links rewritten for offline browsing, search text recorded, the
// placeholder deleted.
#pragma once

#include <cstdint>
#include <string>

#include "output/Mirror.h"
#include "platform/Task.h"

namespace vantorin {

// Where a download went: its local path after renaming, and whether the
// file could be written there.
struct SavedFile {
    std::string path;
    bool written = false;
};

// `received`: the whole response (header and body), or the timeout text; it
// is read before the first wait, so a handler that runs while the save waits
// may change the text it came from. `address`: "\" + host + path, or " \ " +
// host + path for a timed-out job. `host`: the host of the connection that
// fetched it ("" when it has none). `filesDone` is raised by one at the end,
// whatever happened to the write; a response that is just "cancel" is
// neither saved nor counted.
Task<SavedFile> SaveFile(const std::string& received, std::string address, std::string host,
                         Mirror& m, std::int32_t& filesDone);

}  // namespace vantorin
