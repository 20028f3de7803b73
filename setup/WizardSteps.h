// The New Site Wizard's steps over plain text, without its widgets: the load,
// the folder check that Download and Close share, "Download Website Now!" and
// the unload. The command line runs the same folder, file-type and timeout
// steps with its options, and stores no setting.
#pragma once

#include <string>
#include <vector>

#include "engine/CrawlEngine.h"
#include "platform/FileSystem.h"
#include "setup/SetupServices.h"

namespace vantorin {

// What the wizard's boxes and lists hold. The folder is in the backslash form
// the folder rules work on; the box shows it with the platform's separator.
struct WizardFields {
    std::string address;
    std::string folder;
    std::string timeout;                 // the timeout box's text, in seconds
    std::vector<std::string> fileTypes;  // the file types list, in order
};

// The load: the file types list (written with the defaults when the file is
// missing, then read, so a first run shows each default twice), and the last
// address, folder and timeout read and stored back, as setting a box stores it.
WizardFields LoadWizard(SetupServices& services);

// The folder rules of every start, for a folder already normalised: it
// becomes the folder the crawl saves to and the file system lets writes into,
// its folders are made, and a probe file is written to it and deleted. False
// when the probe fails.
bool PrepareTargetFolder(const std::string& folder, FileSystem& files, CrawlEngine& engine);

// Download and Close: the typed folder normalised, stored and prepared; when
// it passes, the file types list is saved. Otherwise the "Eror" message.
bool FolderReady(WizardFields& fields, SetupServices& services);

// "Download Website Now!": FolderReady, then the address given to the engine,
// the crawl started, and the wizard's unload. False when the folder was refused
// and nothing started.
bool DownloadWebsiteNow(WizardFields& fields, SetupServices& services);

// The timeout box's text, trimmed: when it is not empty, every connection's
// timeout becomes its leading number of seconds (0 for none) in whole
// milliseconds, half to even; a value no timer can hold changes nothing.
void ApplyTimeout(const std::string& seconds, CrawlEngine& engine);

// The unload, on every way of closing: the timeout stored trimmed, and applied.
void UnloadWizard(const std::string& timeout, SetupServices& services);

}  // namespace vantorin
