// The headless run's progress on stderr: one line redrawn in place on a
// terminal, plain lines (at most one a second, only when something changed)
// otherwise.
#pragma once

#include <cstdint>
#include <string>

namespace vantorin {

struct ProgressFigures {
    std::int64_t filesDone = 0;
    std::int64_t queued = 0;
    std::int64_t bytes = 0;
    int busyConnections = 0;
    bool operator==(const ProgressFigures&) const = default;
};

class CrawlEngine;

// What the progress line shows of a crawl: files saved, the queue, bytes, and
// the connections at work on a job.
ProgressFigures FiguresOf(const CrawlEngine& engine);
std::string FormatProgress(const ProgressFigures& figures);

class ProgressLine {
public:
    explicit ProgressLine(bool terminal) : terminal_(terminal) {}

    // Interval between Show calls that the caller should use, in ms.
    int IntervalMs() const { return terminal_ ? 200 : 1000; }
    void Show(const ProgressFigures& figures);
    // Ends a redrawn line so that other output starts on a fresh line.
    void Break();

private:
    bool terminal_;
    bool open_ = false;  // a redrawn line is on the screen without its line end
    bool shownAny_ = false;
    ProgressFigures last_;
};

}  // namespace vantorin
