#include "app/ProgressLine.h"

#include <cstdio>

#include "engine/CrawlEngine.h"
#include "text/CountText.h"

namespace vantorin {

ProgressFigures FiguresOf(const CrawlEngine& engine) {
    const CrawlModel& model = engine.Model();
    ProgressFigures f;
    f.filesDone = model.filesDone;
    f.queued = static_cast<std::int64_t>(model.queue.Count());
    f.bytes = model.bytesReceived;
    for (int i = 1; i <= kConnectionCount; ++i)
        if (!engine.ConnectionAt(i).IsFree()) ++f.busyConnections;
    return f;
}

std::string FormatProgress(const ProgressFigures& f) {
    const auto count = [](std::int64_t n) { return FormatThousands(std::to_string(n)); };
    return "Downloaded " + count(f.filesDone) + " files, " + count(f.queued) + " queued, " +
           count(f.bytes) + " bytes, " + std::to_string(f.busyConnections) + " connections busy";
}

void ProgressLine::Show(const ProgressFigures& figures) {
    if (shownAny_ && figures == last_) return;
    shownAny_ = true;
    last_ = figures;
    const std::string text = FormatProgress(figures);
    if (terminal_) {
        // "\033[K" clears what a longer earlier line left on the right.
        std::fprintf(stderr, "\r%s\033[K", text.c_str());
        open_ = true;
    } else {
        std::fprintf(stderr, "%s\n", text.c_str());
    }
    std::fflush(stderr);
}

void ProgressLine::Break() {
    if (!open_) return;
    std::fputs("\n", stderr);
    std::fflush(stderr);
    open_ = false;
}

}  // namespace vantorin
