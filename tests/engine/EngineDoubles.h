// One engine over the scripted socket, timer, dialogs and shell.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "engine/CrawlEngine.h"
#include "platform/Text.h"
#include "tests/support/EngineFakes.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempDir.h"

namespace vantorin::testing {

// One engine over the doubles, its target folder a fresh temporary folder.
class EngineTest : public ::testing::Test {
protected:
    EngineTest()
        : fs(vars.TargetFolder, dir.Backslashed() + "prog"),
          engine(vars, fs,
                 {dialogs, shell, PageTextReader(),
                  [this] { std::exchange(duringYield, [] {})(); },  // runs duringYield once
                  RecordingSockets(sockets), RecordingTimers(timers)}),
          state(engine.State()) {
        vars.TargetFolder = dir.Backslashed() + "site\\";
        fs.CreateFolder(vars.TargetFolder);
        engine.onOutcome = [this](CrawlOutcome outcome) { outcomes.push_back(outcome); };
    }

    FakeSocket& sock(int n) { return *sockets.at(static_cast<std::size_t>(n - 1)); }
    FakeTimer& out(int n) { return *timers.at(static_cast<std::size_t>(n - 1)); }
    FakeTimer& move() { return *timers.at(kSlotCount); }

    // Starts a crawl of `address` as the start button does.
    void Start(const std::string& address) {
        state.SetText1(address);
        engine.ConnectNowNow();
    }

    TempDir dir;
    CrawlVariables vars;
    FileSystem fs;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;  // 24 timeout timers, then tmrMove
    std::function<void()> duringYield = [] {};
    CrawlEngine engine;
    CrawlState& state;
    std::vector<CrawlOutcome> outcomes;
};

}  // namespace vantorin::testing
