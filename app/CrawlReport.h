// The command line's last word on a crawl: what could not be written, what
// the guard refused, whether any server answered, and the exit status that
// sums it up. The window says none of this: its failing file steps stay
// silent: a user of the window sees a failed write only as a missing file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/FileSystem.h"

namespace vantorin {

struct CrawlResult {
    bool interrupted = false;
    std::int64_t bytesReceived = 0;  // over the whole crawl
    WriteFaults faults;              // the program's and the mirror's together
};

// Counts added; the kept failures of `first` before those of `second`.
WriteFaults Combined(const WriteFaults& first, const WriteFaults& second);

// 130 interrupted; 3 a file or line could not be written or a write was
// refused; 4 nothing was received; else 0. 3 wins over 4, as the lower code does in wget: the
// write failures are the ones a retry against a reachable server would not
// mend.
int ExitStatus(const CrawlResult& result);

// One line each, without line ends; none when all went well.
std::vector<std::string> ReportLines(const CrawlResult& result);

}  // namespace vantorin
