// The crawl engine: the 24 connection slots with their sockets and timeout
// timers, the start of a crawl, the scheduler tick, the HTTP exchange,
// timeouts, stop, pause, completion, exit and the counters. Its state
// (CrawlState) holds what the design keeps in the window's controls; the
// window renders it and calls the engine's verbs, the command line drives the
// same engine with no window. Handlers are plain methods: the Qt signals call
// them and tests call them directly.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "engine/CrawlState.h"
#include "output/CrawlVariables.h"
#include "output/Mirror.h"
#include "platform/Dialogs.h"
#include "platform/FileSystem.h"
#include "platform/PageText.h"
#include "platform/ShellOpen.h"
#include "platform/Socket.h"
#include "platform/Timer.h"
#include "platform/Yield.h"

namespace vantorin {

inline constexpr int kDefaultTimeoutMs = 20000;  // until the wizard sets the timers
inline constexpr int kSchedulerTickMs = 20;

// The first line of the completion question, which the command line repeats
// on its standard output.
inline constexpr const char* kSiteDownloadedText = "The website has been downloaded.";

// One connection's job.
struct ConnectionSlot {
    std::string Url;       // host/path form, no scheme
    std::string Host;      // Url before its first "/"
    std::string Path;      // starts with "/"
    std::string Response;  // every byte received for the job, header included
    std::int32_t ContentLength = 0;
    std::int32_t BytesReceived = 0;
    std::int16_t Attempts = 0;
};

// How a crawl ended, as the engine reports it to whoever drives it.
enum class CrawlOutcome {
    SiteComplete,  // the queue ran dry with every socket closed; reported once
                   // the "Done." question has been answered
    Stopped,       // the user confirmed the stop question; the window unloads
                   // and shows itself again, reloaded, when told
};

// The HTTP/1.0 request for a slot's host and path (after "/index.html" -> "/"):
// "GET " P " HTTP/1.0", "Host: " H, "Referrer: " H, the fixed agent line and
// the empty line, each ending in CR LF. H is the host with every "/" removed,
// trimmed; P the path with every "//" replaced by "/".
std::string BuildRequestText(const std::string& host, const std::string& path);

// The outside effects the engine works through, handed in by the program or a test.
struct EngineSeams {
    Dialogs& dialogs;
    ShellOpen& shell;
    PageTextReader pageText;
    Yield yield;
    SocketFactory sockets;
    TimerFactory timers;
};

class CrawlEngine {
public:
    // Makes the 24 sockets and timeout timers (20000 ms, disabled) and the
    // scheduler tick tmrMove (20 ms, disabled), and wires their events to the
    // handlers below. `vars` and `fs` must outlive the engine.
    CrawlEngine(CrawlVariables& vars, FileSystem& fs, EngineSeams seams);
    ~CrawlEngine();
    CrawlEngine(const CrawlEngine&) = delete;
    CrawlEngine& operator=(const CrawlEngine&) = delete;

    CrawlState& State() { return state_; }
    const CrawlState& State() const { return state_; }
    bool Running() const { return state_.Running(); }

    // Told how a crawl ended, and when the exit has unloaded the window.
    std::function<void(CrawlOutcome)> onOutcome;
    // Told after each finished download's save whether its file was written.
    std::function<void(bool written)> onPageSaved;
    std::function<void()> onEndProgram;

    // --- the window's load (and reload after a stop) ---
    // Keyword filters read from "filters.txt", the designed state (rows "Not
    // Connected.", txtMax "4", counters 0), every timeout timer back at 20000
    // ms and off, and the folder "dldata" made beside the program.
    void ResetForReload();
    // The reloaded window's first activation has shown the wizard.
    void ClearStopping() { state_.Stopping = false; }

    // --- start (Command1_Click, and Enter in Text1) ---
    void ConnectNowNow();
    void Text1_KeyDown(int keyCode);  // 13 (Enter) starts; any other key nothing

    // --- scheduler ---
    void tmrMove_Timer();
    void ConnectNext(std::string address);
    int FindFreeSlot();  // 1..N, or 0
    void CloseAllSockets();
    void txtMax_Change();  // the connections count was typed
    void txtMax_Click();   // an item was chosen from the list

    // --- HTTP exchange (socket events of slot i, 1..24) ---
    void Sock_Connect(int i);
    void Sock_DataArrival(int i);
    // Called after every chunk; empty, and kept so as a no-op.
    void ShowMatrixSizes() {}
    void ProcessResponse(const std::string& data, int i);

    // --- timeouts, rows, stop, pause, completion, exit, counters ---
    void tmrOut_Timer(int i);
    void ResetSlotRow(int i);
    void SetSlotStatus(int i, const std::string& text);
    bool AllSocketsClosed() const;
    void SiteComplete();
    void StopNOW();
    // Command2_Click, the stop button. The question is asked without waiting
    // for it; the answer runs the stop's steps on Yes, then `afterAnswer`
    // whatever the answer was.
    void AskStop(std::function<void()> afterAnswer = {});
    void PauseBegin();  // mnupause_Click's engine half; the window then shows frmPause modally
    void PauseEnd();    // frmPause's unload, however it is closed
    // The main window's unload. When Stopping is set it answers true at once
    // and asks nothing (the window is being reloaded). Otherwise it asks the
    // exit question without waiting for it: No answers false (the window
    // stays); any other answer stops a running crawl, sweeps the temporary
    // files, disables the tick, closes all sockets, calls onEndProgram and
    // answers true.
    void AskExit(std::function<void(bool unload)> answered);
    void UpdateStats();

    // --- the wizard's timeout choice ---
    // False when the timer cannot hold `ms` (negative, or past 32 bits): the
    // wizard then stops at that slot, so later slots keep their interval.
    bool SetTimeoutInterval(int slot, long long ms);
    int TimeoutInterval(int slot) const;

    // --- accessors (1-based slot numbers) ---
    ConnectionSlot& Slot(int n) { return slots_[Index(n)]; }
    const ConnectionSlot& Slot(int n) const { return slots_[Index(n)]; }
    Socket& Sock(int n) { return *sockets_[Index(n)]; }
    const Socket& Sock(int n) const { return *sockets_[Index(n)]; }
    Timer& tmrOut(int n) { return *timeouts_[Index(n)]; }
    Timer& tmrMove() { return *tmrMove_; }
    Mirror& MirrorState() { return mirror_; }
    // The file system the mirror writes through, for what it failed to write.
    const FileSystem& MirrorFileSystem() const { return mirrorFs_; }

private:
    static bool ValidSlot(int i) { return i >= 1 && i <= kSlotCount; }
    static std::size_t Index(int n) { return static_cast<std::size_t>(n - 1); }
    double ConnectionsCount() const;  // the value of txtMax, read afresh
    void LetPendingEventsRun() { RunPending(mirror_.yield); }
    void Report(CrawlOutcome outcome) {
        if (onOutcome) onOutcome(outcome);
    }
    // The named steps of ProcessResponse.
    void ShowChunkOnRow(const std::string& data, int i);
    void StopConfirmed();  // AskStop's steps on Yes
    void SaveFinishedJob(int i);
    std::string FinishedJobBase(int i);
    // Raised whenever a slot's socket is (re)connected or the slot is torn
    // down, so a handler that let events run can tell that the job it was
    // working on is no longer the slot's and leave the slot alone.
    unsigned& AttemptId(int i) { return attemptIds_[Index(i)]; }

    CrawlState state_;
    CrawlVariables& vars_;
    FileSystem& fs_;  // the program's lists are read through it
    Dialogs& dialogs_;
    ShellOpen& shell_;
    // Every path the crawl writes comes from a page or an address, so the
    // mirror's file system holds to the target folder alone: a name such as
    // "..www.\" (a ".." once "www." is cut) must not reach the program folder.
    FileSystem mirrorFs_;
    Mirror mirror_;
    std::array<ConnectionSlot, kSlotCount> slots_{};
    std::array<std::unique_ptr<Socket>, kSlotCount> sockets_;
    std::array<std::unique_ptr<Timer>, kSlotCount> timeouts_;
    std::unique_ptr<Timer> tmrMove_;
    std::array<unsigned, kSlotCount> attemptIds_{};
};

}  // namespace vantorin
