#include "platform/QtSocket.h"

#include <gtest/gtest.h>

#include "tests/platform/QtTestApp.h"

#include <sys/socket.h>

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <functional>
#include <utility>
#include <vector>

namespace vantorin::testing {
namespace {

// A real socket against an in-process server on 127.0.0.1, an ephemeral port.
class QtSocketTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
        socket.onConnected = [this] { ++connectedEvents; };
        socket.onDataArrival = [this] {
            if (handler) handler();
        };
    }

    // Connects and accepts; the server side of the connection is `peer`.
    void ConnectBoth() {
        socket.Connect("127.0.0.1", server.serverPort());
        EXPECT_EQ(socket.State(), kSockConnecting);
        ASSERT_TRUE(
            PumpUntil([this] { return connectedEvents == 1 && server.hasPendingConnections(); }));
        peer = server.nextPendingConnection();
        ASSERT_NE(peer, nullptr);
    }
    // The server sends and closes before the client sees anything.
    void PeerSendsAndCloses(const QByteArray& bytes) {
        if (!bytes.isEmpty()) {
            peer->write(bytes);
            peer->waitForBytesWritten(1000);
        }
        peer->disconnectFromHost();
        if (peer->state() != QAbstractSocket::UnconnectedState) peer->waitForDisconnected(1000);
    }
    void PeerSends(const QByteArray& bytes) {
        peer->write(bytes);
        peer->waitForBytesWritten(1000);
    }
    // The handler most tests use: read everything, note the state seen.
    void RecordDeliveries() {
        handler = [this] {
            std::string data = socket.ReadAll();
            deliveries.emplace_back(std::move(data), socket.State());
        };
    }

    QTcpServer server;
    QTcpSocket* peer = nullptr;
    QtSocket socket;
    int connectedEvents = 0;
    std::function<void()> handler;
    std::vector<std::pair<std::string, int>> deliveries;
};

TEST_F(QtSocketTest, ConnectsSendsAndCompletesOnTheLastChunkWhenTheCloseFollowsAtOnce) {
    RecordDeliveries();
    ConnectBoth();
    EXPECT_EQ(socket.State(), kSockConnected);
    socket.Send("GET / HTTP/1.0\r\n\r\n");
    ASSERT_TRUE(PumpUntil([this] { return peer->bytesAvailable() >= 18; }));
    EXPECT_EQ(peer->readAll(), QByteArray("GET / HTTP/1.0\r\n\r\n"));

    PeerSends("first ");
    ASSERT_TRUE(PumpUntil([this] { return deliveries.size() == 1; }));
    EXPECT_EQ(deliveries[0], std::make_pair(std::string("first "), int(kSockConnected)));

    PeerSendsAndCloses(QByteArray("last\0byte", 9));
    ASSERT_TRUE(PumpUntil([this] { return deliveries.size() == 2; }));
    EXPECT_EQ(deliveries[1], std::make_pair(std::string("last\0byte", 9), int(kSockClosing)));
    Pump(100);
    EXPECT_EQ(deliveries.size(), 2u);
    EXPECT_EQ(socket.State(), kSockClosing);  // stays until Close()
    socket.Close();
    EXPECT_EQ(socket.State(), kSockClosed);
}

TEST_F(QtSocketTest, BytesUnreadWhenThePeerClosesAreDeliveredAtClosing) {
    // The first handler lets events run after reading, as the engine does;
    // the rest of the response and the close arrive meanwhile.
    handler = [this] {
        std::string data = socket.ReadAll();
        deliveries.emplace_back(std::move(data), socket.State());
        if (deliveries.size() == 1) {
            PeerSendsAndCloses("tail");
            Pump(300);
        }
    };
    ConnectBoth();
    PeerSends("head");
    ASSERT_TRUE(PumpUntil([this] { return deliveries.size() == 2; }));
    EXPECT_EQ(deliveries[0], std::make_pair(std::string("head"), int(kSockConnected)));
    EXPECT_EQ(deliveries[1], std::make_pair(std::string("tail"), int(kSockClosing)));
}

TEST_F(QtSocketTest, DeliveryIsPostedAgainWhileBytesWaitAndACloseAfterTheLastChunkFiresNothing) {
    int calls = 0;
    handler = [&] {
        if (++calls == 1) return;  // leaves the bytes unread
        std::string data = socket.ReadAll();
        deliveries.emplace_back(std::move(data), socket.State());
    };
    ConnectBoth();
    PeerSends("abc");
    ASSERT_TRUE(PumpUntil([&] { return deliveries.size() == 1; }));
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(deliveries[0].first, "abc");

    PeerSendsAndCloses("");
    ASSERT_TRUE(PumpUntil([this] { return socket.State() == kSockClosing; }));
    Pump(100);
    EXPECT_EQ(calls, 2);
}

// A reset that comes in right behind the bytes is a close: the bytes are
// delivered with the closing state, so the part received is saved.
TEST_F(QtSocketTest, AResetRightBehindTheBytesIsAClose) {
    RecordDeliveries();
    ConnectBoth();
    PeerSends("partial");
    const struct linger reset { 1, 0 };  // closing with a zero linger sends a reset
    ::setsockopt(static_cast<int>(peer->socketDescriptor()), SOL_SOCKET, SO_LINGER, &reset,
                 sizeof reset);
    peer->abort();
    ASSERT_TRUE(PumpUntil([this] { return !deliveries.empty(); }));
    EXPECT_EQ(deliveries[0], std::make_pair(std::string("partial"), int(kSockClosing)));
}

TEST_F(QtSocketTest, RefusedConnectionStaysInErrorUntilClosed) {
    const quint16 port = server.serverPort();
    server.close();  // nothing listens there any more
    socket.Connect("127.0.0.1", port);
    ASSERT_TRUE(PumpUntil([this] { return socket.State() == kSockError; }));
    Pump(50);
    EXPECT_EQ(socket.State(), kSockError);
    EXPECT_EQ(connectedEvents, 0);
    // A busy socket refuses a second connect, as the engine always closes first.
    socket.Connect("127.0.0.1", port);
    EXPECT_EQ(socket.State(), kSockError);
    socket.Close();
    EXPECT_EQ(socket.State(), kSockClosed);
}

}  // namespace
}  // namespace vantorin::testing
