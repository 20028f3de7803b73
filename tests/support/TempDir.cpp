#include "tests/support/TempDir.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace vantorin::testing {

namespace fs = std::filesystem;

TempDir::TempDir() : native_((fs::temp_directory_path() / "vantorin-test-XXXXXX").string()) {
    if (!mkdtemp(native_.data())) throw std::runtime_error("mkdtemp failed");
    backslashed_ = native_ + '/';
    std::ranges::replace(backslashed_, '/', '\\');
}

TempDir::~TempDir() {
    std::error_code ec;
    fs::permissions(native_, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(native_, ec);
}

std::string ReadNativeFile(const std::string& nativePath) {
    std::ifstream in(nativePath, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

bool NativeExists(const std::string& nativePath) {
    std::error_code ec;
    return fs::exists(nativePath, ec);
}

void WriteNativeFile(const std::string& nativePath, const std::string& bytes) {
    fs::create_directories(fs::path(nativePath).parent_path());
    std::ofstream(nativePath, std::ios::binary) << bytes;
}

std::set<std::string> ListTreeExcept(const std::string& root, const std::string& excluded) {
    std::set<std::string> seen;
    std::error_code ec;
    for (auto it = fs::recursive_directory_iterator(root, ec); it != fs::end(it);
         it.increment(ec)) {
        if (it->path() == excluded)
            it.disable_recursion_pending();
        else
            seen.insert(it->path().string() + " " +
                        std::to_string(it->is_regular_file(ec) ? it->file_size(ec) : 0));
    }
    return seen;
}

}  // namespace vantorin::testing
