// The rules of one HTTP/1.0 exchange, as plain functions: where an address is
// split into host and path, the request text, the expected size read from a
// chunk, and the folder address a page's links are resolved against.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vantorin {

struct HostAndPath {
    std::string host;  // before the first "/"
    std::string path;  // from it, at most 999 characters; "/" when there is none
};

// The host and path asked for. A path without a "." is taken for a folder and
// gets a "/" ("/docs" is asked as "/docs/"; a bare host's "/" becomes "//",
// which the request collapses again).
HostAndPath SplitAddress(std::string_view address);

// "GET " P " HTTP/1.0", "Host: " H, "Referrer: " H, the fixed agent line and
// the empty line, each ending in CR LF. H is the host with every "/" removed,
// trimmed; P the path with every "//" replaced by "/". The header is spelled
// "Referrer" and names the host fetched from, not the page that linked here:
// servers see every request exactly so.
std::string BuildRequestText(const std::string& host, const std::string& path);

// A request that would climb above the server's root is never sent.
bool ClimbsAboveRoot(const std::string& request);

// Whether this chunk itself holds "Content-Length:" (a header split across
// two chunks is missed), and the size read: the 12 characters from the 16th
// after its start, trimmed, cut before the first CR LF, as a whole number.
// Without a CR LF in that window the value reads as 0; a value beyond 32 bits
// gives no size, so the one read before stays.
struct SizeHeader {
    bool present = false;
    std::optional<std::int32_t> size;
};
SizeHeader ExpectedSizeIn(std::string_view chunk);

// The page's folder address: the address cut just after its last "/"; one
// ending in "/" stays whole.
std::string FolderOf(const std::string& address);

// A 32-bit counter raised by `amount`; an add that would pass its largest
// value is skipped, as any failing step is.
void AddSkippingOverflow(std::int32_t& counter, std::size_t amount);

}  // namespace vantorin
