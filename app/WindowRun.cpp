// The window's start, built as a module of its own that the program loads only
// when it opens its window: the command line never loads a widget library.
#include <QApplication>
#include <QtGlobal>
#include <cstdio>

#include "app/ProgramParts.h"
#include "platform/QtSettingsStore.h"
#include "platform/gui/AppIcon.h"
#include "platform/gui/QtDialogs.h"
#include "platform/gui/QtShellOpen.h"
#include "setup/KeywordFiltersDialog.h"
#include "setup/NewSiteWizard.h"
#include "ui/MainWindow.h"

extern "C" Q_DECL_EXPORT int vantorin_run_window(int argc, char** argv) {
    using namespace vantorin;
#ifdef Q_OS_LINUX
    // Without a graphical session Qt would abort with advice about reinstalling.
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        std::fputs(
            "vantorin: no graphical session (neither DISPLAY nor WAYLAND_DISPLAY is set): "
            "use the command line instead: vantorin --url ADDRESS --dir FOLDER (see "
            "vantorin --help)\n",
            stderr);
        return 1;
    }
#endif
    QApplication app(argc, argv);
    SetApplicationIcon();

    QtDialogs dialogs;
    QtShellOpen shell;
    QtSettingsStore settings;
    ProgramParts parts;
    SetupServices services{parts.engine, parts.files, parts.filters, settings, dialogs};
    MainWindow window(parts.engine, dialogs, shell);
    window.openNewSiteWizard = [&] { return NewSiteWizard::Open(services, &window); };
    window.openFilters = [&] { KeywordFiltersDialog::Open(services, &window); };

    window.show();
    return QApplication::exec();
}
