// What the engine tells whoever drives it (the window, the command line): a
// value for each thing that happened, never a question. The driver decides
// what to ask and show.
#pragma once

#include <string>

#include "output/SaveFile.h"

namespace vantorin {

struct CrawlEvent {
    enum class Kind {
        PageSaved,  // a finished download went to the save step (`saved` says where and whether)
        TimedOut,   // a connection stayed silent for a whole interval and tries again
        GivenUp,    // its third silence: the job is dropped
        SiteDownloaded,  // the queue ran dry with every connection closed; the crawl is over
        Stopped,         // a stop the user confirmed: the window reloads now
        Ended,           // the exit has stopped and swept: the program may end
        LimitRefused,    // a typed connection count was not a number up to 23: it is "4" again
    };
    Kind kind;
    int connection = 0;   // 1 to 24, for the job events
    std::string address;  // the job's address, for the job events
    SavedFile saved;      // for PageSaved
};

}  // namespace vantorin
