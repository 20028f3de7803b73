// What the mirror's rules need from the rest of the program: the crawl's
// variables, the guarded file system, the page-text reader and the yield.
#pragma once

#include "output/CrawlVariables.h"
#include "platform/FileSystem.h"
#include "platform/PageText.h"
#include "platform/Yield.h"

namespace vantorin {

struct Mirror {
    CrawlVariables& vars;
    FileSystem& fs;
    PageTextReader pageText;  // backslash path -> visible text
    Yield yield;              // empty in unit tests and benchmarks
};

}  // namespace vantorin
