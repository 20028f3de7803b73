// The seams the setup dialogs work through, handed in by whoever opens them.
#pragma once

#include "output/CrawlVariables.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/SettingsStore.h"

namespace vantorin {

struct SetupServices {
    CrawlVariables& vars;  // TargetFolder is set here; KeywordFilters edited here
    FileSystem& fs;        // guarded by vars.TargetFolder and the program folder
    SettingsStore& settings;
    Dialogs& dialogs;
};

}  // namespace vantorin
