// The program: with no arguments the window; with arguments the headless
// command line (see app/CommandLine.h).
#include <QApplication>
#include <QCoreApplication>

#include "app/HeadlessRun.h"
#include "app/ProgramParts.h"
#include "platform/gui/AppIcon.h"
#include "platform/gui/QtDialogs.h"
#include "platform/gui/QtShellOpen.h"
#include "setup/frmNew.h"
#include "setup/zFilter.h"

int main(int argc, char** argv) {
    using namespace vantorin;
    if (argc > 1) return RunCommandLine(argc, argv);

    QApplication app(argc, argv);
    SetApplicationIcon();
    // The program ends when the window's unload says so, not when it hides to reload.
    QApplication::setQuitOnLastWindowClosed(false);

    QtDialogs dialogs;
    QtShellOpen shell;
    ProgramParts parts(dialogs, shell);
    frmMain& window = parts.window;
    window.ShowNewSiteWizard = [&] { frmNew::ShowModal(parts.services, window, &window); };
    window.ShowFilterDialog = [&] { zFilter::ShowModeless(parts.services, &window); };
    window.OnEndProgram = [] { QCoreApplication::quit(); };

    window.show();
    return app.exec();
}
