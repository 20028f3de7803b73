// The file-system seam. Paths inside the program keep their backslash form;
// here they are mapped to native paths, and every write, folder creation and
// delete is refused (silently, like any failing step) unless it lies inside
// the current target folder or the program folder.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vantorin {

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
    // Creates or truncates the file and writes `bytes` exactly.
    bool WriteWhole(const std::string& path, const std::string& bytes);
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

    // True when the guard lets the program change `path`.
    bool MayChange(const std::string& path, bool creatingFolder = false) const;

private:
    bool MayChangeNative(const std::filesystem::path& path, bool creatingFolder) const;

    const std::string& targetFolder_;
    std::string programFolder_;
    // The resolved roots, remembered for the target folder text they belong to.
    mutable std::string rootsFor_;
    mutable bool rootsKnown_ = false;
    mutable std::vector<std::string> targetRoot_, programRoot_;
};

}  // namespace vantorin
