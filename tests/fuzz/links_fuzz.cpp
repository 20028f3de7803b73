// The link scanner and queue admission over a hostile page: the walk ends, the
// text left is the unvisited tail of the rewritten page, no queued or listed
// link starts with a scheme (but the doubled "http://" of a meta refresh), and
// nothing is written outside the target folder.
#include <cctype>
#include <string>

#include "extractor/LinkRewrite.h"
#include "extractor/LinkScanner.h"
#include "platform/StringList.h"
#include "platform/Text.h"
#include "tests/fuzz/FuzzInput.h"
#include "tests/fuzz/ScratchMirror.h"

using namespace vantorin;
using vantorin::fuzz::Check;

namespace {

// The name before a leading "://" ("" when the link does not start so).
std::string SchemeName(const std::string& link) {
    std::size_t i = 0;
    if (link.empty() || !std::isalpha(static_cast<unsigned char>(link[0]))) return {};
    while (i < link.size() && (std::isalnum(static_cast<unsigned char>(link[i])) ||
                               link[i] == '+' || link[i] == '-' || link[i] == '.'))
        ++i;
    return link.compare(i, 3, "://") == 0 ? link.substr(0, i) : std::string();
}

// The only rules that write "://" are the ones that give "http:/" and
// "http:\" their slashes back, so any other scheme in a list is a fault.
void CheckNoScheme(const StringList& list, const char* what) {
    for (const std::string& item : list.Items()) {
        const std::string name = SchemeName(item);
        Check(name.empty() || Right(name, 4) == "http", what);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static fuzz::ScratchMirror scratch;
    scratch.Reset();
    fuzz::FuzzInput input(data, size);
    const std::uint8_t choice = input.Byte();
    // The base is a queued address cut after its last "/": it holds no scheme.
    std::string base = Replace(input.Field(), ":", "");
    if (choice & 1) scratch.vars.SiteHost = input.Field();
    if (choice & 2) scratch.vars.KeywordFilters[1 + choice % 100] = input.Field();
    std::string page = input.Rest();
    if (page.size() > 16384) page.resize(16384);

    int yields = 0;
    scratch.m.yield = [&yields] { ++yields; };
    StringList queue, notTaken;
    std::string text = page;
    ExtractLinks(text, queue, base, notTaken, scratch.m);

    const std::string rewritten = RewriteForScan(page);
    Check(text.size() <= rewritten.size() &&
              rewritten.compare(rewritten.size() - text.size(), text.size(), text) == 0,
          "the text left is a tail of the rewritten page");
    Check(text.find("href") == std::string::npos, "the walk visits every href it can see");
    Check(!base.empty() && base.back() == '/', "the base ends in a slash");
    CheckNoScheme(queue, "a queued link carries no scheme but the doubled http://");
    CheckNoScheme(notTaken, "a link not taken carries no scheme but the doubled http://");
    scratch.CheckNothingOutside();
    return 0;
}
