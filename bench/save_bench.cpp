// Saving a finished download: a 1 MiB page (every rewrite rule has work to
// do, and its search text is read back) and a 20 MiB binary file, written
// into a temporary folder (in memory when /dev/shm exists). Reports the time
// and the process's peak resident size.
#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <sys/resource.h>

#include <cstdint>
#include <filesystem>
#include <random>
#include <stdexcept>
#include <string>

#include "output/Mirror.h"
#include "output/SaveFile.h"
#include "platform/FileSystem.h"
#include "platform/PageTextFile.h"
#include "tests/support/HandTurnedLoop.h"

namespace {

namespace fs = std::filesystem;
using namespace vantorin;

double PeakRssMiB() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

// Taken before any benchmark allocates: the process's own size.
const double kStartRssMiB = PeakRssMiB();

class BenchFolder {
public:
    BenchFolder() {
        std::error_code ec;
        fs::path base =
            fs::is_directory("/dev/shm", ec) ? fs::path("/dev/shm") : fs::temp_directory_path();
        std::string tmpl = (base / "vantorin-bench-XXXXXX").string();
        if (!mkdtemp(tmpl.data())) throw std::runtime_error("mkdtemp failed");
        native_ = tmpl;
        target_ = native_ + "/";
        for (char& c : target_)
            if (c == '/') c = '\\';
    }
    ~BenchFolder() {
        std::error_code ec;
        fs::remove_all(native_, ec);
    }
    const std::string& Target() const { return target_; }

private:
    std::string native_;
    std::string target_;
};

std::string HtmlPage(std::size_t size) {
    const std::string chunk =
        "<p class=\"x\">Some words of text about the site, <a href=\"../up.html\">up</a>,\r\n"
        "<a href='shop/cart.asp'>cart</a> <a href=\"list.php?id=42&amp;p=3\">list</a>\n"
        "<a href=\"http://www.site.com/dir/page.html\">abs</a> "
        "<a href=\"http://other.org/x.html\">other</a></p>\n"
        "<script type=\"text/javascript\">var a = 1;</script><div><b>bold</b> tail</div>\n";
    std::string page = "HTTP/1.0 200 OK\r\nContent-Type: text/html\r\n\r\n<html><body>\n";
    while (page.size() < size) page += chunk;
    return page + "</body></html>\n";
}

void Run(benchmark::State& state, const std::string& received, const std::string& name) {
    BenchFolder folder;
    FileSystem files(folder.Target(), folder.Target() + "program\\");
    testing::HandTurnedLoop loop;
    Mirror m{folder.Target(), "site.com", {}, {}, files, VisiblePageText, loop};
    std::int32_t filesDone = 0;
    for (auto _ : state)
        testing::RunToEnd(SaveFile(received, name, "www.site.com", m, filesDone), loop);
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                            static_cast<std::int64_t>(received.size()));
    state.counters["peak_rss_MiB"] = PeakRssMiB();
    state.counters["start_rss_MiB"] = kStartRssMiB;
    state.counters["text_MiB"] = static_cast<double>(received.size()) / (1 << 20);
}

void BM_SaveHtmlPage1MiB(benchmark::State& state) {
    Run(state, HtmlPage(1 << 20), "\\www.site.com/index.html");
}

void BM_SaveBinary20MiB(benchmark::State& state) {
    std::mt19937 random(5);
    std::string received = "HTTP/1.0 200 OK\r\nContent-Type: application/zip\r\n\r\n";
    received.reserve(received.size() + (20u << 20));
    for (std::size_t i = 0; i < (20u << 20); ++i) received += static_cast<char>(random());
    Run(state, received, "\\www.site.com/files/big.zip");
}

}  // namespace

BENCHMARK(BM_SaveHtmlPage1MiB)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveBinary20MiB)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
