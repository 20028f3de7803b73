#include "platform/PageTextFile.h"

#include <algorithm>
#include <fstream>

#include "platform/FileSystem.h"
#include "text/PageText.h"

namespace vantorin {

std::string VisiblePageText(const std::string& path) {
    std::ifstream in(FileSystem::ToNative(path), std::ios::binary | std::ios::ate);
    if (!in) return {};
    const auto length = static_cast<std::streamoff>(in.tellg());
    if (length <= 0) return {};
    in.seekg(0);
    std::string bytes(std::min(static_cast<std::size_t>(length), kPageTextMaxBytes), '\0');
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    return VisibleTextOfHtml(bytes);
}

}  // namespace vantorin
