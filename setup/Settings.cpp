#include "setup/Settings.h"

#include "platform/DefaultFolder.h"
#include "platform/NativePath.h"

namespace vantorin {

std::string ReadSetting(SettingsStore& store, const std::string& key,
                        const std::string& defaultValue) {
    return store.Read(key, defaultValue);
}

void PutSetting(SettingsStore& store, const std::string& key, const std::string& value) {
    store.Put(key, value);
}

std::string ReadFolderSetting(SettingsStore& store) {
    return FromDisplayPath(ReadSetting(store, "InDir", ToDisplayPath(DefaultTargetFolder())));
}

void PutFolderSetting(SettingsStore& store, const std::string& folder) {
    PutSetting(store, "InDir", ToDisplayPath(folder));
}

}  // namespace vantorin
