// One connection's socket, with the event model the engine is written for:
// events come on the one user-interface thread, never inside one another.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace vantorin {

enum class SocketState {
    Closed,      // free for a new connection
    Connecting,  // the host is looked up or the connection is being made
    Connected,
    Closing,  // the peer has closed its side; stays so until Close()
    Error,    // refused, unresolvable, reset; stays so until Close()
};

class Socket {
public:
    virtual ~Socket() = default;
    // Does nothing unless the socket is closed.
    virtual void Connect(const std::string& host, int port) = 0;
    virtual void Send(const std::string& bytes) = 0;
    virtual void Close() = 0;
    // Every byte waiting, one character per byte.
    virtual std::string ReadAll() = 0;
    virtual SocketState State() const = 0;
    // While held, no data event is delivered: the bytes and the peer's close
    // wait in the socket. Release delivers what waits. A job holds its socket
    // while it works on a chunk, so the next chunk is read only once it is done.
    virtual void Hold() = 0;
    virtual void Release() = 0;

    // Events. onDataArrival fires whenever unread bytes wait (unless held),
    // and again after a handler returns if bytes remain; bytes that were
    // unread when the peer's close arrived are delivered with State() Closing.
    // A close that comes after every byte was read fires nothing, so a socket
    // may hold back a received byte for a moment to hand it on with the close.
    std::function<void()> onConnected;
    std::function<void()> onDataArrival;
};

using SocketFactory = std::function<std::unique_ptr<Socket>()>;

}  // namespace vantorin
