// The crawl engine: 24 connections, the scheduler, and the crawl around them
// (its start, stop, pause, completion and exit). It shows what happens in its
// model and tells each outcome as an event; it asks nothing and opens nothing.
// The window and the command line drive it with the same verbs.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "engine/Connection.h"
#include "engine/CrawlEvents.h"
#include "engine/CrawlModel.h"
#include "engine/Scheduler.h"
#include "extractor/Admission.h"
#include "extractor/KeywordFilters.h"
#include "output/Mirror.h"
#include "platform/EventLoop.h"
#include "platform/FileSystem.h"
#include "platform/PageTextFile.h"
#include "platform/Socket.h"
#include "platform/Task.h"
#include "platform/Timer.h"

namespace vantorin {

// The outside world the engine works through, handed in by the program or a test.
struct EngineParts {
    FileSystem& programFiles;  // the program's lists and its "dldata" folder
    KeywordFilters& filters;   // loaded here, edited by the filter dialog
    PageTextReader pageText;
    EventLoop& loop;
    SocketFactory sockets;
    TimerFactory timers;
    std::string targetFolder;  // until a folder is chosen
};

class CrawlEngine {
public:
    // Makes the connections and the scheduler and does what a start of the
    // program does: the keyword filters read, the model fresh, "dldata" made.
    explicit CrawlEngine(EngineParts parts);
    ~CrawlEngine();
    CrawlEngine(const CrawlEngine&) = delete;
    CrawlEngine& operator=(const CrawlEngine&) = delete;

    const CrawlModel& Model() const { return model_; }
    const Connection& ConnectionAt(int number) const { return *connections_.at(Index(number)); }
    std::function<void(const CrawlEvent&)> onEvent;

    // The window reloaded after a stop: the start of the program again.
    void Reload();
    // The address box's text as typed; Start cleans it.
    void SetAddress(std::string text);
    // The start button, or Enter in the address box: a crawl of the address
    // into the chosen folder, its start page fetched at once.
    void Start();
    // The connections box, typed: not a number, or from 24 up, is refused
    // (the count goes back to "4" and LimitRefused is told).
    void TypeConnectionLimit(std::string text);
    // The connections box, chosen from its list: the rows above it are reset.
    void ChooseConnectionLimit(std::string text);
    // The stop question answered Yes: every job ends, the placeholders are
    // swept, Stopped is told (the window reloads), and after a turn of the
    // event loop the status says so.
    void Stop();
    // Pausing holds the scheduler only: open connections go on to their end.
    void Pause();
    void Resume();
    // The exit question answered other than No: a running crawl is stopped,
    // the placeholders swept, and Ended is told.
    void Exit();

    // The folder the next crawl saves to.
    void SetTargetFolder(std::string folder);
    const std::string& TargetFolder() const { return targetFolder_; }
    // Every connection's silence timeout; false, and nothing changed, when no
    // timer can hold it.
    bool SetSilenceTimeout(long long ms);
    // What the mirror could not write, for the command line's report.
    const WriteFaults& MirrorFaults() const { return mirrorFiles_.Faults(); }

private:
    friend class Connection;
    friend class Scheduler;

    static std::size_t Index(int number) { return static_cast<std::size_t>(number - 1); }
    Connection& At(int number) { return *connections_.at(Index(number)); }
    // The connections box read as a number, afresh each time.
    double ConnectionLimit() const;
    bool AllClosed() const;
    void CloseAll();
    void Load();
    // Every job ended at once: the scheduler off, the placeholders swept, the
    // queue emptied, every connection torn down, the crawl idle.
    void HardStop();
    // The counters as the tick shows them.
    void ShowCounts();
    Admission Admit();
    void Tell(CrawlEvent event);
    void Tell(CrawlEvent::Kind kind);
    // After a job: with the queue empty and every connection closed the site
    // is complete.
    Task<> CompleteIfDone();
    Task<> Complete();
    Task<> StopSteps();
    Task<> ExitSteps();

    CrawlModel model_;
    FileSystem& programFiles_;
    KeywordFilters& filters_;
    EventLoop& loop_;
    // Every path the crawl writes comes from a page or an address, so the
    // mirror's file system holds to the target folder alone: a name such as
    // "..www.\" (a ".." once "www." is cut) must not reach the program folder.
    FileSystem mirrorFiles_;
    Mirror mirror_;
    std::string targetFolder_;
    std::string wantedTypes_;  // each wanted extension wrapped in colons
    std::array<std::unique_ptr<Connection>, kConnectionCount> connections_;
    Scheduler scheduler_;
    // Last, so the jobs still waiting go first: they refer to all of the above.
    Jobs jobs_;
};

}  // namespace vantorin
