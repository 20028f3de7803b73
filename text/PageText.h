// The visible text of an HTML page, as a browser's innerText of the body
// gives it: script, style and head content left out, block elements on lines
// of their own. Read with an HTML5 parser; used only for the search extract.
#pragma once

#include <cstddef>
#include <string>

namespace vantorin {

// Pages are read up to this many bytes; the rest adds nothing a search needs
// and would only cost memory.
inline constexpr std::size_t kPageTextMaxBytes = std::size_t{8} << 20;

std::string VisibleTextOfHtml(const std::string& html);

}  // namespace vantorin
