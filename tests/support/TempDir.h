// A fresh folder under the system's temporary folder for one test, removed
// afterwards, with helpers to name paths inside it in the program's backslash form.
#pragma once

#include <set>
#include <string>

namespace vantorin::testing {

class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    // The folder in backslash form, ending in "\".
    const std::string& Backslashed() const { return backslashed_; }
    // The folder as a native path, without a trailing "/".
    const std::string& Native() const { return native_; }
    // Native path of a file below the folder, from a relative path with "/".
    std::string NativePath(const std::string& relative) const { return native_ + "/" + relative; }

private:
    std::string native_, backslashed_;
};

// Whole content of a native file; "" when missing.
std::string ReadNativeFile(const std::string& nativePath);
bool NativeExists(const std::string& nativePath);
void WriteNativeFile(const std::string& nativePath, const std::string& bytes);
// Every file and folder below `root` with its size, leaving out the tree below
// `excluded`: what a hostile page must never change.
std::set<std::string> ListTreeExcept(const std::string& root, const std::string& excluded);

}  // namespace vantorin::testing
