// The engine's outside world, driven by hand: sockets whose events the test
// scripts, timers whose ticks it fires, and a shell that records what it opens.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/ShellOpen.h"
#include "platform/Socket.h"
#include "platform/Timer.h"

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

}  // namespace vantorin::testing
