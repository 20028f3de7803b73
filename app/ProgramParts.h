// The program's parts, wired the same way for the window and the command
// line: the crawl variables, the guarded file system, the settings and the
// engine. Only the dialogs and the shell differ; no widget is made here.
#pragma once

#include <string>

#include "engine/CrawlEngine.h"
#include "output/CrawlVariables.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/QtSettingsStore.h"
#include "platform/ShellOpen.h"
#include "setup/SetupServices.h"

namespace vantorin {

// Needs the application object to exist first (sockets and timers are Qt's).
struct ProgramParts {
    ProgramParts(Dialogs& dialogs, ShellOpen& shell);

    CrawlVariables vars;
    FileSystem fs;
    QtSettingsStore settings;
    SetupServices services;
    CrawlEngine engine;
};

}  // namespace vantorin
