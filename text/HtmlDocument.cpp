#include "text/HtmlDocument.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>

#include "text/Strings.h"

namespace vantorin {

namespace {

// Bounds that keep a hostile or binary file from stalling the crawl or
// exhausting memory: the parser needs a few hundred bytes per element and per
// attribute, and its scope checks walk the whole stack of open elements, so
// the number of tags and attributes and the depth tags can nest to are
// capped. Ordinary pages stay far below all three.
constexpr std::size_t kMaxMarkupItems = 150000;
constexpr int kMaxNesting = 512;

// Windows-1252 bytes 0x80-0x9F; the five undefined ones map to themselves.
constexpr char16_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void AppendUtf8(std::string& out, std::uint32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

// Length of the well-formed UTF-8 sequence at `i`, or 0.
std::size_t Utf8SequenceLength(std::string_view s, std::size_t i) {
    auto at = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
    unsigned char c = at(i);
    std::size_t n = c < 0x80           ? 1
                    : (c >> 5) == 0x6  ? 2
                    : (c >> 4) == 0xE  ? 3
                    : (c >> 3) == 0x1E ? 4
                                       : 0;
    if (n == 0 || i + n > s.size()) return 0;
    for (std::size_t k = 1; k < n; ++k)
        if ((at(i + k) & 0xC0) != 0x80) return 0;
    if (n == 2 && c < 0xC2) return 0;
    return n;
}

bool IsUtf8(std::string_view s) {
    for (std::size_t i = 0; i < s.size();) {
        std::size_t n = Utf8SequenceLength(s, i);
        if (n == 0) return false;
        i += n;
    }
    return true;
}

// The parser reads UTF-8. A page that is not valid UTF-8 is read in the
// single-byte code page, as a browser without a declared charset does.
std::string ToUtf8(std::string_view bytes) {
    if (IsUtf8(bytes)) return std::string(bytes);
    std::string out;
    out.reserve(bytes.size() + bytes.size() / 4);
    for (char ch : bytes) {
        auto c = static_cast<unsigned char>(ch);
        if (c < 0x80)
            out += ch;
        else if (c < 0xA0)
            AppendUtf8(out, kCp1252High[c - 0x80]);
        else
            AppendUtf8(out, c);
    }
    return out;
}

bool IsAsciiAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool OneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Elements that never stay open inside themselves: void ones, and those a
// new sibling closes (p, li, cells, rows...). They cannot build depth.
bool CannotNest(std::string_view name) {
    return OneOf(name, {"area",     "base",  "basefont", "bgsound", "br",       "col",     "embed",
                        "frame",    "hr",    "image",    "img",     "input",    "keygen",  "link",
                        "menuitem", "meta",  "param",    "source",  "track",    "wbr",     "p",
                        "li",       "dd",    "dt",       "option",  "optgroup", "td",      "th",
                        "tr",       "tbody", "thead",    "tfoot",   "colgroup", "caption", "rb",
                        "rt",       "rp",    "rtc",      "html",    "head",     "body",    "a",
                        "button",   "form",  "h1",       "h2",      "h3",       "h4",      "h5",
                        "h6",       "nobr"});
}

// Elements whose content is raw text up to their own end tag.
bool IsRawText(std::string_view name) {
    return OneOf(name,
                 {"script", "style", "textarea", "title", "xmp", "iframe", "noembed", "noframes"});
}

// A light pass over the markup before parsing: the text is cut before the
// tag that brings tags and attributes past kMaxMarkupItems, and start tags that would nest deeper
// than kMaxNesting are left out (their content stays, as a browser flattens an over-deep tree).
// Comments and raw text are stepped over as the parser does.
void BoundMarkup(std::string& html) {
    std::string kept;        // the text with the left-out tags removed
    std::size_t copied = 0;  // how much of `html` is already in `kept`
    auto finish = [&](std::size_t upTo) {
        if (copied == 0) {
            html.resize(upTo);
            return;
        }
        kept.append(html, copied, upTo - copied);
        html.swap(kept);
    };
    std::size_t items = 0;  // tags and attributes
    int depth = 0;
    int foreign = 0;  // inside svg or math, where "/>" really closes a tag
    std::size_t i = 0;
    const std::size_t n = html.size();
    while ((i = html.find('<', i)) != std::string::npos) {
        std::size_t start = i;
        if (html.compare(i, 4, "<!--") == 0) {
            std::size_t end = html.find("-->", i + 4);
            i = end == std::string::npos ? n : end + 3;
            continue;
        }
        bool closing = i + 1 < n && html[i + 1] == '/';
        std::size_t nameAt = i + (closing ? 2 : 1);
        if (nameAt >= n || !IsAsciiAlpha(html[nameAt])) {
            if (nameAt < n && (html[nameAt] == '!' || html[nameAt] == '?' || closing)) {
                std::size_t end = html.find('>', nameAt);
                i = end == std::string::npos ? n : end + 1;
            } else {
                i = nameAt;
            }
            continue;
        }
        ++items;
        std::size_t k = nameAt;
        while (k < n && !IsHtmlSpace(html[k]) && html[k] != '/' && html[k] != '>') ++k;
        std::string name = LCase(std::string_view(html).substr(nameAt, k - nameAt));
        // Attributes: a quoted value may hold ">".
        char quote = 0;
        for (; k < n; ++k) {
            char c = html[k];
            if (quote) {
                if (c == quote) quote = 0;
            } else if ((c == '"' || c == '\'') && html[k - 1] == '=') {
                quote = c;
            } else if (c == '>') {
                break;
            } else if (IsHtmlSpace(html[k - 1]) && !IsHtmlSpace(c) && c != '/' && c != '=') {
                ++items;
            }
        }
        if (items > kMaxMarkupItems) return finish(start);
        std::size_t end = std::min(k, n);  // position of ">" (or the end)
        bool selfClosing = end > start && html[end - 1] == '/';
        i = end < n ? end + 1 : n;
        bool isForeignRoot = name == "svg" || name == "math";
        if (closing) {
            if (isForeignRoot && foreign > 0) --foreign;
            if (!CannotNest(name) && depth > 0) --depth;
            continue;
        }
        if (name == "plaintext") return finish(n);  // everything after it is text
        if (IsRawText(name)) {
            std::string close = "</" + name;
            std::size_t at = i;
            while (at < n) {
                at = html.find("</", at);
                if (at == std::string::npos) break;
                if (LCase(std::string_view(html).substr(at, close.size())) == close) break;
                at += 2;
            }
            i = at == std::string::npos ? n : at;
            continue;
        }
        if (CannotNest(name) || (selfClosing && foreign > 0)) continue;
        if (depth >= kMaxNesting) {
            kept.append(html, copied, start - copied);
            copied = i;
            continue;
        }
        ++depth;
        if (isForeignRoot) ++foreign;
    }
    finish(n);
}

}  // namespace

bool IsHtmlSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
}

std::string Utf8ToCodePage(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        std::size_t n = Utf8SequenceLength(utf8, i);
        if (n == 0) {
            out += '?';
            ++i;
            continue;
        }
        auto c = static_cast<unsigned char>(utf8[i]);
        std::uint32_t cp = n == 1 ? c : c & (0x7F >> n);
        for (std::size_t k = 1; k < n; ++k)
            cp = (cp << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        i += n;
        if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) {
            out += static_cast<char>(cp);
            continue;
        }
        const auto* hit = std::find(std::begin(kCp1252High), std::end(kCp1252High), cp);
        out += hit == std::end(kCp1252High)
                   ? '?'
                   : static_cast<char>(0x80 + (hit - std::begin(kCp1252High)));
    }
    return out;
}

HtmlDocument::HtmlDocument(std::string_view bytes)
    : source_(ToUtf8(bytes.substr(0, kMaxPageBytes))), options_(kGumboDefaultOptions) {
    BoundMarkup(source_);
    options_.max_errors = 0;  // the error list is never read; do not grow it
    output_ = gumbo_parse_with_options(&options_, source_.data(), source_.size());
}

HtmlDocument::~HtmlDocument() {
    if (output_) gumbo_destroy_output(&options_, output_);
}

const GumboNode* HtmlDocument::Root() const {
    return output_ ? output_->root : nullptr;
}

}  // namespace vantorin
