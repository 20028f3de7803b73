// One crawl engine over doubles driven by hand: scripted sockets, timers whose
// ticks the test fires, a recording shell and dialogs that answer from a
// script, its program folder ("prog") and target folder ("site") in a fresh
// temporary folder. With dialogs other than the scripted ones (the real
// message boxes) the engine's yields run the event loop, as the program's do;
// `duringYield` runs before each.
#pragma once

#include <QCoreApplication>
#include <filesystem>
#include <type_traits>
#include <utility>
#include <vector>

#include "engine/CrawlEngine.h"
#include "tests/support/EngineFakes.h"
#include "tests/support/ScriptedDialogs.h"
#include "tests/support/TempDir.h"

namespace vantorin::testing {

template <class DialogsT = ScriptedDialogs>
struct EngineWorld {
    EngineWorld() {
        std::filesystem::create_directories(dir.NativePath("prog"));
        fs.CreateFolder(vars.TargetFolder = dir.Backslashed() + "site\\");
    }
    TempDir dir;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, dir.Backslashed() + "prog\\"};
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
                            if constexpr (!std::is_same_v<DialogsT, ScriptedDialogs>)
                                QCoreApplication::processEvents();
                        },
                        Recording(sockets), Recording(timers)}};
    CrawlState& state = engine.State();
};

}  // namespace vantorin::testing
