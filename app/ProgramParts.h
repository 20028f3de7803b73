// The program's parts, wired the same way for the window and the headless
// run: the crawl variables, the guarded file system, the settings, the main
// window and the engine behind it. Only the dialogs and the shell differ.
#pragma once

#include <string>

#include "engine/CrawlEngine.h"
#include "output/CrawlVariables.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/QtSettingsStore.h"
#include "platform/ShellOpen.h"
#include "setup/SetupServices.h"
#include "ui/frmMain.h"

namespace vantorin {

// The folder of the program's own files (see platform/ProgramFolder.h), in
// backslash form without a trailing "\"; made when missing.
std::string ProgramFolder();

// Needs the application object to exist first.
struct ProgramParts {
    ProgramParts(Dialogs& dialogs, ShellOpen& shell);

    CrawlVariables vars;
    FileSystem fs;
    QtSettingsStore settings;
    SetupServices services;
    frmMain window;
    CrawlEngine engine;
};

}  // namespace vantorin
