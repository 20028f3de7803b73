// One crawl engine over doubles driven by hand: scripted sockets, timers whose
// ticks the test fires, a recording shell and dialogs that answer from a
// script, its program folder ("prog") and target folder ("site") in a fresh
// temporary folder. With dialogs other than the scripted ones (the real
// message boxes) the engine's yields run the event loop, as the program's do;
// `duringYield` runs before each.
#pragma once

#include <QCoreApplication>
#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "engine/CrawlEngine.h"
#include "platform/Dialogs.h"
#include "platform/ShellOpen.h"
#include "platform/Socket.h"
#include "platform/Timer.h"
#include "tests/support/TempDir.h"

namespace vantorin::testing {

class FakeSocket : public Socket {
public:
    void Connect(const std::string& host, int port) override {
        connects.emplace_back(host, port);
        state = kSockConnecting;
    }
    void Send(const std::string& bytes) override { sent.push_back(bytes); }
    void Close() override {
        state = kSockClosed;
        unread.clear();
    }
    std::string ReadAll() override { return std::exchange(unread, std::string()); }
    int State() const override { return state; }

    // Scripted events.
    void Accept() {
        state = kSockConnected;
        onConnected();
    }
    void Receive(const std::string& bytes, bool peerClosesToo = false) {
        unread += bytes;
        if (peerClosesToo) state = kSockClosing;
        onDataArrival();
    }

    int state = kSockClosed;
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
    void Fire() { onTimer(); }

    int interval = 0;
    bool enabled = false;
    int starts = 0;  // times enabled afresh: each restarts the count
};

// A factory of doubles that keeps a pointer to each, in the order the engine
// makes them (24 sockets; 24 timeout timers, then tmrMove).
template <class Fake>
auto Recording(std::vector<Fake*>& made) {
    return [&made] {
        auto fake = std::make_unique<Fake>();
        made.push_back(fake.get());
        return fake;
    };
}

class RecordingShell : public ShellOpen {
public:
    void OpenFolder(const std::string& folder) override { folders.push_back(folder); }
    void OpenAddress(const std::string& address) override { addresses.push_back(address); }
    std::vector<std::string> folders, addresses;
};

// Dialogs that answer from a script and record each message box as one line,
// "title style: text", so a test compares what was asked in one expression.
class ScriptedDialogs : public Dialogs {
public:
    int MsgBox(const std::string& text, const std::string& title, int style) override {
        asked.push_back(title + " " + std::to_string(style) + ": " + text);
        if (answers.empty()) return kAnswerOk;
        const int answer = answers.front();
        answers.pop_front();
        return answer;
    }
    // A question asked without waiting is answered at once from the script,
    // unless answers are held: then it is recorded and its answer waits in
    // `held` until the test gives it.
    void Ask(const std::string& text, const std::string& title, int style,
             std::function<void(int answer)> answered) override {
        if (!holdAnswers) return Dialogs::Ask(text, title, style, std::move(answered));
        asked.push_back(title + " " + std::to_string(style) + ": " + text);
        held.push_back(std::move(answered));
    }
    std::optional<std::string> InputBox(const std::string&, const std::string&,
                                        const std::string&) override {
        if (inputs.empty()) return std::nullopt;
        auto input = inputs.front();
        inputs.pop_front();
        return input;
    }
    std::vector<std::string> asked;  // "title style: text"
    std::deque<int> answers;
    std::deque<std::optional<std::string>> inputs;
    bool holdAnswers = false;
    std::vector<std::function<void(int answer)>> held;
};

template <class DialogsT = ScriptedDialogs>
struct EngineWorld {
    EngineWorld() {
        std::filesystem::create_directories(dir.NativePath("prog"));
        fs.CreateFolder(vars.TargetFolder = dir.Backslashed() + "site\\");
    }
    TempDir dir;
    CrawlVariables vars;
    FileSystem fs{vars.TargetFolder, dir.Backslashed() + "prog\\"};
    DialogsT dialogs;
    RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;  // 24 timeout timers, then tmrMove
    std::function<void()> duringYield = [] {};
    CrawlEngine engine{vars,
                       fs,
                       {dialogs, shell, PageTextReader(),
                        [this] {
                            duringYield();
                            if constexpr (!std::is_same_v<DialogsT, ScriptedDialogs>)
                                QCoreApplication::processEvents();
                        },
                        Recording(sockets), Recording(timers)}};
    CrawlState& state = engine.State();
};

}  // namespace vantorin::testing
