// The New Site Wizard's steps over plain text, without its widgets: the load,
// the folder check that Download and Close share, "Download Website Now!"
// and the unload. The wizard's buttons call them with what its boxes hold;
// the command line calls them with its options, so both start a crawl the
// same way and learn the same outcome.
#pragma once

#include <string>
#include <vector>

#include "engine/CrawlEngine.h"
#include "setup/SetupServices.h"

namespace vantorin {

// What the wizard's boxes and lists hold. The folder is in the backslash form
// the folder rules work on; the box shows it with the platform's separator.
struct WizardFields {
    std::string txtURL;
    std::string txtDir;
    std::string timeout;                 // the timeout box List2's text
    std::vector<std::string> fileTypes;  // List1's items, in order
};

// The load: the file types list (written with the defaults when the file is
// missing, then read, so a first run shows each default twice, as designed),
// LastURL, InDir and Timeout read, the two boxes' values stored back as their
// change would store them.
WizardFields LoadWizard(SetupServices& services);

// Text typed into the address or the folder box: stored at once as LastURL or
// InDir, as every change of those boxes is. The folder is typed as a person
// writes it ("/home/me/sites" off Windows), in the window and on the command line.
void TypeAddress(WizardFields& fields, SetupServices& services, const std::string& text);
void TypeFolder(WizardFields& fields, SetupServices& services, const std::string& shown);

// SetToInDIR (the folder text normalised and stored as InDir, TargetFolder
// set, the folders along it made), then TestFolderWritable; when the folder
// passes, SaveFileTypes and true. Otherwise the "Eror" message and false.
bool FolderReady(WizardFields& fields, SetupServices& services);

enum class DownloadStart { Started, FolderRefused };

// "Download Website Now!": FolderReady, then the address into Text1,
// ConnectNowNow and the wizard's unload. The refused folder is the only
// outcome that starts nothing.
DownloadStart DownloadWebsiteNow(WizardFields& fields, SetupServices& services,
                                 CrawlEngine& engine);

// The unload, on every way of closing: Timeout stored trimmed; when it is not
// empty, the 24 timeout timers get its leading number x 1000 ms, rounded half
// to even, until a timer refuses the value.
void UnloadWizard(const std::string& timeout, SetupServices& services, CrawlEngine& engine);

}  // namespace vantorin
