// The local mirror a crawl writes: where it lies, the site it holds, and what
// the crawl has made in it so far. The engine owns one and sets it up anew at
// every start; the save step, the records and queue admission work on it.
#pragma once

#include <string>

#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "platform/PageTextFile.h"

namespace vantorin {

struct Mirror {
    // The folder chosen for the site, always ending in "\": every local path
    // starts with it.
    std::string targetFolder;
    // The start address's host with every "www." removed: the mirror's host
    // folder, and the test of whether a link is on the site.
    std::string siteHost;
    // Every folder this crawl made, lower-cased, each followed by "*", in the
    // order made; only these are swept of placeholders when the crawl ends.
    std::string madeFolders;
    // ":" + page path + ":" of the page last recorded for the search, so an
    // immediate second save of it adds no second record.
    std::string lastSearchPage;

    FileSystem& files;  // holds every write to the target folder
    PageTextReader pageText;
    EventLoop& loop;  // where a save waits for the page to load
};

}  // namespace vantorin
