#include "text/PageText.h"

#include <gumbo.h>

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

#include "text/Strings.h"

namespace vantorin {

namespace {

// Bounds that keep a hostile or binary file from stalling the crawl or
// exhausting memory: the parser needs a few hundred bytes per element and per
// attribute, and its scope checks walk the whole stack of open elements, so
// the number of tags and attributes and the depth tags can nest to are
// capped (the input's length in kPageTextMaxBytes). Ordinary pages stay far
// below all three.
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

// Back to the program's single-byte code page; what it cannot hold becomes "?".
std::string ToCodePage(std::string_view utf8) {
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

bool IsAsciiAlpha(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool IsTagSpace(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f';
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
        while (k < n && !IsTagSpace(html[k]) && html[k] != '/' && html[k] != '>') ++k;
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
            } else if (IsTagSpace(html[k - 1]) && !IsTagSpace(c) && c != '/' && c != '=') {
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

// Builds the text as innerText lays it out: runs of white space fold to one
// blank, blanks at line starts and ends go, block boundaries ask for line
// breaks that are only written before further text.
class TextCollector {
public:
    void Text(std::string_view s, bool preformatted) {
        for (char c : s) {
            if (preformatted) {
                Flush();
                out_ += c;
            } else if (IsTagSpace(c)) {
                pendingSpace_ = true;
            } else {
                Flush();
                out_ += c;
            }
        }
    }
    void Break(int count) {
        if (count == 0) return;
        pendingBreaks_ = std::max(pendingBreaks_, count);
        pendingSpace_ = false;
    }
    // A line break or tab that is part of the text itself (br, cell separator).
    void Literal(char c) {
        pendingSpace_ = false;
        Flush();
        out_ += c;
    }
    std::string Take() { return std::move(out_); }

private:
    void Flush() {
        if (!out_.empty()) {
            if (pendingBreaks_ > 0)
                out_.append(static_cast<std::size_t>(pendingBreaks_), '\n');
            else if (pendingSpace_ && out_.back() != '\n' && out_.back() != '\t')
                out_ += ' ';
        }
        pendingBreaks_ = 0;
        pendingSpace_ = false;
    }

    std::string out_;
    int pendingBreaks_ = 0;
    bool pendingSpace_ = false;
};

bool IsHidden(const GumboElement& e) {
    switch (e.tag) {
        case GUMBO_TAG_HEAD:
        case GUMBO_TAG_TITLE:
        case GUMBO_TAG_SCRIPT:
        case GUMBO_TAG_STYLE:
        case GUMBO_TAG_NOSCRIPT:  // a browser runs scripts, so it hides these
        case GUMBO_TAG_TEMPLATE:
        case GUMBO_TAG_TEXTAREA:
        case GUMBO_TAG_IFRAME:
        case GUMBO_TAG_NOEMBED:
        case GUMBO_TAG_NOFRAMES:
        case GUMBO_TAG_DATALIST:
        case GUMBO_TAG_RP:
            return true;
        default:
            return gumbo_get_attribute(&e.attributes, "hidden") != nullptr;
    }
}

bool IsPreformatted(GumboTag tag) {
    return tag == GUMBO_TAG_PRE || tag == GUMBO_TAG_LISTING || tag == GUMBO_TAG_PLAINTEXT ||
           tag == GUMBO_TAG_XMP;
}

// Line breaks asked for before and after the element: 2 for p, 1 for blocks.
int BlockBreaks(GumboTag tag) {
    switch (tag) {
        case GUMBO_TAG_P:
            return 2;
        case GUMBO_TAG_ADDRESS:
        case GUMBO_TAG_ARTICLE:
        case GUMBO_TAG_ASIDE:
        case GUMBO_TAG_BLOCKQUOTE:
        case GUMBO_TAG_BODY:
        case GUMBO_TAG_CAPTION:
        case GUMBO_TAG_CENTER:
        case GUMBO_TAG_DD:
        case GUMBO_TAG_DETAILS:
        case GUMBO_TAG_DIR:
        case GUMBO_TAG_DIV:
        case GUMBO_TAG_DL:
        case GUMBO_TAG_DT:
        case GUMBO_TAG_FIELDSET:
        case GUMBO_TAG_FIGCAPTION:
        case GUMBO_TAG_FIGURE:
        case GUMBO_TAG_FOOTER:
        case GUMBO_TAG_FORM:
        case GUMBO_TAG_FRAMESET:
        case GUMBO_TAG_H1:
        case GUMBO_TAG_H2:
        case GUMBO_TAG_H3:
        case GUMBO_TAG_H4:
        case GUMBO_TAG_H5:
        case GUMBO_TAG_H6:
        case GUMBO_TAG_HEADER:
        case GUMBO_TAG_HGROUP:
        case GUMBO_TAG_HR:
        case GUMBO_TAG_LEGEND:
        case GUMBO_TAG_LI:
        case GUMBO_TAG_LISTING:
        case GUMBO_TAG_MAIN:
        case GUMBO_TAG_MENU:
        case GUMBO_TAG_NAV:
        case GUMBO_TAG_OL:
        case GUMBO_TAG_OPTGROUP:
        case GUMBO_TAG_OPTION:
        case GUMBO_TAG_PLAINTEXT:
        case GUMBO_TAG_PRE:
        case GUMBO_TAG_SECTION:
        case GUMBO_TAG_SUMMARY:
        case GUMBO_TAG_TABLE:
        case GUMBO_TAG_TR:
        case GUMBO_TAG_UL:
        case GUMBO_TAG_XMP:
            return 1;
        default:
            return 0;
    }
}

bool IsCell(const GumboNode* node) {
    return node->type == GUMBO_NODE_ELEMENT &&
           (node->v.element.tag == GUMBO_TAG_TD || node->v.element.tag == GUMBO_TAG_TH);
}

// True when an earlier sibling of the cell is a cell of the same row.
bool HasCellBefore(const GumboNode* cell) {
    const GumboNode* parent = cell->parent;
    if (!parent || parent->type != GUMBO_NODE_ELEMENT) return false;
    const GumboVector& siblings = parent->v.element.children;
    for (unsigned k = 0; k < cell->index_within_parent && k < siblings.length; ++k)
        if (IsCell(static_cast<const GumboNode*>(siblings.data[k]))) return true;
    return false;
}

const GumboNode* FindBody(const GumboNode* root) {
    if (!root || root->type != GUMBO_NODE_ELEMENT) return nullptr;
    const GumboVector& children = root->v.element.children;
    for (unsigned k = 0; k < children.length; ++k) {
        const auto* child = static_cast<const GumboNode*>(children.data[k]);
        if (child->type == GUMBO_NODE_ELEMENT && child->v.element.tag == GUMBO_TAG_BODY)
            return child;
    }
    return nullptr;
}

// Walks the body without recursion, so no nesting can exhaust the stack.
std::string CollectText(const GumboNode* body) {
    struct Frame {
        const GumboNode* node;
        unsigned next;
    };
    TextCollector text;
    std::vector<Frame> stack{{body, 0}};
    int preformatted = IsPreformatted(body->v.element.tag) ? 1 : 0;
    while (!stack.empty()) {
        Frame& top = stack.back();
        const GumboElement& e = top.node->v.element;
        if (top.next >= e.children.length) {
            text.Break(BlockBreaks(e.tag));
            if (IsPreformatted(e.tag)) --preformatted;
            stack.pop_back();
            continue;
        }
        const auto* child = static_cast<const GumboNode*>(e.children.data[top.next++]);
        switch (child->type) {
            case GUMBO_NODE_TEXT:
            case GUMBO_NODE_WHITESPACE:
            case GUMBO_NODE_CDATA:
                text.Text(child->v.text.text, preformatted > 0);
                break;
            case GUMBO_NODE_ELEMENT: {
                const GumboElement& ce = child->v.element;
                if (IsHidden(ce)) break;
                if (ce.tag == GUMBO_TAG_BR) {
                    text.Literal('\n');
                    break;
                }
                if (IsCell(child) && HasCellBefore(child)) text.Literal('\t');
                text.Break(BlockBreaks(ce.tag));
                if (IsPreformatted(ce.tag)) ++preformatted;
                stack.push_back({child, 0});
                break;
            }
            default:  // comments, template contents, the document
                break;
        }
    }
    return text.Take();
}

}  // namespace

std::string VisibleTextOfHtml(const std::string& html) {
    std::string source = ToUtf8(std::string_view(html).substr(0, kPageTextMaxBytes));
    BoundMarkup(source);
    GumboOptions options = kGumboDefaultOptions;
    options.max_errors = 0;  // the error list is never read; do not grow it
    GumboOutput* output = gumbo_parse_with_options(&options, source.data(), source.size());
    if (!output) return {};
    const GumboNode* body = FindBody(output->root);
    std::string text = body ? CollectText(body) : std::string();
    gumbo_destroy_output(&options, output);
    return ToCodePage(text);
}

}  // namespace vantorin
