#include "setup/WizardSteps.h"

#include "extractor/FileTypesList.h"
#include "output/LocalPath.h"
#include "platform/NativePath.h"
#include "platform/Text.h"
#include "setup/FolderRules.h"
#include "setup/Settings.h"

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
    FillFileTypesList(fields.fileTypes, services.fs);
    fields.txtURL = ReadAndStore(services.settings, "LastURL", "http://");
    fields.txtDir = ReadFolderSetting(services.settings);
    PutFolderSetting(services.settings, fields.txtDir);
    fields.timeout = ReadSetting(services.settings, "Timeout", "15");
    return fields;
}

void TypeAddress(WizardFields& fields, SetupServices& services, const std::string& text) {
    fields.txtURL = text;
    PutSetting(services.settings, "LastURL", text);
}

void TypeFolder(WizardFields& fields, SetupServices& services, const std::string& shown) {
    fields.txtDir = FromDisplayPath(shown);
    PutFolderSetting(services.settings, fields.txtDir);
}

bool FolderReady(WizardFields& fields, SetupServices& services) {
    fields.txtDir = NormaliseFolderText(fields.txtDir);
    PutFolderSetting(services.settings, fields.txtDir);
    services.vars.TargetFolder = fields.txtDir;
    MakeFoldersAlong(services.vars.TargetFolder, services.vars, services.fs);
    if (!TestFolderWritable(services.vars.TargetFolder, services.fs)) {
        services.dialogs.MsgBox("That is an invalid directory. Check it has no invalid characters.",
                                "Eror", kCritical | kOkOnly);
        return false;
    }
    SaveFileTypes(fields.fileTypes, services.fs);
    return true;
}

DownloadStart DownloadWebsiteNow(WizardFields& fields, SetupServices& services,
                                 CrawlEngine& engine) {
    if (!FolderReady(fields, services)) return DownloadStart::FolderRefused;
    engine.State().SetText1(fields.txtURL);
    engine.ConnectNowNow();
    UnloadWizard(fields.timeout, services, engine);
    return DownloadStart::Started;
}

void UnloadWizard(const std::string& timeout, SetupServices& services, CrawlEngine& engine) {
    const std::string seconds = Trim(timeout);
    PutSetting(services.settings, "Timeout", seconds);
    if (seconds.empty()) return;
    const long long ms = RoundHalfEven(Val(seconds) * 1000);
    for (int slot = 1; slot <= kSlotCount; ++slot) {
        // The first timer that refuses ends it: later slots keep their interval.
        if (!engine.SetTimeoutInterval(slot, ms)) return;
    }
}

}  // namespace vantorin
