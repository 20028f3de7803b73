// The only way in and out of the persisted settings (LastURL, InDir, Timeout).
#pragma once

#include <string>

#include "platform/SettingsStore.h"

namespace vantorin {

std::string ReadSetting(SettingsStore& store, const std::string& key,
                        const std::string& defaultValue);
void PutSetting(SettingsStore& store, const std::string& key, const std::string& value);

// InDir keeps the folder as a person sees it ("/" off Windows); the folder
// rules get it back in backslash form. Absent, it is the default folder.
std::string ReadFolderSetting(SettingsStore& store);
void PutFolderSetting(SettingsStore& store, const std::string& folder);

}  // namespace vantorin
