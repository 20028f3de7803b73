// The visible text of an HTML page, as a browser's innerText of the body
// gives it: script, style and head content left out, block elements on lines
// of their own. Read with an HTML5 parser; used only for the search extract.
#pragma once

#include <string>

namespace vantorin {

std::string VisibleTextOfHtml(const std::string& html);

}  // namespace vantorin
