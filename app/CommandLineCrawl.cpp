// One crawl with no window: the wizard's download steps with the options in
// place of its boxes, then the engine's events turned into the command line's
// own lines and exit status.
#include "app/CommandLineCrawl.h"

#include <unistd.h>

#include <QCoreApplication>
#include <QTimer>
#include <cstdio>
#include <utility>
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

// The wizard's download steps with the options in place of its boxes; false,
// after saying so, when the folder is refused. Nothing is read from or stored
// in the settings: a run's options hold for that run alone.
bool PrepareCrawl(const CommandLine& line, const std::string& folder, ProgramParts& parts) {
    parts.engine.ChooseConnectionLimit(line.connections);
    PrintHints(line, folder, parts.files);
    std::vector<std::string> fileTypes;
    FillFileTypesList(fileTypes, parts.files);
    if (!PrepareTargetFolder(folder, parts.files, parts.engine)) {
        PrintLine("Eror: That is an invalid directory. Check it has no invalid characters.");
        return false;
    }
    SaveFileTypes(fileTypes, parts.files);
    return true;
}

// Follows the crawl's events: the files written, for the offline check at the
// end, and the pages that could not be saved, to give up on a folder that
// refuses them. The event loop ends with the crawl.
class CrawlFollower {
public:
    CrawlFollower(CrawlEngine& engine, ProgressLine& progress)
        : engine_(engine), progress_(progress) {
        engine.onEvent = [this](const CrawlEvent& event) { Follow(event); };
    }
    // Ctrl+C or a termination signal.
    void Interrupt() {
        progress_.Break();
        PrintLine("Interrupted: stopping the crawl.");
        interrupted = true;
        End();
    }
    bool interrupted = false;
    std::vector<std::string> saved;

private:
    void Follow(const CrawlEvent& event) {
        switch (event.kind) {
            case CrawlEvent::Kind::PageSaved:
                if (event.saved.written)
                    saved.push_back(FileSystem::ToNative(event.saved.path).string());
                if (unsaved_.Note(event.saved.written) && !ending_) {
                    progress_.Break();
                    PrintLine(unsaved_.GaveUpLine());
                    End();
                }
                break;
            case CrawlEvent::Kind::SiteDownloaded:
            case CrawlEvent::Kind::Ended:
                QCoreApplication::exit();
                break;
            default:
                break;
        }
    }
    void End() {
        if (ending_) return;
        ending_ = true;
        engine_.Exit();
    }
    CrawlEngine& engine_;
    ProgressLine& progress_;
    UnsavedPages unsaved_;
    bool ending_ = false;
};

// The closing lines (the offline check over the files written, the report,
// the done line on standard output) and the exit status.
int Finish(CrawlFollower& follower, const std::string& folder, ProgramParts& parts) {
    CrawlResult result;
    result.interrupted = follower.interrupted;
    result.bytesReceived = parts.engine.Model().bytesReceived;
    result.faults = Combined(parts.files.Faults(), parts.engine.MirrorFaults());
    PrintLine(CrawlCheckLine(FileSystem::ToNative(folder).string(), std::move(follower.saved)));
    for (const std::string& reportLine : ReportLines(result)) PrintLine(reportLine);
    const int status = ExitStatus(result);
    if (status == kExitDone) std::printf("The website has been downloaded.\n");
    return status;
}

int Crawl(const CommandLine& line, int argc, char** argv) {
    QCoreApplication app(argc, argv);
    ProgressLine progress(isatty(STDERR_FILENO) == 1);
    ProgramParts parts;
    // The folder as the wizard's box would hold it.
    const std::string folder = NormaliseFolderText(FromDisplayPath(line.dir));
    if (!PrepareCrawl(line, folder, parts)) return kExitFolderError;

    CrawlFollower follower(parts.engine, progress);
    StopSignals stopSignals([&follower] { follower.Interrupt(); });
    parts.engine.SetAddress(line.url);
    parts.engine.Start();
    ApplyTimeout(line.timeout.empty() ? kDefaultTimeoutSeconds : line.timeout, parts.engine);

    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] { progress.Show(FiguresOf(parts.engine)); });
    ticker.start(progress.IntervalMs());
    QCoreApplication::exec();
    ticker.stop();
    progress.Show(FiguresOf(parts.engine));
    progress.Break();
    return Finish(follower, folder, parts);
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
