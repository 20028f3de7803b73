// The program: the window, the engine and the seams they work through.
#include <QApplication>
#include <QCoreApplication>
#include <string>

#include "engine/CrawlEngine.h"
#include "output/CrawlVariables.h"
#include "platform/DefaultFolder.h"
#include "platform/FileSystem.h"
#include "platform/PageText.h"
#include "platform/QtSettingsStore.h"
#include "platform/QtSocket.h"
#include "platform/QtTimer.h"
#include "platform/Text.h"
#include "platform/gui/QtDialogs.h"
#include "platform/gui/QtShellOpen.h"
#include "setup/SetupServices.h"
#include "setup/frmNew.h"
#include "setup/zFilter.h"
#include "ui/frmMain.h"

namespace {

// The executable's folder in the program's backslash form, without a trailing "\".
std::string ProgramFolder() {
    const std::string folder = QCoreApplication::applicationDirPath().toLatin1().toStdString();
    return vantorin::Replace(folder, "/", "\\");
}

}  // namespace

int main(int argc, char** argv) {
    using namespace vantorin;
    QApplication app(argc, argv);
    // The program ends when the window's unload says so, not when it hides to reload.
    QApplication::setQuitOnLastWindowClosed(false);

    CrawlVariables vars;
    vars.TargetFolder = DefaultTargetFolder();
    FileSystem fs(vars.TargetFolder, ProgramFolder());
    QtDialogs dialogs;
    QtShellOpen shell;
    QtSettingsStore settings;
    SetupServices services{vars, fs, settings, dialogs};

    frmMain window(vars, fs, dialogs, shell);
    const Yield yield = [] { QCoreApplication::processEvents(); };
    PageTextReader pageText = [](const std::string& path) {
        return VisiblePageText(FileSystem::ToNative(path).string());
    };
    CrawlEngine engine(window, dialogs, shell, vars, fs, pageText, yield, QtSocketFactory(),
                       QtTimerFactory());
    window.AttachEngine(engine);
    window.ShowNewSiteWizard = [&] { frmNew::ShowModal(services, window, &window); };
    window.ShowFilterDialog = [&] { zFilter::ShowModeless(services, &window); };
    window.OnEndProgram = [] { QCoreApplication::quit(); };

    window.show();
    return app.exec();
}
