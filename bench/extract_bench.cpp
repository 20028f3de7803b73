// Link extraction timings: the scanner with queue admission into a fresh
// mirror on tmpfs (1 MiB and 2 MiB pages of the same link density, to show the
// cost grows linearly), and the text passes alone in bytes per second.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "extractor/Admission.h"
#include "extractor/LinkRewrite.h"
#include "extractor/LinkScanner.h"
#include "output/Mirror.h"
#include "platform/FileSystem.h"
#include "tests/support/HandTurnedLoop.h"
#include "text/Strings.h"

namespace {

using namespace vantorin;

constexpr std::size_t kMiB = 1024 * 1024;

// A page of `bytes` bytes with one link in about every 105 bytes (10,000 per MiB): anchors in
// both quoting styles, images, backgrounds, fragments and off-site links, in
// 100 folders, written over several lines.
std::string MakePage(std::size_t bytes) {
    std::string page = "<html><head><title>Bench</title></head>\r\n<body>\r\n";
    for (std::size_t n = 0; page.size() < bytes; ++n) {
        const std::string id = std::to_string(n);
        const std::string dir = "dir" + std::to_string(n % 100) + "/";
        page += "<span class=\"w\">lorem ipsum dolor sit amet</span>";
        switch (n % 8) {
            case 0:
                page +=
                    "<p class=\"t\">Row " + id + "</p><img src=\"" + dir + "p" + id + ".gif\">\r\n";
                break;
            case 1:
                page += "<td background='" + dir + "b" + id + ".jpg' width=\"10\">cell</td>\r\n";
                break;
            case 2:
                page += "<a href=\"#s" + id + "\">jump</a> <span>some words</span>\r\n";
                break;
            case 3:
                page += "<a href=\"http://other.com/" + id + ".html\">elsewhere</a>\r\n";
                break;
            default:
                page +=
                    "<li><a HREF = \"" + dir + "page" + id + ".html\">Page " + id + "</a></li>\r\n";
        }
    }
    page.resize(bytes);
    return page;
}

// The same page with nothing the scanner would visit.
std::string MakePageWithoutLinks(std::size_t bytes) {
    std::string page = MakePage(bytes);
    ReplaceIn(page, "href", "hre_");
    ReplaceIn(page, "HREF", "HRE_");
    ReplaceIn(page, " src", " sr_");
    ReplaceIn(page, "background", "backgroun_");
    return page;
}

class ShmFolder {
public:
    ShmFolder() {
        std::string tmpl = "/dev/shm/vantorin-bench-XXXXXX";
        if (!mkdtemp(tmpl.data())) throw std::runtime_error("mkdtemp failed on /dev/shm");
        path_ = tmpl;
    }
    ~ShmFolder() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    const std::string& Native() const { return path_; }

private:
    std::string path_;
};

void BM_ExtractLinksIntoFreshMirror(benchmark::State& state) {
    const std::string page = MakePage(static_cast<std::size_t>(state.range(0)) * kMiB);
    ShmFolder shm;
    int iteration = 0;
    std::size_t queued = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const std::string native = shm.Native() + "/m" + std::to_string(iteration++);
        std::filesystem::create_directories(native);
        const std::string target = Replace(native, "/", "\\") + "\\";
        FileSystem fs(target, Replace(shm.Native(), "/", "\\") + "\\program");
        testing::HandTurnedLoop loop;
        Mirror m{target, "site.com", {}, {}, fs, {}, loop};
        const std::string wanted = ":.html::.htm::.gif::.jpg:";
        KeywordFilters filters;
        AddressList queue, notTaken;
        std::string text = page;
        state.ResumeTiming();

        testing::RunToEnd(
            ExtractLinks(text, "http://site.com/", {m, wanted, filters, queue, notTaken}), loop);

        state.PauseTiming();
        queued = queue.Items().size();
        std::error_code ec;
        std::filesystem::remove_all(native, ec);
        state.ResumeTiming();
    }
    state.counters["queued"] = static_cast<double>(queued);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * page.size()));
}
BENCHMARK(BM_ExtractLinksIntoFreshMirror)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond);

void BM_TextPasses(benchmark::State& state) {
    const std::string page = MakePage(static_cast<std::size_t>(state.range(0)) * kMiB);
    for (auto _ : state) benchmark::DoNotOptimize(RewriteForScan(page));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * page.size()));
}
BENCHMARK(BM_TextPasses)->Arg(1)->Arg(32)->Unit(benchmark::kMillisecond);

// A large page with no "href" after the passes: the scan is the passes alone.
void BM_ExtractLinksWithoutLinks(benchmark::State& state) {
    const std::string page = MakePageWithoutLinks(static_cast<std::size_t>(state.range(0)) * kMiB);
    ShmFolder shm;
    const std::string target = Replace(shm.Native(), "/", "\\") + "\\";
    FileSystem fs(target, target + "program");
    testing::HandTurnedLoop loop;
    Mirror m{target, "site.com", {}, {}, fs, {}, loop};
    const std::string wanted;
    KeywordFilters filters;
    AddressList queue, notTaken;
    for (auto _ : state) {
        state.PauseTiming();
        std::string text = page;
        state.ResumeTiming();
        testing::RunToEnd(
            ExtractLinks(text, "http://site.com/", {m, wanted, filters, queue, notTaken}), loop);
    }
    if (!queue.Items().empty()) state.SkipWithError("a page without links queued something");
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * page.size()));
}
BENCHMARK(BM_ExtractLinksWithoutLinks)->Arg(32)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
