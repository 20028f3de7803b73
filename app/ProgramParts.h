// The program's parts, made the same way for the window and the command line:
// the program's file system, the keyword filters, the event loop the jobs
// wait in, and the engine. No widget is made here.
#pragma once

#include "engine/CrawlEngine.h"
#include "extractor/KeywordFilters.h"
#include "platform/FileSystem.h"
#include "platform/QtEventLoop.h"

namespace vantorin {

// Needs the application object to exist first (sockets and timers are Qt's).
struct ProgramParts {
    ProgramParts();

    // The program folder, and the target folder once one is chosen.
    FileSystem files;
    KeywordFilters filters;
    QtEventLoop loop;
    CrawlEngine engine;
};

}  // namespace vantorin
