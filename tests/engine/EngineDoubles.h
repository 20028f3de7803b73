// Doubles for driving the engine by hand: a scripted socket, a timer whose
// ticks the test fires, a recording main window, scripted dialogs and a
// recording shell, and a fixture that wires them into one engine over a
// temporary target folder.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "engine/CrawlEngine.h"
#include "platform/Text.h"
#include "tests/support/ScriptedDialogs.h"
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
    void SetEnabled(bool on) override { enabled = on; }
    bool Enabled() const override { return enabled; }
    void Fire() { onTimer(); }

    int interval = 0;
    bool enabled = false;
};

// Factories that hand out doubles and keep a pointer to each, in the order the
// engine makes them (24 sockets; 24 timeout timers, then tmrMove).
inline SocketFactory RecordingSockets(std::vector<FakeSocket*>& made) {
    return [&made] {
        auto s = std::make_unique<FakeSocket>();
        made.push_back(s.get());
        return s;
    };
}
inline TimerFactory RecordingTimers(std::vector<FakeTimer*>& made) {
    return [&made] {
        auto t = std::make_unique<FakeTimer>();
        made.push_back(t.get());
        return t;
    };
}

class RecordingWindow : public WindowSeam {
public:
    StringList& List1() override { return list1; }
    StringList& List2() override { return list2; }
    std::string Text1() const override { return text1; }
    void SetText1(const std::string& t) override { text1 = t; }
    void SetText1Enabled(bool) override {}
    void FocusText1() override {}
    bool Command1Enabled() const override { return command1; }
    void SetCommand1Enabled(bool on) override { command1 = on; }
    void SetCommand2Enabled(bool) override {}
    void SetPauseEnabled(bool) override {}
    std::string TxtMax() const override { return txtMax; }
    void SetTxtMax(const std::string& t) override { txtMax = t; }
    void SetLabel6(const std::string& c) override { label6 = c; }
    void SetLabel3(const std::string&) override {}
    void SetLabel4(const std::string&) override {}
    void SetLabel5(const std::string&) override {}
    void SetRowStatus(int slot, const std::string& c) override { status[slot] = c; }
    void SetRowSize(int, const std::string&) override {}
    void SetRowReceived(int slot, const std::string& c) override { received[slot] = c; }
    void ReloadWindow() override {}
    void EndProgram() override {}

    VectorList list1, list2;
    std::string text1, txtMax = "4", label6;
    bool command1 = true;
    std::map<int, std::string> status, received;
};

class RecordingShell : public ShellOpen {
public:
    void OpenFolder(const std::string& folder) override { folders.push_back(folder); }
    void OpenAddress(const std::string& address) override { addresses.push_back(address); }
    std::vector<std::string> folders, addresses;
};

// One engine over the doubles, its target folder a fresh temporary folder.
class EngineTest : public ::testing::Test {
protected:
    EngineTest()
        : fs(vars.TargetFolder, dir.Backslashed() + "prog"),
          engine(
              window, dialogs, shell, vars, fs, PageTextReader(),
              [this] { std::exchange(duringYield, [] {})(); },  // runs duringYield once
              RecordingSockets(sockets), RecordingTimers(timers)) {
        vars.TargetFolder = dir.Backslashed() + "site\\";
        fs.CreateFolder(vars.TargetFolder);
    }

    FakeSocket& sock(int n) { return *sockets.at(static_cast<std::size_t>(n - 1)); }
    FakeTimer& out(int n) { return *timers.at(static_cast<std::size_t>(n - 1)); }
    FakeTimer& move() { return *timers.at(kSlotCount); }

    // Starts a crawl of `address` as the start button does.
    void Start(const std::string& address) {
        window.text1 = address;
        engine.ConnectNowNow();
    }

    TempDir dir;
    CrawlVariables vars;
    FileSystem fs;
    RecordingWindow window;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    std::vector<FakeSocket*> sockets;
    std::vector<FakeTimer*> timers;  // 24 timeout timers, then tmrMove
    std::function<void()> duringYield = [] {};
    CrawlEngine engine;
};

}  // namespace vantorin::testing
