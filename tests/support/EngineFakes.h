// Doubles for driving the engine by hand: a scripted socket, a timer whose
// ticks the test fires, the factories that hand them to the engine and a
// recording shell. No test framework is needed, so fuzz targets use them too.
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

class RecordingShell : public ShellOpen {
public:
    void OpenFolder(const std::string& folder) override { folders.push_back(folder); }
    void OpenAddress(const std::string& address) override { addresses.push_back(address); }
    std::vector<std::string> folders, addresses;
};

}  // namespace vantorin::testing
