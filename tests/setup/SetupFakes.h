// A settings store in memory, and one world per test: an engine world with
// the setup dialogs' seams over it.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "platform/SettingsStore.h"
#include "setup/SetupServices.h"
#include "tests/support/EngineWorld.h"

namespace vantorin::testing {

struct MemorySettings : SettingsStore {
    std::string Read(const std::string& key, const std::string& defaultValue) override {
        auto it = values.find(key);
        return it == values.end() ? defaultValue : it->second;
    }
    void Put(const std::string& key, const std::string& value) override { values[key] = value; }
    std::map<std::string, std::string> values;
};

struct SetupWorld : EngineWorld<> {
    MemorySettings settings;
    SetupServices services{vars, fs, settings, dialogs};
};

}  // namespace vantorin::testing
