// One connection's socket, with the event model the engine is written for.
// States: 0 closed, 6 connecting (resolving included), 7 connected,
// 8 closing (the peer closed its side; stays until Close()), 9 error (stays
// until Close()). A slot is free only at 0.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace vantorin {

enum SocketState : int {
    kSockClosed = 0,
    kSockConnecting = 6,
    kSockConnected = 7,
    kSockClosing = 8,
    kSockError = 9,
};

class Socket {
public:
    virtual ~Socket() = default;
    virtual void Connect(const std::string& host, int port) = 0;
    virtual void Send(const std::string& bytes) = 0;
    virtual void Close() = 0;
    // Every byte waiting, one character per byte.
    virtual std::string ReadAll() = 0;
    virtual int State() const = 0;

    // Events, delivered on the UI thread. onDataArrival fires whenever unread
    // bytes wait, and again after a handler returns if bytes remain; bytes that
    // were unread when the peer's close arrived are delivered with State() 8.
    // A close that comes after every byte was read fires nothing, so a socket
    // may hold back a received byte for a moment to hand it on with the close.
    std::function<void()> onConnected;
    std::function<void()> onDataArrival;
};

using SocketFactory = std::function<std::unique_ptr<Socket>()>;

}  // namespace vantorin
