#include "setup/WizardSteps.h"

#include "extractor/FileTypesList.h"
#include "output/LocalPath.h"
#include "setup/FolderRules.h"
#include "setup/Settings.h"
#include "text/Strings.h"

namespace vantorin {

namespace {

// Setting a box's text counts as a change even when the text is the same, so
// the value read is always written back.
std::string ReadAndStore(SettingsStore& store, const std::string& key,
                         const std::string& defaultValue) {
    std::string value = ReadSetting(store, key, defaultValue);
    PutSetting(store, key, value);
    return value;
}

}  // namespace

WizardFields LoadWizard(SetupServices& services) {
    WizardFields fields;
    FillFileTypesList(fields.fileTypes, services.files);
    fields.address = ReadAndStore(services.settings, "LastURL", "http://");
    fields.folder = ReadFolderSetting(services.settings);
    PutFolderSetting(services.settings, fields.folder);
    fields.timeout = ReadSetting(services.settings, "Timeout", "15");
    return fields;
}

bool PrepareTargetFolder(const std::string& folder, FileSystem& files, CrawlEngine& engine) {
    engine.SetTargetFolder(folder);
    files.SetTargetFolder(folder);
    // The folders this makes are not the crawl's: the start forgets them.
    std::string made;
    MakeFoldersAlong(folder, files, made);
    return TestFolderWritable(folder, files);
}

bool FolderReady(WizardFields& fields, SetupServices& services) {
    fields.folder = NormaliseFolderText(fields.folder);
    PutFolderSetting(services.settings, fields.folder);
    if (!PrepareTargetFolder(fields.folder, services.files, services.engine)) {
        services.dialogs.Ask("That is an invalid directory. Check it has no invalid characters.",
                             "Eror", kCritical | kOkOnly, {});
        return false;
    }
    SaveFileTypes(fields.fileTypes, services.files);
    return true;
}

bool DownloadWebsiteNow(WizardFields& fields, SetupServices& services) {
    if (!FolderReady(fields, services)) return false;
    services.engine.SetAddress(fields.address);
    services.engine.Start();
    UnloadWizard(fields.timeout, services);
    return true;
}

void ApplyTimeout(const std::string& seconds, CrawlEngine& engine) {
    const std::string trimmed = Trim(seconds);
    if (trimmed.empty()) return;
    engine.SetSilenceTimeout(RoundHalfEven(Val(trimmed) * 1000));
}

void UnloadWizard(const std::string& timeout, SetupServices& services) {
    PutSetting(services.settings, "Timeout", Trim(timeout));
    ApplyTimeout(timeout, services.engine);
}

}  // namespace vantorin
