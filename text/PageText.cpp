#include "text/PageText.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "text/HtmlDocument.h"

namespace vantorin {

namespace {

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
            } else if (IsHtmlSpace(c)) {
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
    const HtmlDocument page(html);
    const GumboNode* body = FindBody(page.Root());
    return body ? Utf8ToCodePage(CollectText(body)) : std::string();
}

}  // namespace vantorin
