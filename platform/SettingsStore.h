// The per-user settings store: application "Vantorin", section "Settings".
#pragma once

#include <string>

namespace vantorin {

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    virtual std::string Read(const std::string& key, const std::string& defaultValue) = 0;
    virtual void Put(const std::string& key, const std::string& value) = 0;
};

}  // namespace vantorin
