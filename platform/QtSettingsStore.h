// The settings store over QSettings: organisation and application "Vantorin",
// group "Settings", string values kept byte for byte (Latin-1). On Linux the
// file lives under $XDG_CONFIG_HOME.
#pragma once

#include "platform/SettingsStore.h"

namespace vantorin {

class QtSettingsStore : public SettingsStore {
public:
    std::string Read(const std::string& key, const std::string& defaultValue) override;
    void Put(const std::string& key, const std::string& value) override;
};

}  // namespace vantorin
