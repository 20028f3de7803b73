// A byte count as the short size text of the Windows size formatter:
// "532 bytes", "1.95 KB", "120 KB", "1.17 MB". Three significant digits,
// truncated, never rounded; the count is taken as unsigned 32-bit, as the
// formatter's argument is.
#pragma once

#include <cstdint>
#include <string>

namespace vantorin {

std::string FormatByteSize(std::int32_t value);

}  // namespace vantorin
