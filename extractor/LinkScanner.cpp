#include "extractor/LinkScanner.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "extractor/AddressRules.h"
#include "extractor/Admission.h"
#include "extractor/LinkRewrite.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

// The longest link that can be found; a longer one is cut.
constexpr long long kWindow = 300;
// "href=" and the first five characters of its value: the next search starts
// inside this link's value, so an "href" beginning there is never seen.
constexpr std::size_t kAdvance = 10;

// Secure pages, chat, file transfer and mail are never fetched; the test is on
// the whole link, so any link holding "https" or "@" goes too.
constexpr std::array<std::string_view, 4> kSkippedSchemes = {"https", "irc:", "ftp:", "@"};

// The link whose "href" starts at the 0-based `p`, made absolute, or nothing
// when it is a link inside the page or of a skipped scheme.
std::optional<std::string> LinkAt(std::string_view text, std::size_t p, const std::string& base) {
    std::string link = Trim(Mid(text, static_cast<long long>(p) + 6, kWindow));
    if (!link.empty() && link.front() == '\'') link.erase(0, 1);
    if (!link.empty() && link.front() == '#') return std::nullopt;
    link = Trim(CutLinkAtDelimiter(link));
    ReplaceIn(link, "\r\n", "");
    for (std::string_view scheme : kSkippedSchemes)
        if (Contains(link, scheme)) return std::nullopt;

    ReplaceIn(link, "\\", "/");
    // A root-relative link resolves against the page's folder, not the site's
    // root: the base goes in front and the slash repairs close the gap.
    if (Left(link, 7) != "http://") link = base + link;
    ReplaceIn(link, "m//", "m/");
    ReplaceIn(link, "t//", "t/");
    ReplaceIn(link, "g//", "g/");
    link = CollapseSlashes(link);
    ReplaceIn(link, "http://http://", "http://");
    return link;
}

}  // namespace

Task<> ExtractLinks(std::string& text, std::string base, Admission to) {
    EventLoop& loop = to.mirror.loop;
    if (base.empty() || base.back() != '/') base += '/';
    text = RewriteForScan(text);

    // The walk keeps an index instead of cutting the text at every step; `rest`
    // is where the text that the cutting would leave begins.
    std::size_t rest = 0;
    for (std::size_t p = text.find("href"); p != std::string::npos; p = text.find("href", rest)) {
        for (int i = 0; i < 3; ++i) co_await NextTurn{loop};
        // A handler that ran meanwhile may have emptied or grown the text;
        // past its end the window is empty.
        if (auto link = LinkAt(text, p, base);
            link && AdmitLink(std::move(*link), to) == Admitted::Queued)
            co_await NextTurn{loop};
        rest = std::min(p + kAdvance, text.size());
        for (int i = 0; i < 2; ++i) co_await NextTurn{loop};
    }
    // A stop in the last waits may have emptied the text under the walk.
    text.erase(0, std::min(rest, text.size()));
}

}  // namespace vantorin
