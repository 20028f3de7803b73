// The visible text of a saved page, read from the disk.
#pragma once

#include <functional>
#include <string>

namespace vantorin {

// Reads the file at a backslash path; "" when it cannot be read.
std::string VisiblePageText(const std::string& path);

// How the mirror reads a saved page's text (a test hands in its own).
using PageTextReader = std::function<std::string(const std::string& path)>;

}  // namespace vantorin
