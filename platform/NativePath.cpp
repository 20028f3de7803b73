#include "platform/NativePath.h"

#include "text/Strings.h"

namespace vantorin {

#ifdef _WIN32
std::string ToDisplayPath(std::string_view path) {
    return std::string(path);
}

std::string FromDisplayPath(std::string_view shown) {
    return std::string(shown);
}
#else
std::string ToDisplayPath(std::string_view path) {
    return Replace(path, "\\", "/");
}

std::string FromDisplayPath(std::string_view shown) {
    return Replace(shown, "/", "\\");
}
#endif

}  // namespace vantorin
