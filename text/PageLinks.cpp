#include "text/PageLinks.h"

#include "text/HtmlDocument.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

std::string_view TrimHtmlSpace(std::string_view s) {
    while (!s.empty() && IsHtmlSpace(s.front())) s.remove_prefix(1);
    while (!s.empty() && IsHtmlSpace(s.back())) s.remove_suffix(1);
    return s;
}

// The attribute that holds the element's link, or null for other elements.
const char* LinkAttribute(GumboTag tag) {
    switch (tag) {
        case GUMBO_TAG_A:
        case GUMBO_TAG_AREA:
        case GUMBO_TAG_LINK:
            return "href";
        case GUMBO_TAG_IMG:
        case GUMBO_TAG_SCRIPT:
        case GUMBO_TAG_FRAME:
        case GUMBO_TAG_IFRAME:
            return "src";
        default:
            return nullptr;
    }
}

// The address in a refresh's content, "5; url='next.html'": the delay, a ";"
// or ",", an optional "url=", and the address, its quotes removed.
std::string_view RefreshTarget(std::string_view content) {
    std::size_t i = 0;
    auto skipSpace = [&] {
        while (i < content.size() && IsHtmlSpace(content[i])) ++i;
    };
    skipSpace();
    const std::size_t delay = i;
    while (i < content.size() && ((content[i] >= '0' && content[i] <= '9') || content[i] == '.'))
        ++i;
    if (i == delay) return "";  // no delay: no refresh
    skipSpace();
    if (i < content.size() && (content[i] == ';' || content[i] == ',')) ++i;
    skipSpace();
    if (LCase(content.substr(i, 3)) == "url") {
        std::size_t k = i + 3;
        while (k < content.size() && IsHtmlSpace(content[k])) ++k;
        if (k < content.size() && content[k] == '=') {
            i = k + 1;
            skipSpace();
        }
    }
    std::string_view target = content.substr(i);
    if (!target.empty() && (target.front() == '"' || target.front() == '\'')) {
        const std::size_t close = target.find(target.front(), 1);
        target = target.substr(1, close == std::string_view::npos ? close : close - 1);
    }
    return target;
}

std::string_view LinkOf(const GumboElement& e) {
    if (const char* name = LinkAttribute(e.tag)) {
        const GumboAttribute* a = gumbo_get_attribute(&e.attributes, name);
        return a ? a->value : "";
    }
    if (e.tag != GUMBO_TAG_META) return "";
    const GumboAttribute* equiv = gumbo_get_attribute(&e.attributes, "http-equiv");
    const GumboAttribute* content = gumbo_get_attribute(&e.attributes, "content");
    if (!equiv || !content || LCase(TrimHtmlSpace(equiv->value)) != "refresh") return "";
    return RefreshTarget(content->value);
}

}  // namespace

std::vector<std::string> LinksOfHtml(std::string_view html) {
    std::vector<std::string> links;
    const HtmlDocument page(html);
    if (!page.Root()) return links;
    // Without recursion, so no nesting can exhaust the stack.
    std::vector<const GumboNode*> pending{page.Root()};
    while (!pending.empty()) {
        const GumboElement& e = pending.back()->v.element;
        pending.pop_back();
        if (const std::string_view link = TrimHtmlSpace(LinkOf(e)); !link.empty())
            links.emplace_back(link);
        // Children last to first, so they come off the stack in document order.
        for (unsigned k = e.children.length; k-- > 0;) {
            const auto* child = static_cast<const GumboNode*>(e.children.data[k]);
            if (child->type == GUMBO_NODE_ELEMENT) pending.push_back(child);
        }
    }
    return links;
}

}  // namespace vantorin
