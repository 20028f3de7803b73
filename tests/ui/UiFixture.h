// One main window over recording doubles, with a real engine driven by fake
// sockets and timers, its program folder a fresh temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "engine/CrawlEngine.h"
#include "tests/support/EngineFakes.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempDir.h"
#include "ui/frmMain.h"

namespace vantorin::testing {

class UiTest : public ::testing::Test {
protected:
    UiTest()
        : fs(vars.TargetFolder, dir.Backslashed()),
          engine(vars, fs,
                 {dialogs, shell, PageTextReader(), Yield(), RecordingSockets(sockets),
                  RecordingTimers(timers)}),
          state(engine.State()),
          window(engine, vars, dialogs, shell) {
        window.ShowNewSiteWizard = [this] { ++wizards; };
        window.ShowFilterDialog = [this] { ++filterDialogs; };
        window.OnEndProgram = [this] { ++ends; };
    }

    TempDir dir;
    CrawlVariables vars;
    FileSystem fs;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;  // 24 timeout timers, then tmrMove
    CrawlEngine engine;
    CrawlState& state;
    frmMain window;
    int wizards = 0, filterDialogs = 0, ends = 0;
};

}  // namespace vantorin::testing
