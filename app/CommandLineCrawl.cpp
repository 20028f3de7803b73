// One crawl with no window: the wizard's download steps with the options in
// place of its boxes, then the engine's events turned into the command line's
// own lines and exit status.
#include "app/CommandLineCrawl.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QTimer>
#include <cstdio>
#include <vector>

#include "app/CheckRun.h"
#include "app/CommandLine.h"
#include "app/CrawlReport.h"
#include "app/ProgramParts.h"
#include "app/ProgressLine.h"
#include "app/StartHints.h"
#include "app/StopSignals.h"
#include "app/UnsavedPages.h"
#include "extractor/FileTypesList.h"
#include "platform/NativePath.h"
#include "setup/FolderRules.h"
#include "setup/WizardSteps.h"

namespace vantorin {

namespace {

// What the first start shows in the timeout box.
constexpr const char* kDefaultTimeoutSeconds = "15";

void PrintLine(const std::string& line) {
    std::fputs((line + "\n").c_str(), stderr);
}

void PrintHints(const CommandLine& line, const std::string& folder, const FileSystem& files) {
    for (const std::string& hint : AddressHints(line.url)) PrintLine(hint);
    if (const std::string hint = PlaceholderHint(files.CountFilesEndingIn(folder, ".tmp"));
        !hint.empty())
        PrintLine(hint);
}

int Crawl(const CommandLine& line, int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ProgressLine progress(isatty(STDERR_FILENO) == 1);
    ProgramParts parts;
    CrawlEngine& engine = parts.engine;
    engine.ChooseConnectionLimit(line.connections);

    // The folder as the wizard's box would hold it; nothing is read from or
    // stored in the settings: a run's options hold for that run alone.
    const std::string folder = NormaliseFolderText(FromDisplayPath(line.dir));
    PrintHints(line, folder, parts.files);
    std::vector<std::string> fileTypes;
    FillFileTypesList(fileTypes, parts.files);
    if (!PrepareTargetFolder(folder, parts.files, engine)) {
        PrintLine("Eror: That is an invalid directory. Check it has no invalid characters.");
        return kExitFolderError;
    }
    SaveFileTypes(fileTypes, parts.files);

    bool interrupted = false;
    bool ending = false;
    UnsavedPages unsaved;
    std::vector<std::string> saved;  // the files written, for the offline check at the end
    const auto end = [&] {
        if (ending) return;
        ending = true;
        engine.Exit();
    };
    engine.onEvent = [&](const CrawlEvent& event) {
        switch (event.kind) {
            case CrawlEvent::Kind::PageSaved:
                if (event.saved.written)
                    saved.push_back(FileSystem::ToNative(event.saved.path).string());
                if (unsaved.Note(event.saved.written) && !ending) {
                    progress.Break();
                    PrintLine(unsaved.GaveUpLine());
                    end();
                }
                break;
            case CrawlEvent::Kind::SiteDownloaded:
            case CrawlEvent::Kind::Ended:
                QCoreApplication::exit();
                break;
            default:
                break;
        }
    };
    StopSignals stopSignals([&] {
        progress.Break();
        PrintLine("Interrupted: stopping the crawl.");
        interrupted = true;
        end();
    });

    engine.SetAddress(line.url);
    engine.Start();
    ApplyTimeout(line.timeout.empty() ? kDefaultTimeoutSeconds : line.timeout, engine);

    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] { progress.Show(FiguresOf(engine)); });
    ticker.start(progress.IntervalMs());
    QCoreApplication::exec();
    ticker.stop();
    progress.Show(FiguresOf(engine));
    progress.Break();

    CrawlResult result;
    result.interrupted = interrupted;
    result.bytesReceived = engine.Model().bytesReceived;
    result.faults = Combined(parts.files.Faults(), engine.MirrorFaults());
    PrintLine(CrawlCheckLine(FileSystem::ToNative(folder).string(), std::move(saved)));
    for (const std::string& reportLine : ReportLines(result)) PrintLine(reportLine);
    const int status = ExitStatus(result);
    if (status == kExitDone) std::printf("The website has been downloaded.\n");
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
        case CommandLine::Action::Check:
            return RunCheck(line.checkFolder);
        case CommandLine::Action::Window:
        case CommandLine::Action::Crawl:
            break;
    }
    return Crawl(line, argc, argv);
}

}  // namespace vantorin
