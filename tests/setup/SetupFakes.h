// Recording fakes for the setup dialogs' seams, and one world per test: a temp
// folder with a program folder inside it, the crawl variables and the seams.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "output/CrawlVariables.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/SettingsStore.h"
#include "setup/SetupServices.h"
#include "setup/WizardHost.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempDir.h"

namespace vantorin::testing {

class MemorySettings : public SettingsStore {
public:
    std::string Read(const std::string& key, const std::string& defaultValue) override {
        auto it = values.find(key);
        return it == values.end() ? defaultValue : it->second;
    }
    void Put(const std::string& key, const std::string& value) override { values[key] = value; }
    std::map<std::string, std::string> values;
};

class FakeWizardHost : public WizardHost {
public:
    FakeWizardHost() { intervals.fill(777); }
    void SetText1(const std::string& text) override { calls.push_back("SetText1 " + text); }
    void ConnectNowNow() override { calls.push_back("ConnectNowNow"); }
    bool SetTmrOutInterval(int slot, long long ms) override {
        if (slot >= refuseFrom) return false;
        intervals[static_cast<std::size_t>(slot)] = ms;
        return true;
    }
    long long TmrOutInterval(int slot) const override {
        return intervals[static_cast<std::size_t>(slot)];
    }
    void ShowKeywordFilterDialog() override { calls.push_back("ShowKeywordFilterDialog"); }

    std::vector<std::string> calls;
    std::array<long long, 25> intervals{};
    int refuseFrom = 25;
};

struct SetupWorld {
    SetupWorld() { std::filesystem::create_directories(dir.NativePath("prog")); }

    TempDir dir;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, dir.Backslashed() + "prog\\"};
    MemorySettings settings;
    ScriptedDialogs dialogs;
    SetupServices services{vars, fs, settings, dialogs};
    FakeWizardHost host;
};

}  // namespace vantorin::testing
