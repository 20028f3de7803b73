#include "extractor/LinkScanner.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "extractor/AddressRules.h"
#include "extractor/Admission.h"
#include "extractor/LinkRewrite.h"
#include "platform/Text.h"

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
    // Kept as designed: a root-relative link resolves against the page's folder,
    // because the base goes in front and the slash repairs close the gap.
    if (Left(link, 7) != "http://") link = base + link;
    ReplaceIn(link, "m//", "m/");
    ReplaceIn(link, "t//", "t/");
    ReplaceIn(link, "g//", "g/");
    link = CollapseSlashes(link);
    ReplaceIn(link, "http://http://", "http://");
    return link;
}

void YieldTimes(const Yield& yield, int times) {
    for (int i = 0; i < times; ++i) RunPending(yield);
}

}  // namespace

void ExtractLinks(std::string& text, StringList& queue, std::string& baseUrl, StringList& notTaken,
                  Mirror& m) {
    if (baseUrl.empty() || baseUrl.back() != '/') baseUrl += '/';
    text = RewriteForScan(text);

    // The walk keeps an index instead of cutting the text at every step; `rest`
    // is where the text that the cutting would leave begins.
    std::size_t rest = 0;
    for (std::size_t p = text.find("href"); p != std::string::npos; p = text.find("href", rest)) {
        YieldTimes(m.yield, 3);
        if (auto link = LinkAt(text, p, baseUrl)) AdmitLink(std::move(*link), queue, notTaken, m);
        rest = std::min(p + kAdvance, text.size());
        YieldTimes(m.yield, 2);
    }
    // A stop inside the last yields may have emptied the text under the walk.
    text.erase(0, std::min(rest, text.size()));
}

}  // namespace vantorin
