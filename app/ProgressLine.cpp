#include "app/ProgressLine.h"

#include <cstdio>

#include "engine/CrawlEngine.h"
#include "platform/NumberText.h"

namespace vantorin {

ProgressFigures FiguresOf(const CrawlEngine& engine) {
    const CrawlState& state = engine.State();
    ProgressFigures f;
    f.filesDone = state.FilesDone;
    f.queued = state.List1.ListCount();
    f.bytes = state.TotalBytes;
    for (int i = 1; i <= kSlotCount; ++i) {
        if (engine.Sock(i).State() != kSockClosed) ++f.busyConnections;
    }
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
