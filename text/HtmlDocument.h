// An HTML page parsed with the HTML5 parser, as the page text and the page
// links read it: bytes that are not UTF-8 are read in the single-byte code
// page, and the markup is bounded first (size, tags, nesting) so that a
// hostile or binary file cannot stall the program or exhaust its memory.
// Only text/ sees the parser's types.
#pragma once

#include <gumbo.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace vantorin {

// Bytes of a page past this are not read.
inline constexpr std::size_t kMaxPageBytes = 8u << 20;

class HtmlDocument {
public:
    explicit HtmlDocument(std::string_view bytes);
    ~HtmlDocument();
    HtmlDocument(const HtmlDocument&) = delete;
    HtmlDocument& operator=(const HtmlDocument&) = delete;

    // The html element, or null when the parser gave nothing.
    const GumboNode* Root() const;

private:
    std::string source_;  // the parser's nodes point into it
    GumboOptions options_;
    GumboOutput* output_ = nullptr;
};

// The blanks of HTML: space, tab, line feed, carriage return, form feed.
bool IsHtmlSpace(char c);
// UTF-8 back to the program's single-byte code page; what it cannot hold becomes "?".
std::string Utf8ToCodePage(std::string_view utf8);

}  // namespace vantorin
