// The links of an HTML page that load or lead somewhere, as a browser finds
// them: href of a, area and link, src of img, script, frame and iframe, and
// the target of a meta refresh. Read with the HTML5 parser, so markup in
// comments, scripts and attribute values is no link, and entities are decoded.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vantorin {

// In document order, as UTF-8, blanks around each link removed; empty ones left out.
std::vector<std::string> LinksOfHtml(std::string_view html);

}  // namespace vantorin
