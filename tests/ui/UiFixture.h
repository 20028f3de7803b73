// One main window over recording doubles, with a real engine driven by fake
// sockets and timers, its program folder a fresh temporary folder.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "engine/CrawlEngine.h"
#include "tests/engine/EngineDoubles.h"
#include "tests/support/TempDir.h"
#include "ui/frmMain.h"

namespace vantorin::testing {

class UiTest : public ::testing::Test {
protected:
    UiTest()
        : programFolder(MakeProgramFolder(dir)),
          fs(vars.TargetFolder, programFolder),
          window(vars, fs, dialogs, shell),
          engine(window, dialogs, shell, vars, fs, PageTextReader(), Yield(),
                 RecordingSockets(sockets), RecordingTimers(timers)) {
        window.AttachEngine(engine);
        window.ShowNewSiteWizard = [this] { ++wizards; };
        window.ShowFilterDialog = [this] { ++filterDialogs; };
        window.OnEndProgram = [this] { ++ends; };
    }

    static std::string MakeProgramFolder(const TempDir& d) {
        WriteNativeFile(d.NativePath("prog/filters.txt"), "ads\r\n\r\n  track \r\n");
        return d.Backslashed() + "prog";
    }

    FakeSocket& sock(int n) { return *sockets.at(static_cast<std::size_t>(n - 1)); }
    FakeTimer& move() { return *timers.at(kSlotCount); }

    TempDir dir;
    CrawlVariables vars;
    std::string programFolder;
    FileSystem fs;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    frmMain window;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;
    CrawlEngine engine;
    int wizards = 0, filterDialogs = 0, ends = 0;
};

}  // namespace vantorin::testing
