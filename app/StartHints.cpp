#include "app/StartHints.h"

#include "text/CountText.h"
#include "text/Scheme.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// "/x", "\x", "file:..." or a drive ("C:", "C:\x", "C:/x"); "a:80" is a port.
bool IsLocalPath(const std::string& text) {
    if (Left(text, 1) == "/" || Left(text, 1) == "\\" || Left(LCase(text), 5) == "file:")
        return true;
    return text.size() >= 2 && IsLetter(text[0]) && text[1] == ':' &&
           (text.size() == 2 || text[2] == '\\' || text[2] == '/');
}

}  // namespace

std::vector<std::string> AddressHints(std::string_view address) {
    const std::string text = Trim(address);
    if (text.empty()) return {"Hint: the address is empty, so no site is named."};
    if (IsLocalPath(text))
        return {
            "Hint: the address is a local path; this program downloads from web servers "
            "(plain HTTP on port 80), not from files."};
    if (Left(LCase(text), 8) == "https://")
        return {
            "Hint: the address starts with \"https://\"; this program speaks plain HTTP on "
            "port 80 only, and takes \"https:\" as the host name."};
    std::string host = DropHttp(text);
    host = host.substr(0, host.find_first_of("/\\"));
    if (const std::size_t colon = host.find(':'); colon != std::string::npos)
        return {"Hint: the address names a port (\"" + host.substr(colon) +
                "\"); the port is always 80, and \"" + host + "\" is taken as the host name."};
    return {};
}

std::string PlaceholderHint(std::int64_t placeholders) {
    if (placeholders <= 0) return {};
    // Whether the run that left them finished is not known: a finished crawl
    // keeps the placeholders of folders it did not make.
    return "Hint: the folder holds " + CountOf(placeholders, "placeholder", "placeholders") +
           " (\".tmp\") from an earlier run; their pages count as already queued and will be "
           "skipped. Choose a new folder to get them.";
}

}  // namespace vantorin
