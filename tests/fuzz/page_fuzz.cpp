// A hostile response saved under a hostile address, then its links scanned
// and admitted, as a finished job is: nothing is written outside the target
// folder, the save is counted once (never for "cancel"), the walk ends having
// visited every href, the text left is the unvisited tail of the rewritten
// page, no queued or listed link carries a scheme but the doubled
// "http://" of a meta refresh, and the page's search text is never much
// longer than its markup.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "extractor/LinkRewrite.h"
#include "extractor/LinkScanner.h"
#include "output/SaveFile.h"
#include "platform/PageText.h"
#include "platform/StringList.h"
#include "platform/Text.h"
#include "tests/support/MirrorFixture.h"

using namespace vantorin;

namespace {

// A failed property aborts, so both libFuzzer and the replay runner report it.
void Check(bool ok, const char* what) {
    if (ok) return;
    std::fprintf(stderr, "property failed: %s\n", what);
    std::abort();
}

// The name before a leading "://" ("" when the link does not start so).
std::string SchemeName(const std::string& link) {
    std::size_t i = 0;
    if (link.empty() || !std::isalpha(static_cast<unsigned char>(link[0]))) return {};
    while (i < link.size() && (std::isalnum(static_cast<unsigned char>(link[i])) ||
                               link[i] == '+' || link[i] == '-' || link[i] == '.'))
        ++i;
    return link.compare(i, 3, "://") == 0 ? link.substr(0, i) : std::string();
}

// Only the rules that give "http:/" and "http:\" their slashes back write "://".
void CheckNoScheme(const StringList& list, const char* what) {
    for (const std::string& item : list.Items()) {
        const std::string name = SchemeName(item);
        Check(name.empty() || Right(name, 4) == "http", what);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Input: a choice byte, NUL-ended fields (base, then the site host and a
    // keyword as the choice asks), then the response.
    std::string input(reinterpret_cast<const char*>(data), size);
    std::size_t at = 0;
    auto field = [&] {
        const std::size_t end = std::min(input.find('\0', at), input.size());
        std::string out = input.substr(at, end - at);
        at = std::min(end + 1, input.size());
        return out;
    };
    const std::uint8_t choice = size > 0 ? data[at++] : 0;
    // One mirror per process, its target folder emptied for every input.
    static testing::MirrorFixture f;
    static const CrawlVariables initial = [] {
        testing::WriteNativeFile(f.tmp.NativePath("up/log.txt"), "outside\r\n");
        testing::WriteNativeFile(f.tmp.NativePath("program/filters.txt"), "ads\r\n");
        return f.vars;
    }();
    static const auto outside = f.OutsideTarget();
    std::filesystem::remove_all(f.Target(""));
    std::filesystem::create_directories(f.Target(""));
    f.vars = initial;
    f.queue = StringList();
    f.notTaken = StringList();
    // The base is a queued address cut after its last "/": it holds no scheme.
    std::string base = Replace(field(), ":", "");
    if (choice & 1) f.vars.SiteHost = field();
    if (choice & 2) f.vars.KeywordFilters[1 + choice % 100] = field();
    std::string page = input.substr(at, 16384);

    std::string address = "\\site.com/" + base.substr(0, 512);
    std::int32_t filesDone = 0;
    SaveFile(page, address, choice & 4 ? f.vars.SiteHost : "www.site.com", f.m, filesDone);
    Check(filesDone == (LowerTrim(page) == "cancel" ? 0 : 1),
          "a save is counted once, cancel never");

    std::string text = page;
    ExtractLinks(text, f.queue, base, f.notTaken, f.m);
    const std::string rewritten = RewriteForScan(page);
    Check(text.size() <= rewritten.size() &&
              rewritten.compare(rewritten.size() - text.size(), text.size(), text) == 0,
          "the text left is a tail of the rewritten page");
    Check(text.find("href") == std::string::npos, "the walk visits every href it can see");
    Check(!base.empty() && base.back() == '/', "the base ends in a slash");
    CheckNoScheme(f.queue, "a queued link carries no scheme but the doubled http://");
    CheckNoScheme(f.notTaken, "a link not taken carries no scheme but the doubled http://");
    Check(f.OutsideTarget() == outside, "nothing outside the target folder changes");
    Check(VisibleTextOfHtml(page).size() <= 2 * page.size() + 2,
          "the search text is at most twice the markup");
    return 0;
}
