#include "app/HeadlessRun.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QTimer>
#include <cstdio>

#include "app/CheckRun.h"
#include "app/CommandLine.h"
#include "app/CrawlReport.h"
#include "app/HeadlessDialogs.h"
#include "app/ProgramParts.h"
#include "app/ProgressLine.h"
#include "app/StartHints.h"
#include "app/StopSignals.h"
#include "output/Records.h"
#include "setup/FolderRules.h"
#include "setup/WizardSteps.h"

namespace vantorin {

namespace {

// Nothing is opened: the completion question is answered No.
class NoShell : public ShellOpen {
public:
    void OpenFolder(const std::string&) override {}
    void OpenAddress(const std::string&) override {}
};

void PrintLine(const std::string& line) {
    std::fputs((line + "\n").c_str(), stderr);
}

void PrintHints(const CommandLine& line, const FileSystem& fs) {
    for (const std::string& hint : AddressHints(line.url)) PrintLine(hint);
    const std::string folder = NormaliseFolderText(line.dir);
    if (const std::string hint = PlaceholderHint(fs.CountFilesEndingIn(folder, ".tmp"));
        !hint.empty())
        PrintLine(hint);
}

int Crawl(const CommandLine& line, int argc, char** argv) {
    QCoreApplication app(argc, argv);

    ProgressLine progress(isatty(STDERR_FILENO) == 1);
    HeadlessDialogs dialogs;
    NoShell shell;
    ProgramParts parts(dialogs, shell);
    CrawlEngine& engine = parts.engine;
    // What the hidden main window's load would do.
    engine.ResetForReload();

    dialogs.beforePrint = [&] { progress.Break(); };
    engine.onOutcome = [](CrawlOutcome outcome) {
        if (outcome == CrawlOutcome::SiteComplete) QCoreApplication::exit(kExitDone);
    };
    StopSignals stopSignals([&] {
        progress.Break();
        std::fputs("Interrupted: stopping the crawl.\n", stderr);
        if (engine.Running()) engine.StopNOW();
        QCoreApplication::exit(kExitInterrupted);
    });

    // The connections count as if chosen from txtMax's list.
    engine.State().SetTxtMax(line.connections);
    engine.txtMax_Click();

    PrintHints(line, parts.fs);

    // The New Site Wizard, filled in and "Download Website Now!" pressed.
    WizardFields fields = LoadWizard(parts.services);
    TypeAddress(fields, parts.services, line.url);
    TypeFolder(fields, parts.services, line.dir);
    if (!line.timeout.empty()) fields.timeout = line.timeout;
    if (DownloadWebsiteNow(fields, parts.services, engine) == DownloadStart::FolderRefused)
        return kExitFolderError;

    // The files the crawl saves, for the offline check at its end.
    std::vector<std::string> saved;
    engine.MirrorState().fs.onWholeFileWritten = [&](const std::string& path) {
        saved.push_back(path);
    };
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] { progress.Show(FiguresOf(engine)); });
    ticker.start(progress.IntervalMs());
    const int status = QCoreApplication::exec();
    ticker.stop();

    progress.Show(FiguresOf(engine));
    progress.Break();
    CrawlResult result;
    result.interrupted = status == kExitInterrupted;
    if (result.interrupted) {
        // A scan that was running when the stop came may have queued more
        // placeholders after the stop's own sweep.
        RemoveTempFiles(engine.MirrorState());
    }
    result.bytesReceived = engine.State().TotalBytes;
    result.faults = Combined(parts.fs.Faults(), engine.MirrorFileSystem().Faults());
    engine.MirrorState().fs.onWholeFileWritten = nullptr;  // `saved` goes before the engine
    PrintLine(
        CrawlCheckLine(FileSystem::ToNative(parts.vars.TargetFolder).string(), std::move(saved)));
    for (const std::string& reportLine : ReportLines(result)) PrintLine(reportLine);
    const int exitStatus = ExitStatus(result);
    if (exitStatus == kExitDone) std::printf("%s\n", kSiteDownloadedText);
    return exitStatus;
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
        case CommandLine::Action::Check:
            return RunCheck(line.checkFolder);
        case CommandLine::Action::Window:
        case CommandLine::Action::Crawl:
            break;
    }
    return Crawl(line, argc, argv);
}

}  // namespace vantorin
