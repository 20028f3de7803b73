#include "platform/FileSystem.h"

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <initializer_list>
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

std::FILE* OpenFile(const fs::path& p, bool append) {
#ifdef _WIN32
    return _wfopen(p.c_str(), append ? L"ab" : L"wb");
#else
    return std::fopen(p.c_str(), append ? "ab" : "wb");
#endif
}

std::string Reason(int error) {
    // A failing call that leaves errno unset still failed: say so plainly.
    return std::generic_category().message(error != 0 ? error : EIO);
}

// Writes the pieces and closes the file: the system's reason when any of it
// failed, nothing when all of it reached the file. A full disk may take the
// bytes into the stream's buffer and refuse them only at the flush, so the
// close is checked too.
std::optional<std::string> WriteAll(const fs::path& p, bool append,
                                    std::initializer_list<std::string_view> pieces) {
    errno = 0;
    std::FILE* file = OpenFile(p, append);
    if (!file) return Reason(errno);
    int error = 0;
    for (std::string_view piece : pieces) {
        if (std::fwrite(piece.data(), 1, piece.size(), file) != piece.size()) {
            error = errno != 0 ? errno : EIO;
            break;
        }
    }
    errno = 0;
    if (std::fclose(file) != 0 && error == 0) error = errno != 0 ? errno : EIO;
    if (error != 0) return Reason(error);
    return std::nullopt;
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

bool FileSystem::Allowed(const std::string& path, bool creatingFolder) {
    if (MayChange(path, creatingFolder)) return true;
    ++faults_.refused;
    return false;
}

void FileSystem::Note(std::int64_t& count, std::vector<WriteFailure>& first,
                      const std::string& path, std::string reason) {
    ++count;
    if (first.size() < WriteFaults::kKept)
        first.push_back({ToNative(path).string(), std::move(reason)});
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
    if (!Allowed(path, true)) return false;
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
    if (!Allowed(path)) return false;
    auto failed = WriteAll(ToNative(path), true, {text, "\r\n"});
    if (failed) Note(faults_.linesFailed, faults_.firstLines, path, std::move(*failed));
    return !failed;
}

bool FileSystem::WriteWhole(const std::string& path, const std::string& bytes, bool countFailure) {
    if (!Allowed(path)) return false;
    auto failed = WriteAll(ToNative(path), false, {bytes});
    // The same file failing again at once (the file types list is written at
    // the wizard's load and again at its start) is still one file.
    if (failed && countFailure && path != lastFailedFile_) {
        Note(faults_.filesFailed, faults_.firstFiles, path, std::move(*failed));
        lastFailedFile_ = path;
    }
    if (!failed && onWholeFileWritten) onWholeFileWritten(ToNative(path).string());
    return !failed;
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
    if (!Allowed(path)) return false;
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
        if (!MayChangeNative(p, false)) {
            ++faults_.refused;
            continue;
        }
        if (fs::remove(p, ec) && !ec) ++deleted;
    }
    return deleted;
}

std::int64_t FileSystem::CountFilesEndingIn(const std::string& folder,
                                            std::string_view ending) const {
    std::int64_t count = 0;
    std::error_code ec;
    // Unreadable folders are passed over, and links are not followed.
    fs::recursive_directory_iterator it(ToNative(folder),
                                        fs::directory_options::skip_permission_denied, ec);
    for (; !ec && it != fs::recursive_directory_iterator(); it.increment(ec)) {
        const std::string name = it->path().filename().string();
        if (it->is_regular_file(ec) && name.size() >= ending.size() &&
            std::string_view(name).substr(name.size() - ending.size()) == ending)
            ++count;
    }
    return count;
}

}  // namespace vantorin
