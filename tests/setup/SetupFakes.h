// Recording fakes for the setup dialogs' seams, and one world per test: a temp
// folder with a program folder inside it, the crawl variables, the seams and
// an engine over fake sockets and timers.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>

#include "engine/CrawlEngine.h"
#include "platform/SettingsStore.h"
#include "setup/SetupServices.h"
#include "tests/support/EngineFakes.h"
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

struct SetupWorld {
    SetupWorld() { std::filesystem::create_directories(dir.NativePath("prog")); }

    TempDir dir;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, dir.Backslashed() + "prog\\"};
    MemorySettings settings;
    ScriptedDialogs dialogs;
    SetupServices services{vars, fs, settings, dialogs};
    RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;
    CrawlEngine engine{vars,
                       fs,
                       {dialogs, shell, PageTextReader(), Yield(), RecordingSockets(sockets),
                        RecordingTimers(timers)}};
};

}  // namespace vantorin::testing
