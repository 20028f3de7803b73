#include "platform/FolderTree.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace vantorin {

namespace fs = std::filesystem;

namespace {

struct Listing {
    std::string prefix;                               // "" or "sub/folder/"
    std::vector<std::pair<std::string, bool>> names;  // name, is a folder; sorted
    std::size_t next = 0;
};

bool List(const fs::path& folder, Listing& listing, std::string& reason) {
    std::error_code ec;
    fs::directory_iterator it(folder, ec);
    for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
        std::error_code kindError;
        const bool isFolder = it->is_directory(kindError) && !it->is_symlink(kindError);
        listing.names.emplace_back(it->path().filename().string(), isFolder);
    }
    if (ec) {
        reason = ec.message();
        return false;
    }
    std::sort(listing.names.begin(), listing.names.end());
    return true;
}

}  // namespace

std::optional<std::vector<std::pair<std::string, PathKind>>> ListFolder(const std::string& folder) {
    std::vector<std::pair<std::string, PathKind>> entries;
    std::error_code ec;
    fs::directory_iterator it(folder, ec);
    for (; !ec && it != fs::directory_iterator(); it.increment(ec)) {
        // The kind comes with the listing; only links cost a look at their target.
        std::error_code kindError;
        const PathKind kind = it->is_regular_file(kindError) ? PathKind::File
                              : it->is_directory(kindError)  ? PathKind::Folder
                                                             : PathKind::None;
        entries.emplace_back(it->path().filename().string(), kind);
    }
    if (ec) return std::nullopt;
    return entries;
}

bool WalkFiles(
    const std::string& root,
    const std::function<void(const std::string& relative, const std::string& error)>& visit,
    std::string& reason) {
    std::vector<Listing> open(1);
    if (!List(root, open.back(), reason)) return false;
    while (!open.empty()) {
        Listing& top = open.back();
        if (top.next == top.names.size()) {
            open.pop_back();
            continue;
        }
        const auto& [name, isFolder] = top.names[top.next++];
        std::string relative = top.prefix + name;
        if (!isFolder) {
            visit(relative, "");
            continue;
        }
        Listing inner{relative + "/", {}, 0};
        std::string why;
        if (List(fs::path(root) / relative, inner, why))
            open.push_back(std::move(inner));
        else
            visit(relative, why);
    }
    return true;
}

std::optional<std::string> ReadFileStart(const std::string& path, std::size_t limit,
                                         std::string& reason) {
    std::error_code ec;
    const fs::file_status status = fs::status(path, ec);
    if (ec) {
        reason = ec.message();
        return std::nullopt;
    }
    // A pipe or device would block or never end: only regular files are read.
    if (!fs::is_regular_file(status)) {
        reason = "not a regular file";
        return std::nullopt;
    }
    errno = 0;
#ifdef _WIN32
    std::FILE* file = _wfopen(fs::path(path).c_str(), L"rb");
#else
    std::FILE* file = std::fopen(path.c_str(), "rb");
#endif
    if (!file) {
        reason = std::generic_category().message(errno != 0 ? errno : EIO);
        return std::nullopt;
    }
    std::string bytes;
    char buffer[1 << 16];
    while (bytes.size() < limit) {
        const std::size_t n =
            std::fread(buffer, 1, std::min(sizeof buffer, limit - bytes.size()), file);
        if (n == 0) break;
        bytes.append(buffer, n);
    }
    const int error = std::ferror(file) ? (errno != 0 ? errno : EIO) : 0;
    std::fclose(file);
    if (error != 0) {
        reason = std::generic_category().message(error);
        return std::nullopt;
    }
    return bytes;
}

}  // namespace vantorin
