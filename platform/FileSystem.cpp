#include "platform/FileSystem.h"

#include <fstream>
#include <system_error>

#include "platform/Text.h"

namespace vantorin {

namespace fs = std::filesystem;

namespace {

// Absolute, with "." and ".." resolved and existing links followed.
fs::path Resolve(const fs::path& p) {
    std::error_code ec;
    fs::path abs = fs::absolute(p, ec);
    if (ec) return {};
    fs::path r = fs::weakly_canonical(abs, ec);
    if (ec) r = abs.lexically_normal();
    return r;
}

std::vector<std::string> Components(const fs::path& p) {
    std::vector<std::string> parts;
    for (const auto& c : p) {
        std::string s = c.string();
        if (!s.empty() && s != ".") parts.push_back(s);
    }
    return parts;
}

// True when `inner` is `outer` or lies below it.
bool IsWithin(const std::vector<std::string>& inner, const std::vector<std::string>& outer) {
    if (outer.empty() || inner.size() < outer.size()) return false;
    for (std::size_t i = 0; i < outer.size(); ++i)
        if (inner[i] != outer[i]) return false;
    return true;
}

bool WildcardMatch(std::string_view name, std::string_view pattern) {
    std::size_t n = 0, p = 0, star = std::string_view::npos, mark = 0;
    while (n < name.size()) {
        if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == name[n])) {
            ++n;
            ++p;
        } else if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            mark = n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++mark;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

// The existing folder that `p` names when case is ignored, or nothing.
std::optional<fs::path> FindFolderAnyCase(const fs::path& p) {
    std::error_code ec;
    if (fs::is_directory(p, ec)) return p;
    fs::path abs = fs::absolute(p, ec);
    if (ec) return std::nullopt;
    fs::path at = abs.root_path();
    for (const auto& c : abs.relative_path()) {
        std::string want = c.string();
        if (want.empty() || want == ".") continue;
        if (fs::is_directory(at / c, ec)) {
            at /= c;
            continue;
        }
        std::string wantLower = LCase(want);
        bool found = false;
        for (const auto& entry : fs::directory_iterator(at, ec)) {
            if (LCase(entry.path().filename().string()) == wantLower && entry.is_directory(ec)) {
                at = entry.path();
                found = true;
                break;
            }
        }
        if (!found) return std::nullopt;
    }
    return at;
}

}  // namespace

FileSystem::FileSystem(const std::string& targetFolder, std::string programFolder)
    : targetFolder_(targetFolder), programFolder_(std::move(programFolder)) {}

fs::path FileSystem::ToNative(const std::string& path) {
#ifdef _WIN32
    return fs::path(path);
#else
    return fs::path(Replace(path, "\\", "/"));
#endif
}

bool FileSystem::MayChange(const std::string& path, bool creatingFolder) const {
    if (Trim(path).empty()) return false;
    // The system cuts a path at its first NUL byte, so the guard would judge
    // another path than the one written: such a path is never changed.
    if (Contains(path, std::string_view("\0", 1))) return false;
    return MayChangeNative(ToNative(path), creatingFolder);
}

bool FileSystem::MayChangeNative(const fs::path& path, bool creatingFolder) const {
    if (rootsFor_ != targetFolder_ || !rootsKnown_) {
        targetRoot_ = Components(Resolve(ToNative(targetFolder_)));
        programRoot_ = Components(Resolve(ToNative(programFolder_)));
        rootsFor_ = targetFolder_;
        rootsKnown_ = true;
    }
    const auto& target = targetRoot_;
    const auto& program = programRoot_;
    auto here = Components(Resolve(path));
    if (here.empty()) return false;
    bool hasTarget = !Trim(targetFolder_).empty();
    if (hasTarget && IsWithin(here, target)) return true;
    if (!Trim(programFolder_).empty() && IsWithin(here, program)) return true;
    // The folders on the way to the target folder may be created, nothing more.
    return creatingFolder && hasTarget && IsWithin(target, here);
}

bool FileSystem::CreateFolder(const std::string& path) {
    std::error_code ec;
    // An existing folder cannot be created again; answer before the guard's work.
    if (fs::exists(ToNative(path), ec)) return false;
    if (!MayChange(path, true)) return false;
    return fs::create_directory(ToNative(path), ec) && !ec;
}

bool FileSystem::FolderExists(const std::string& path) const {
    std::error_code ec;
    return fs::is_directory(ToNative(path), ec);
}

std::optional<std::uintmax_t> FileSystem::FileLength(const std::string& path) const {
    std::error_code ec;
    fs::path p = ToNative(path);
    if (!fs::is_regular_file(p, ec)) return std::nullopt;
    auto n = fs::file_size(p, ec);
    if (ec) return std::nullopt;
    return n;
}

bool FileSystem::AppendLine(const std::string& path, const std::string& text) {
    if (!MayChange(path)) return false;
    std::ofstream out(ToNative(path), std::ios::binary | std::ios::app);
    if (!out) return false;
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.write("\r\n", 2);
    return static_cast<bool>(out);
}

bool FileSystem::WriteWhole(const std::string& path, const std::string& bytes) {
    if (!MayChange(path)) return false;
    std::ofstream out(ToNative(path), std::ios::binary | std::ios::trunc);
    if (!out) return false;
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(out);
}

std::optional<std::string> FileSystem::ReadWhole(const std::string& path) const {
    std::error_code ec;
    fs::path p = ToNative(path);
    if (!fs::is_regular_file(p, ec)) return std::nullopt;
    std::ifstream in(p, std::ios::binary);
    if (!in) return std::nullopt;
    std::string data((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    return data;
}

std::optional<std::vector<std::string>> FileSystem::ReadLines(const std::string& path) const {
    auto data = ReadWhole(path);
    if (!data) return std::nullopt;
    std::vector<std::string> lines;
    std::string line;
    const std::string& d = *data;
    for (std::size_t i = 0; i < d.size(); ++i) {
        char c = d[i];
        if (c == '\r' || c == '\n') {
            lines.push_back(std::move(line));
            line.clear();
            if (c == '\r' && i + 1 < d.size() && d[i + 1] == '\n') ++i;
        } else {
            line += c;
        }
    }
    if (!line.empty()) lines.push_back(std::move(line));
    return lines;
}

bool FileSystem::DeleteFile(const std::string& path) {
    if (!MayChange(path)) return false;
    std::error_code ec;
    fs::path p = ToNative(path);
    if (fs::is_directory(p, ec)) return false;
    return fs::remove(p, ec) && !ec;
}

int FileSystem::DeleteMatching(const std::string& pattern) {
    fs::path native = ToNative(pattern);
    std::string mask = native.filename().string();
    auto folder =
        FindFolderAnyCase(native.parent_path().empty() ? fs::path(".") : native.parent_path());
    if (!folder) return 0;
    int deleted = 0;
    std::error_code ec;
    std::vector<fs::path> doomed;
    for (const auto& entry : fs::directory_iterator(*folder, ec)) {
        if (entry.is_regular_file(ec) && WildcardMatch(entry.path().filename().string(), mask))
            doomed.push_back(entry.path());
    }
    for (const auto& p : doomed) {
        if (!MayChangeNative(p, false)) continue;
        if (fs::remove(p, ec) && !ec) ++deleted;
    }
    return deleted;
}

}  // namespace vantorin
