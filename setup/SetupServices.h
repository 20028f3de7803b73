// The seams the setup dialogs work through, handed in by whoever opens them.
#pragma once

#include "engine/CrawlEngine.h"
#include "extractor/KeywordFilters.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/SettingsStore.h"

namespace vantorin {

struct SetupServices {
    CrawlEngine& engine;
    FileSystem& files;  // the program folder and the chosen target folder
    KeywordFilters& filters;
    SettingsStore& settings;
    Dialogs& dialogs;
};

}  // namespace vantorin
