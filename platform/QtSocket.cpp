#include "platform/QtSocket.h"

#include <QNetworkProxy>
#include <QSignalBlocker>
#include <QTcpSocket>
#include <QTimer>
#include <algorithm>

#ifdef _WIN32
#include <winsock2.h>
#else
#include <sys/socket.h>
#endif

namespace vantorin {

namespace {
// Fresh bytes are handed on after this short pause rather than at once, so
// the chunks of one burst arrive together and a close that the server sends
// right behind its last chunk is already in when that chunk is handled.
constexpr int kGatherMs = 5;
// A job ends when the engine sees the closing state during a data event, and
// a close that comes after the last byte was handed on fires no event: the
// job would wait out its timeout and be fetched again. So the last byte
// received is held back, the rest going on as it comes. It follows with the
// next bytes, or with the peer's close (the event then shows the closing
// state and the job ends at once), or alone after this long, for a server
// that keeps its line open: its bytes all arrive, that one a little late.
constexpr int kLastByteMs = 250;
constexpr qint64 kMostBuffered = 1 << 20;
}  // namespace

QtSocket::QtSocket()
    : socket_(std::make_unique<QTcpSocket>()),
      gather_(std::make_unique<QTimer>()),
      lastByte_(std::make_unique<QTimer>()) {
    gather_->setSingleShot(true);
    gather_->setInterval(kGatherMs);
    QObject::connect(gather_.get(), &QTimer::timeout, socket_.get(), [this] { Deliver(); });
    // Never early: a close within that time must find its byte still held back.
    lastByte_->setSingleShot(true);
    lastByte_->setTimerType(Qt::PreciseTimer);
    lastByte_->setInterval(kLastByteMs);
    QObject::connect(lastByte_.get(), &QTimer::timeout, socket_.get(), [this] {
        lastByteDue_ = true;
        Deliver();
    });
    // Plain connections only; no proxy is ever consulted.
    socket_->setProxy(QNetworkProxy::NoProxy);
    // A fast server waits in the system's buffers while a chunk is handled,
    // so no chunk is larger than this.
    socket_->setReadBufferSize(kMostBuffered);
    QObject::connect(socket_.get(), &QTcpSocket::connected, socket_.get(), [this] {
        if (onConnected) onConnected();
    });
    QObject::connect(socket_.get(), &QTcpSocket::readyRead, socket_.get(),
                     [this] { OnReadyRead(); });
    QObject::connect(socket_.get(), &QTcpSocket::disconnected, socket_.get(),
                     [this] { OnDisconnected(); });
    QObject::connect(socket_.get(), &QTcpSocket::errorOccurred, socket_.get(),
                     [this](QAbstractSocket::SocketError error) { OnError(error); });
}

QtSocket::~QtSocket() {
    const QSignalBlocker blocker(socket_.get());
    socket_->abort();
}

void QtSocket::Connect(const std::string& host, int port) {
    if (State() != SocketState::Closed) return;
    peerClosed_ = false;
    failed_ = false;
    socket_->connectToHost(QString::fromLatin1(host.data(), static_cast<qsizetype>(host.size())),
                           static_cast<quint16>(port));
}

void QtSocket::Send(const std::string& bytes) {
    socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

void QtSocket::Close() {
    gather_->stop();
    lastByte_->stop();
    {
        const QSignalBlocker blocker(socket_.get());
        socket_->abort();
    }
    peerClosed_ = false;
    failed_ = false;
    lastByteDue_ = false;
}

std::string QtSocket::ReadAll() {
    // Read straight into the string: a large chunk is not copied twice.
    std::string bytes(static_cast<std::size_t>(Deliverable()), '\0');
    const qint64 got = socket_->read(bytes.data(), static_cast<qint64>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(std::max<qint64>(got, 0)));
    lastByteDue_ = false;
    return bytes;
}

SocketState QtSocket::State() const {
    if (failed_) return SocketState::Error;
    // Bytes still unread after the peer's close are delivered first; the
    // closing state shows once they have been read.
    if (PeerClosed()) return BytesWaiting() ? SocketState::Connected : SocketState::Closing;
    switch (socket_->state()) {
        case QAbstractSocket::HostLookupState:
        case QAbstractSocket::ConnectingState:
            return SocketState::Connecting;
        case QAbstractSocket::ConnectedState:
            return SocketState::Connected;
        case QAbstractSocket::ClosingState:
            return SocketState::Closing;
        default:
            return SocketState::Closed;
    }
}

void QtSocket::Hold() {
    held_ = true;
}

void QtSocket::Release() {
    held_ = false;
    ScheduleDelivery();
}

void QtSocket::OnReadyRead() {
    ScheduleDelivery();
}

void QtSocket::OnDisconnected() {
    peerClosed_ = true;
    if (BytesWaiting()) ScheduleDelivery();
}

void QtSocket::OnError(int error) {
    if (error == QAbstractSocket::RemoteHostClosedError) {
        OnDisconnected();
    } else {
        failed_ = true;
    }
}

void QtSocket::Deliver() {
    if (held_ || Deliverable() == 0 || !onDataArrival) return;
    onDataArrival();
    ScheduleDelivery();
}

void QtSocket::ScheduleDelivery() {
    if (held_) return;  // Release schedules what waits
    if (Deliverable() > 0) {
        if (!gather_->isActive()) gather_->start();
    } else if (BytesWaiting()) {
        lastByte_->start();  // a byte held back alone: the hold counts from now
    }
}

bool QtSocket::PeerClosed() const {
    // A close that is already waiting behind the last byte is taken as soon
    // as it is asked about: the event that hands on the last byte must show
    // it, though Qt may not have noticed the close yet.
    if (!peerClosed_ && EndOfStreamPending()) peerClosed_ = true;
    return peerClosed_;
}

qint64 QtSocket::Deliverable() const {
    const qint64 waiting = socket_->bytesAvailable();
    if (waiting == 0 || lastByteDue_ || PeerClosed()) return waiting;
    // A full buffer with more behind it in the system's: its last byte is not
    // the page's last.
    if (waiting >= kMostBuffered && Peek() > 0) return waiting;
    return waiting - 1;
}

bool QtSocket::EndOfStreamPending() const {
    return Peek() == 0;
}

int QtSocket::Peek() const {
    const qintptr descriptor = socket_->socketDescriptor();
    if (descriptor == -1 || socket_->state() != QAbstractSocket::ConnectedState) return -1;
    // Qt keeps its sockets non-blocking, so the peek returns at once: 0 means
    // the peer's orderly close is next in line, 1 a byte, -1 nothing yet.
    char next = 0;
#ifdef _WIN32
    return ::recv(static_cast<SOCKET>(descriptor), &next, 1, MSG_PEEK);
#else
    return static_cast<int>(::recv(static_cast<int>(descriptor), &next, 1, MSG_PEEK));
#endif
}

bool QtSocket::BytesWaiting() const {
    return socket_->bytesAvailable() > 0;
}

SocketFactory QtSocketFactory() {
    return [] { return std::make_unique<QtSocket>(); };
}

}  // namespace vantorin
