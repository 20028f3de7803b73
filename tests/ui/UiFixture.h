// One main window over a real engine driven by fake sockets and timers, its
// program and target folders in a fresh temporary folder. With the real
// message boxes the engine's yields run the event loop, as the program's do;
// `duringYield` runs before each.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <functional>
#include <type_traits>
#include <vector>

#include "engine/CrawlEngine.h"
#include "platform/gui/QtDialogs.h"
#include "tests/support/EngineFakes.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempDir.h"
#include "ui/frmMain.h"

namespace vantorin::testing {

template <class DialogsT>
struct MainWindowWorld {
    MainWindowWorld() {
        fs.CreateFolder(vars.TargetFolder = dir.Backslashed() + "site\\");
        window.ShowNewSiteWizard = [this] { ++wizards; };
        window.ShowFilterDialog = [this] { ++filterDialogs; };
        window.OnEndProgram = [this] { ++ends; };
    }
    TempDir dir;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, dir.Backslashed()};
    DialogsT dialogs;
    RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;  // 24 timeout timers, then tmrMove
    std::function<void()> duringYield = [] {};
    CrawlEngine engine{vars,
                       fs,
                       {dialogs, shell, PageTextReader(),
                        [this] {
                            duringYield();
                            if constexpr (std::is_same_v<DialogsT, QtDialogs>)
                                QCoreApplication::processEvents();
                        },
                        RecordingSockets(sockets), RecordingTimers(timers)}};
    CrawlState& state = engine.State();
    frmMain window{engine, vars, dialogs, shell};
    int wizards = 0, filterDialogs = 0, ends = 0;
};

class UiTest : public ::testing::Test, public MainWindowWorld<ScriptedDialogs> {};

}  // namespace vantorin::testing
