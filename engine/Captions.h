// The texts the window shows for the crawl's model, made in one place so that
// the window and the tests show and check the same words.
#pragma once

#include <string>

#include "engine/CrawlModel.h"

namespace vantorin {

struct RowTexts {
    std::string status;    // "Not Connected.", "Connecting to host", ...
    std::string size;      // the expected size; hidden on the rows in use
    std::string received;  // the bytes so far, "-" after a reset
    bool operator==(const RowTexts&) const = default;
};

struct CounterCaptions {
    std::string files;   // "1,234 Files" downloaded
    std::string bytes;   // "56,789 Bytes"
    std::string queued;  // "12 Files" queued
    bool operator==(const CounterCaptions&) const = default;
};

RowTexts RowTextsOf(const ConnectionRow& row);
CounterCaptions CaptionsOf(const ShownCounts& counts);
// The status line under the queue.
std::string StatusLineOf(const CrawlModel& model);

}  // namespace vantorin
