#include "setup/Settings.h"

namespace vantorin {

std::string ReadSetting(SettingsStore& store, const std::string& key,
                        const std::string& defaultValue) {
    return store.Read(key, defaultValue);
}

void PutSetting(SettingsStore& store, const std::string& key, const std::string& value) {
    store.Put(key, value);
}

}  // namespace vantorin
