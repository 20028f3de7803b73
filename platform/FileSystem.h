// The file-system seam. Paths inside the program keep their backslash form;
// here they are mapped to native paths, and every write, folder creation and
// delete is refused (silently, like any failing step) unless it lies inside
// the current target folder or the program folder.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantorin {

// A write the system failed, with the system's own words for why.
struct WriteFailure {
    std::string path;    // native form, as the user knows it
    std::string reason;  // e.g. "No space left on device"
    bool operator==(const WriteFailure&) const = default;
};

// What went wrong with one file system's changes. Failing steps stay silent
// in the crawl, so this is the only trace of them; it keeps counts and the
// first few failures only, so a long crawl onto a full disk costs no memory.
struct WriteFaults {
    static constexpr std::size_t kKept = 5;
    std::int64_t filesFailed = 0;  // whole-file writes (WriteWhole)
    std::int64_t linesFailed = 0;  // appended lines (AppendLine): records, placeholders
    std::int64_t refused = 0;      // writes, folders and deletes the guard refused
    std::vector<WriteFailure> firstFiles, firstLines;
};

class FileSystem {
public:
    // `targetFolder` is read live on every check, so the guard always follows
    // the folder the crawl writes to. `programFolder` is in backslash form.
    FileSystem(const std::string& targetFolder, std::string programFolder);

    const std::string& ProgramFolder() const { return programFolder_; }

    // Backslash path -> native path (every "\" becomes "/" off Windows).
    static std::filesystem::path ToNative(const std::string& path);

    // Creates exactly one folder; false when it exists, its parent is missing or
    // the guard refuses it. Folders on the way to the target folder are allowed.
    bool CreateFolder(const std::string& path);
    bool FolderExists(const std::string& path) const;
    // Length of a regular file, or nothing when it cannot be read.
    std::optional<std::uintmax_t> FileLength(const std::string& path) const;
    // Appends `text` and CR LF, creating the file when missing.
    bool AppendLine(const std::string& path, const std::string& text);
    // Creates or truncates the file and writes `bytes` exactly. A failure is
    // counted in Faults() unless `countFailure` is false.
    bool WriteWhole(const std::string& path, const std::string& bytes, bool countFailure = true);
    // The whole file, or nothing when it cannot be read.
    std::optional<std::string> ReadWhole(const std::string& path) const;
    // The file's lines without their line ends (CR LF or LF), or nothing.
    std::optional<std::vector<std::string>> ReadLines(const std::string& path) const;
    bool DeleteFile(const std::string& path);
    // Deletes the files matching a pattern whose last component holds "*" or
    // "?" wildcards (e.g. folder\*.tmp). The folder is found whatever the case of
    // its real name, because the list of folders a crawl made is kept
    // lower-cased. Returns the number of files deleted.
    int DeleteMatching(const std::string& pattern);
    // The files below `folder` (at any depth) whose names end in `ending`.
    std::int64_t CountFilesEndingIn(const std::string& folder, std::string_view ending) const;

    // True when the guard lets the program change `path`.
    bool MayChange(const std::string& path, bool creatingFolder = false) const;

    const WriteFaults& Faults() const { return faults_; }

    // Called with the native path of every file WriteWhole wrote in full.
    std::function<void(const std::string& nativePath)> onWholeFileWritten;

private:
    bool MayChangeNative(const std::filesystem::path& path, bool creatingFolder) const;
    // MayChange, counting a refusal.
    bool Allowed(const std::string& path, bool creatingFolder = false);
    static void Note(std::int64_t& count, std::vector<WriteFailure>& first, const std::string& path,
                     std::string reason);

    WriteFaults faults_;
    std::string lastFailedFile_;

    const std::string& targetFolder_;
    std::string programFolder_;
    // The resolved roots, remembered for the target folder text they belong to.
    mutable std::string rootsFor_;
    mutable bool rootsKnown_ = false;
    mutable std::vector<std::string> targetRoot_, programRoot_;
};

}  // namespace vantorin
