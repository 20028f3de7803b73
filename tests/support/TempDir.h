// A fresh folder under the system's temporary folder for one test, removed
// afterwards, with helpers to name paths inside it in the program's backslash form.
#pragma once

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
    std::string NativePath(const std::string& relative) const;

private:
    std::string native_;
    std::string backslashed_;
};

// Whole content of a native file; "" when missing.
std::string ReadNativeFile(const std::string& nativePath);
bool NativeExists(const std::string& nativePath);
void WriteNativeFile(const std::string& nativePath, const std::string& bytes);

}  // namespace vantorin::testing
