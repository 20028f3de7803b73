// The crawl engine: the 24 connection slots with their sockets and timeout
// timers, the start of a crawl, the scheduler tick, the HTTP exchange,
// timeouts, stop, pause, completion, exit and the counters. Handlers are plain
// methods: the Qt signals call them and tests call them directly.
//
// A crawl is running exactly while the window's start button (Command1) is
// disabled; the engine keeps no flag of its own for it.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "engine/WindowSeam.h"
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

inline constexpr int kSlotCount = 24;
inline constexpr int kDefaultTimeoutMs = 20000;  // until the wizard sets the timers
inline constexpr int kSchedulerTickMs = 20;

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

// The HTTP/1.0 request for a slot's host and path (after "/index.html" -> "/"):
// "GET " P " HTTP/1.0", "Host: " H, "Referrer: " H, the fixed agent line and
// the empty line, each ending in CR LF. H is the host with every "/" removed,
// trimmed; P the path with every "//" replaced by "/".
std::string BuildRequestText(const std::string& host, const std::string& path);

class CrawlEngine {
public:
    // Makes the 24 sockets and timeout timers (20000 ms, disabled) and the
    // scheduler tick tmrMove (20 ms, disabled), and wires their events to the
    // handlers below. Every reference must outlive the engine.
    CrawlEngine(WindowSeam& window, Dialogs& dialogs, ShellOpen& shell, CrawlVariables& vars,
                FileSystem& fs, PageTextReader pageText, Yield yield, SocketFactory sockets,
                TimerFactory timers);
    ~CrawlEngine();
    CrawlEngine(const CrawlEngine&) = delete;
    CrawlEngine& operator=(const CrawlEngine&) = delete;

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
    void AskStop();     // Command2_Click, the stop button
    void PauseBegin();  // mnupause_Click's engine half; the window then shows frmPause modally
    void PauseEnd();    // frmPause's unload, however it is closed
    // The main window's unload. Returns false when the user keeps the window
    // (answered No). When Stopping is set it returns true at once and asks
    // nothing (the window is being reloaded). Otherwise, on any answer but No,
    // it stops a running crawl, sweeps the temporary files, disables the tick,
    // closes all sockets, calls window.EndProgram() and returns true.
    bool ExitRequested();
    void UpdateStats();

    // --- the wizard's timeout choice ---
    void SetTimeoutInterval(int slot, int ms);
    int TimeoutInterval(int slot) const;

    // Counters shown by UpdateStats; Stopping is cleared by the window on its
    // first activation after a reload.
    std::int32_t TotalBytes = 0;
    std::int32_t FilesDone = 0;
    bool Stopping = false;

    // --- accessors (1-based slot numbers) ---
    ConnectionSlot& Slot(int n) { return slots_[static_cast<std::size_t>(n - 1)]; }
    const ConnectionSlot& Slot(int n) const { return slots_[static_cast<std::size_t>(n - 1)]; }
    Socket& Sock(int n) { return *sockets_[static_cast<std::size_t>(n - 1)]; }
    const Socket& Sock(int n) const { return *sockets_[static_cast<std::size_t>(n - 1)]; }
    Timer& tmrOut(int n) { return *timeouts_[static_cast<std::size_t>(n - 1)]; }
    Timer& tmrMove() { return *tmrMove_; }
    Mirror& MirrorState() { return mirror_; }
    bool Running() const { return !window_.Command1Enabled(); }

private:
    static bool ValidSlot(int i) { return i >= 1 && i <= kSlotCount; }
    double ConnectionsCount() const;  // the value of txtMax, read afresh
    void LetPendingEventsRun() { RunPending(mirror_.yield); }
    // Raised whenever a slot's socket is (re)connected or the slot is torn
    // down, so a handler that let events run can tell that the job it was
    // working on is no longer the slot's and leave the slot alone.
    unsigned& AttemptId(int i) { return attemptIds_[static_cast<std::size_t>(i - 1)]; }

    WindowSeam& window_;
    Dialogs& dialogs_;
    ShellOpen& shell_;
    CrawlVariables& vars_;
    FileSystem& fs_;  // the program's lists are read through it
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
