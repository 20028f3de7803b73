// One crawl engine over doubles driven by hand: scripted sockets, timers whose
// ticks the test fires, an event loop the test turns, a recording shell and
// dialogs that answer from a script, its program folder ("prog") and target
// folder ("site") in a fresh temporary folder.
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "engine/CrawlEngine.h"
#include "platform/Dialogs.h"
#include "platform/ShellOpen.h"
#include "tests/support/HandTurnedLoop.h"
#include "tests/support/TempDir.h"

namespace vantorin::testing {

// Runs a socket's or a timer's handler as its event would. Each handler returns
// when its job waits for the event loop: one run inside another fails the test.
inline void RunHandler(const std::function<void()>& handler) {
    static int running = 0;
    EXPECT_EQ(running++, 0) << "a handler ran inside another";
    handler();
    --running;
}

class FakeSocket : public Socket {
public:
    void Connect(const std::string& host, int port) override {
        connects.emplace_back(host, port);
        state = SocketState::Connecting;
    }
    void Send(const std::string& bytes) override { sent.push_back(bytes); }
    void Close() override {
        state = SocketState::Closed;
        unread.clear();
    }
    std::string ReadAll() override { return std::exchange(unread, std::string()); }
    SocketState State() const override { return state; }
    void Hold() override { held = true; }
    void Release() override {  // hands on what waits
        held = false;
        if (!unread.empty()) RunHandler(onDataArrival);
    }

    // Scripted events.
    void Accept() {
        state = SocketState::Connected;
        RunHandler(onConnected);
    }
    // Bytes come in (and the peer closes with them, when asked); they are
    // handed on at once unless the socket is held.
    void Receive(const std::string& bytes, bool peerClosesToo = false) {
        unread += bytes;
        if (peerClosesToo) state = SocketState::Closing;
        if (!held) Release();
    }

    SocketState state = SocketState::Closed;
    bool held = false;
    std::string unread;
    std::vector<std::pair<std::string, int>> connects;
    std::vector<std::string> sent;
};

class FakeTimer : public Timer {
public:
    void SetInterval(int ms) override { interval = ms; }
    int Interval() const override { return interval; }
    void SetEnabled(bool on) override {
        starts += on && !enabled;
        enabled = on;
    }
    bool Enabled() const override { return enabled; }
    void Fire() { RunHandler(onTimer); }

    int interval = 0;
    bool enabled = false;
    int starts = 0;  // times enabled afresh: each restarts the count
};

// A factory of doubles that keeps a pointer to each, in the order the engine
// makes them.
template <class Fake>
auto Recording(std::vector<Fake*>& made) {
    return [&made] { return std::unique_ptr<Fake>(made.emplace_back(new Fake)); };
}

class RecordingShell : public ShellOpen {
public:
    void OpenFolder(const std::string& folder) override { folders.push_back(folder); }
    void OpenAddress(const std::string& address) override { addresses.push_back(address); }
    std::vector<std::string> folders, addresses;
};

// Dialogs that answer from a script and record each message box as one line,
// "title style: text", so a test compares what was asked in one expression.
// With answers held, a question is recorded and its answer waits in `held`
// until the test gives it.
class ScriptedDialogs : public Dialogs {
public:
    void Ask(const std::string& text, const std::string& title, int style,
             std::function<void(int answer)> answered) override {
        asked.push_back(title + " " + std::to_string(style) + ": " + text);
        if (holdAnswers) return held.push_back(std::move(answered));
        const int answer = answers.empty() ? kAnswerOk : answers.front();
        if (!answers.empty()) answers.pop_front();
        if (answered) answered(answer);
    }
    void AskText(const std::string& prompt, const std::string&, const std::string&,
                 std::function<void(std::optional<std::string>)> answered) override {
        prompts.push_back(prompt);
        const auto input = inputs.empty() ? std::nullopt : inputs.front();
        if (!inputs.empty()) inputs.pop_front();
        answered(input);
    }
    std::vector<std::string> asked, prompts;  // asked: "title style: text"
    std::deque<int> answers;
    std::deque<std::optional<std::string>> inputs;
    bool holdAnswers = false;
    std::vector<std::function<void(int answer)>> held;
};

struct EngineWorld {
    EngineWorld() {
        std::filesystem::create_directories(dir.NativePath("prog"));
        std::filesystem::create_directories(dir.NativePath("site"));
    }
    TempDir dir;
    FileSystem files{dir.Backslashed() + "site\\", dir.Backslashed() + "prog\\"};
    KeywordFilters filters;
    HandTurnedLoop loop;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;  // the tick, then one silence timer per connection
    CrawlEngine engine{{files, filters, PageTextReader(), loop, Recording(sockets),
                        Recording(timers), dir.Backslashed() + "site\\"}};
    const CrawlModel& model = engine.Model();

    FakeSocket& socket(int n) { return *sockets.at(static_cast<std::size_t>(n - 1)); }
    FakeTimer& silence(int n) { return *timers.at(static_cast<std::size_t>(n)); }
    FakeTimer& tick() { return *timers.at(0); }
    // A start as the start button makes it.
    void Start(const std::string& address) {
        engine.SetAddress(address);
        engine.Start();
    }
};

}  // namespace vantorin::testing
