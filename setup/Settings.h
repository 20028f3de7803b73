// The only way in and out of the persisted settings (LastURL, InDir, Timeout).
#pragma once

#include <string>

#include "platform/SettingsStore.h"

namespace vantorin {

std::string ReadSetting(SettingsStore& store, const std::string& key,
                        const std::string& defaultValue);
void PutSetting(SettingsStore& store, const std::string& key, const std::string& value);

}  // namespace vantorin
