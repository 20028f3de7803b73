// The program's parts, wired the same way for the window and the command
// line: the crawl variables, the guarded file system, the settings and the
// engine. The dialogs, the shell and the settings store differ (the command
// line keeps its settings for the run alone); no widget is made here.
#pragma once

#include <string>

#include "engine/CrawlEngine.h"
#include "output/CrawlVariables.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/SettingsStore.h"
#include "platform/ShellOpen.h"
#include "setup/SetupServices.h"

namespace vantorin {

// Needs the application object to exist first (sockets and timers are Qt's).
struct ProgramParts {
    ProgramParts(Dialogs& dialogs, ShellOpen& shell, SettingsStore& settings);

    CrawlVariables vars;
    FileSystem fs;
    SetupServices services;
    CrawlEngine engine;
};

}  // namespace vantorin
