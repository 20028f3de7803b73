// Counts as the window shows them: grouped in thousands, and byte sizes as
// the Windows size formatter writes them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace vantorin {

// Lower-cased, trimmed, and grouped by commas in threes from the right.
std::string FormatThousands(std::string_view s);

// "1 file", "0 files", "1,234 files": the count grouped, then the noun.
std::string CountOf(std::int64_t n, std::string_view one, std::string_view many);

// A byte count as the short size text of the Windows size formatter:
// "532 bytes", "1.95 KB", "120 KB", "1.17 MB". Three significant digits,
// truncated, never rounded; the count is taken as unsigned 32-bit, as the
// formatter's argument is.
std::string FormatByteSize(std::int32_t value);

}  // namespace vantorin
