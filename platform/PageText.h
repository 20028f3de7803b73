// The visible text of a saved HTML file, as a browser's innerText of the body
// gives it: script, style and head content left out, block elements on lines
// of their own. Read with an HTML5 parser; used only for the search extract.
#pragma once

#include <functional>
#include <string>

namespace vantorin {

// Reads the file at a native path; "" when it cannot be read.
std::string VisiblePageText(const std::string& nativePath);
// The same over bytes already in memory.
std::string VisibleTextOfHtml(const std::string& html);

// The seam the mirror calls with a backslash path.
using PageTextReader = std::function<std::string(const std::string& path)>;

}  // namespace vantorin
