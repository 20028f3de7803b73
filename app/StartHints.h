// The command line's hints at start, one line each: an address that will not
// do what its writer likely means, and placeholders an earlier run left in
// the target folder. Hints only: the crawl runs as the window
// would run it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vantorin {

std::vector<std::string> AddressHints(std::string_view address);

// "" when there are none.
std::string PlaceholderHint(std::int64_t placeholders);

}  // namespace vantorin
