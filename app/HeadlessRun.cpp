#include "app/HeadlessRun.h"

#include <unistd.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "app/CommandLine.h"
#include "app/HeadlessDialogs.h"
#include "app/ProgramParts.h"
#include "app/ProgressLine.h"
#include "app/StopSignals.h"
#include "output/Records.h"
#include "platform/gui/Latin1.h"
#include "setup/frmNew.h"

namespace vantorin {

namespace {

constexpr const char* kDownloaded = "The website has been downloaded.";

// Nothing is opened: the completion question is answered No.
class NoShell : public ShellOpen {
public:
    void OpenFolder(const std::string&) override {}
    void OpenAddress(const std::string&) override {}
};

ProgressFigures Figures(CrawlEngine& engine, frmMain& window) {
    ProgressFigures f;
    f.filesDone = engine.FilesDone;
    f.queued = window.List1().ListCount();
    f.bytes = engine.TotalBytes;
    for (int i = 1; i <= kSlotCount; ++i) {
        if (engine.Sock(i).State() != kSockClosed) ++f.busyConnections;
    }
    return f;
}

int Crawl(const CommandLine& line, int argc, char** argv) {
    // No window is ever shown; the offscreen platform needs no display.
    setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication app(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);

    ProgressLine progress(isatty(STDERR_FILENO) == 1);
    HeadlessDialogs dialogs;
    NoShell shell;
    ProgramParts parts(dialogs, shell);
    CrawlEngine& engine = parts.engine;
    frmMain& window = parts.window;

    bool completed = false;
    dialogs.beforePrint = [&] { progress.Break(); };
    dialogs.onMessage = [&](const std::string& text, const std::string& title) {
        if (title == "Done." && text.rfind(kDownloaded, 0) == 0) {
            completed = true;
            QCoreApplication::exit(kExitDone);
        }
    };
    StopSignals stopSignals([&] {
        progress.Break();
        std::fputs("Interrupted: stopping the crawl.\n", stderr);
        if (engine.Running()) engine.StopNOW();
        QCoreApplication::exit(kExitInterrupted);
    });

    // The connections count as if typed into txtMax, with its validation.
    window.SetTxtMax(line.connections);
    engine.txtMax_Change();

    // The New Site Wizard, filled in and "Download Website Now!" pressed.
    {
        frmNew wizard(parts.services, window);
        wizard.txtURL->setText(ToQt(line.url));
        wizard.txtDir->setText(ToQt(line.dir));
        if (!line.timeout.empty()) wizard.List2->setEditText(ToQt(line.timeout));
        wizard.Command1_Click();
    }
    if (!engine.Running()) return kExitFolderError;  // the wizard showed "Eror"

    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] { progress.Show(Figures(engine, window)); });
    ticker.start(progress.IntervalMs());
    const int status = QApplication::exec();
    ticker.stop();

    progress.Show(Figures(engine, window));
    progress.Break();
    if (status == kExitInterrupted) {
        // A scan that was running when the stop came may have queued more
        // placeholders after the stop's own sweep.
        RemoveTempFiles(engine.MirrorState());
        return kExitInterrupted;
    }
    if (completed) std::printf("%s\n", kDownloaded);
    return status;
}

}  // namespace

int RunCommandLine(int argc, char** argv) {
    const CommandLine line = ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
    switch (line.action) {
        case CommandLine::Action::Help:
            std::fputs(UsageText().c_str(), stdout);
            return kExitDone;
        case CommandLine::Action::Version:
            std::printf("%s\n", kVersionText);
            return kExitDone;
        case CommandLine::Action::UsageError:
            std::fprintf(stderr, "vantorin: %s\n%s", line.error.c_str(), UsageText().c_str());
            return kExitUsage;
        case CommandLine::Action::Window:
        case CommandLine::Action::Crawl:
            break;
    }
    return Crawl(line, argc, argv);
}

}  // namespace vantorin
