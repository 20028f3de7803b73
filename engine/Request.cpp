#include "engine/Request.h"

#include <limits>

#include "text/Strings.h"

namespace vantorin {

HostAndPath SplitAddress(std::string_view address) {
    const std::size_t slash = InStr(address, "/");
    // Longer paths are cut: 999 characters is the most a request asks for.
    HostAndPath split = slash > 0 ? HostAndPath{Left(address, static_cast<long long>(slash) - 1),
                                                Mid(address, static_cast<long long>(slash), 999)}
                                  : HostAndPath{std::string(address), std::string(1, '/')};
    if (!Contains(split.path, ".")) split.path.push_back('/');
    return split;
}

std::string BuildRequestText(const std::string& host, const std::string& path) {
    const std::string h = Trim(Replace(host, "/", ""));
    const std::string p = Replace(path, "//", "/");
    return "GET " + p + " HTTP/1.0\r\n" + "Host: " + h + "\r\n" + "Referrer: " + h + "\r\n" +
           "User-Agent: Internet Explorer 6.01\r\n" + "\r\n";
}

bool ClimbsAboveRoot(const std::string& request) {
    return Contains(request, "GET /..") || Contains(request, "GET \\..");
}

SizeHeader ExpectedSizeIn(std::string_view chunk) {
    const std::size_t at = InStr(chunk, "Content-Length:");
    if (at == 0) return {};
    const std::string window = Trim(Mid(chunk, static_cast<long long>(at) + 16, 12));
    const std::size_t crlf = InStr(window, "\r\n");
    const std::string value =
        crlf == 0
            ? std::string()
            : Replace(Replace(Left(window, static_cast<long long>(crlf) - 1), "\r", ""), "\n", "");
    const long long length = RoundHalfEven(Val(value));
    if (length < std::numeric_limits<std::int32_t>::min() ||
        length > std::numeric_limits<std::int32_t>::max())
        return {true, std::nullopt};
    return {true, static_cast<std::int32_t>(length)};
}

void AddSkippingOverflow(std::int32_t& counter, std::size_t amount) {
    const long long sum = static_cast<long long>(counter) + static_cast<long long>(amount);
    if (sum <= std::numeric_limits<std::int32_t>::max()) counter = static_cast<std::int32_t>(sum);
}

std::string FolderOf(const std::string& address) {
    std::string reversed = ReverseText(address);
    if (!StartsWith(reversed, "/"))
        reversed = Mid(reversed, static_cast<long long>(InStr(reversed, "/")));
    return ReverseText(reversed);
}

}  // namespace vantorin
