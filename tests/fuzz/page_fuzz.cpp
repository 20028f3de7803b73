// A hostile response saved under a hostile address, then its links scanned
// and admitted, as a finished job is: nothing is written outside the target
// folder, the save is counted once (never for "cancel"), the walk ends having
// visited every href, the text left is the unvisited tail of the rewritten
// page, and the page's search text is never much longer than its markup.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <sstream>
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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
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
    f.queue = f.notTaken = StringList();

    // Input: a choice byte, NUL-ended fields (base, then the site host and a
    // keyword as the choice asks), then the response.
    std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
    const int choice = size > 0 ? in.get() : 0;
    std::string base;
    std::getline(in, base, '\0');
    base = Replace(base, ":", "");  // a queued address cut after its last "/": no scheme
    if (choice & 1) std::getline(in, f.vars.SiteHost, '\0');
    if (choice & 2) std::getline(in, f.vars.KeywordFilters[1 + choice % 100], '\0');
    const std::string page = std::string(std::istreambuf_iterator<char>(in), {}).substr(0, 16384);

    std::string address = "\\site.com/" + base.substr(0, 512);
    std::int32_t filesDone = 0;
    SaveFile(page, address, choice & 4 ? f.vars.SiteHost : "www.site.com", f.m, filesDone);
    Check(filesDone == (LowerTrim(page) == "cancel" ? 0 : 1),
          "a save is counted once, cancel never");

    std::string text = page;
    ExtractLinks(text, f.queue, base, f.notTaken, f.m);
    Check(RewriteForScan(page).ends_with(text), "the text left is a tail of the rewritten page");
    Check(text.find("href") == std::string::npos, "the walk visits every href it can see");
    Check(base.ends_with('/'), "the base ends in a slash");
    Check(f.OutsideTarget() == outside, "nothing outside the target folder changes");
    Check(VisibleTextOfHtml(page).size() <= 2 * page.size() + 2,
          "the search text is at most twice the markup");
    return 0;
}
