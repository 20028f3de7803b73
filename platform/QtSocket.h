// The socket over QTcpSocket, with the event model the engine is written for.
// dataArrival comes a few milliseconds after bytes arrive, so a burst and a
// close right behind it are seen together; it comes again after a handler
// returns while bytes wait, never nested. The last byte received is held back
// until more come, the peer closes, or a quarter second passes, so that a
// close shortly behind the last bytes is seen with them. The closing state
// shows once the peer has closed and every byte has been read; an error stays
// until Close().
#pragma once

#include <QtGlobal>
#include <memory>
#include <string>

#include "platform/Socket.h"

class QTcpSocket;
class QTimer;

namespace vantorin {

class QtSocket : public Socket {
public:
    QtSocket();
    ~QtSocket() override;
    QtSocket(const QtSocket&) = delete;
    QtSocket& operator=(const QtSocket&) = delete;

    // Does nothing unless the socket is closed, as a connect on a busy socket fails.
    void Connect(const std::string& host, int port) override;
    void Send(const std::string& bytes) override;
    void Close() override;
    std::string ReadAll() override;
    SocketState State() const override;
    void Hold() override;
    void Release() override;

private:
    void OnReadyRead();
    void OnDisconnected();
    void OnError(int error);
    void Deliver();
    void ScheduleDelivery();
    bool PeerClosed() const;
    // The bytes the next data event hands on: all that wait but the last one,
    // unless the peer has closed or the hold is over.
    qint64 Deliverable() const;
    bool EndOfStreamPending() const;
    // What the system holds next: 0 the peer's close, 1 a byte, -1 nothing.
    int Peek() const;
    bool BytesWaiting() const;

    std::unique_ptr<QTcpSocket> socket_;
    std::unique_ptr<QTimer> gather_;
    std::unique_ptr<QTimer> lastByte_;
    // Set when the peer's close is seen, also from State()'s look at the line.
    mutable bool peerClosed_ = false;
    bool failed_ = false;
    // The held-back last byte goes with the next data event: its time is over.
    bool lastByteDue_ = false;
    bool held_ = false;  // by a job working on a chunk
};

// Makes real sockets for the engine's 24 connections.
SocketFactory QtSocketFactory();

}  // namespace vantorin
