// The main window over an engine world, its wizard and filter dialog counted.
#pragma once

#include <gtest/gtest.h>

#include "platform/gui/QtDialogs.h"
#include "tests/support/EngineWorld.h"
#include "ui/frmMain.h"

namespace vantorin::testing {

template <class DialogsT>
struct MainWindowWorld : EngineWorld<DialogsT> {
    MainWindowWorld() {
        window.ShowNewSiteWizard = [this] { ++wizards; };
        window.ShowFilterDialog = [this] { ++filterDialogs; };
        window.OnEndProgram = [this] { ++ends; };
    }
    frmMain window{this->engine, this->vars, this->dialogs, this->shell};
    int wizards = 0, filterDialogs = 0, ends = 0;
};

class UiTest : public ::testing::Test, public MainWindowWorld<ScriptedDialogs> {};

}  // namespace vantorin::testing
