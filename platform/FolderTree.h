// Reading a folder tree from disk, for the offline check and the page text.
// Paths are native; nothing here changes the disk, so no guard is needed.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantorin {

enum class PathKind { None, File, Folder };  // None: missing, or neither (a device, a loop)

// The names in `folder` and what each is, links followed; nothing when the
// folder cannot be listed.
std::optional<std::vector<std::pair<std::string, PathKind>>> ListFolder(const std::string& folder);

// Calls `visit` for every entry below `root` that is not a folder, with its
// path relative to `root` ("/" between names) and an empty error: folder by
// folder in name order, depth first, links to folders not followed. A folder
// below `root` that cannot be listed is visited itself, with the system's
// reason. False, with the reason, when `root` cannot be listed.
bool WalkFiles(
    const std::string& root,
    const std::function<void(const std::string& relative, const std::string& error)>& visit,
    std::string& reason);

// The first `limit` bytes of a regular file, or nothing with the system's reason.
std::optional<std::string> ReadFileStart(const std::string& path, std::size_t limit,
                                         std::string& reason);

}  // namespace vantorin
