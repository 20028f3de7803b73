#include "platform/QtSocket.h"

#include <gtest/gtest.h>

#include "tests/platform/QtTestApp.h"

#include <sys/socket.h>

#include <QtNetwork>
#include <functional>
#include <utility>
#include <vector>

namespace vantorin::testing {
namespace {

using Deliveries = std::vector<std::pair<std::string, int>>;

// A real socket connected to an in-process server on 127.0.0.1, an ephemeral
// port; the server side of the connection is `peer`. Each delivery reads
// everything and notes the state it saw, as the engine does.
class QtSocketTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost, 0));
        socket.onConnected = [this] { ++connectedEvents; };
        socket.onDataArrival = [this] {
            std::string data = socket.ReadAll();
            deliveries.emplace_back(std::move(data), socket.State());
            if (afterDelivery) std::exchange(afterDelivery, nullptr)();
        };
        socket.Connect("127.0.0.1", server.serverPort());
        EXPECT_EQ(socket.State(), kSockConnecting);
        ASSERT_TRUE(
            PumpUntil([this] { return connectedEvents == 1 && server.hasPendingConnections(); }));
        peer = server.nextPendingConnection();
    }
    void PeerSends(const QByteArray& bytes, bool thenCloses = false) {
        peer->write(bytes);
        peer->waitForBytesWritten(1000);
        if (!thenCloses) return;
        peer->disconnectFromHost();
        if (peer->state() != QAbstractSocket::UnconnectedState) peer->waitForDisconnected(1000);
    }

    QTcpServer server;
    QTcpSocket* peer = nullptr;
    QtSocket socket;
    int connectedEvents = 0;
    std::function<void()> afterDelivery;
    Deliveries deliveries;
};

// The job completes on its last chunk only if the close behind it shows then.
TEST_F(QtSocketTest, ConnectsSendsAndCompletesOnTheLastChunkWhenTheCloseFollowsAtOnce) {
    EXPECT_EQ(socket.State(), kSockConnected);
    socket.Send("GET / HTTP/1.0\r\n\r\n");
    ASSERT_TRUE(PumpUntil([this] { return peer->bytesAvailable() >= 18; }));
    EXPECT_EQ(peer->readAll(), QByteArray("GET / HTTP/1.0\r\n\r\n"));

    PeerSends("first ");
    ASSERT_TRUE(PumpUntil([this] { return deliveries.size() == 1; }));
    PeerSends(QByteArray("last\0byte", 9), true);
    ASSERT_TRUE(PumpUntil([this] { return deliveries.size() == 2; }));
    Pump(100);
    EXPECT_EQ(deliveries, (Deliveries{{"first ", kSockConnected},
                                      {std::string("last\0byte", 9), kSockClosing}}));
    EXPECT_EQ(socket.State(), kSockClosing);  // stays until Close()
    socket.Close();
    EXPECT_EQ(socket.State(), kSockClosed);
}

// The rest of the response and the close arrive while the first delivery lets
// events run (a yield): the tail still comes, with the closing state.
TEST_F(QtSocketTest, BytesUnreadWhenThePeerClosesAreDeliveredAtClosing) {
    afterDelivery = [this] {
        PeerSends("tail", true);
        Pump(300);
    };
    PeerSends("head");
    ASSERT_TRUE(PumpUntil([this] { return deliveries.size() == 2; }));
    EXPECT_EQ(deliveries, (Deliveries{{"head", kSockConnected}, {"tail", kSockClosing}}));
}

// A reset that comes in right behind the bytes is a close: the bytes are
// delivered with the closing state, so the part received is saved.
TEST_F(QtSocketTest, AResetRightBehindTheBytesIsAClose) {
    PeerSends("partial");
    const struct linger reset { 1, 0 };  // closing with a zero linger sends a reset
    ::setsockopt(static_cast<int>(peer->socketDescriptor()), SOL_SOCKET, SO_LINGER, &reset,
                 sizeof reset);
    peer->abort();
    ASSERT_TRUE(PumpUntil([this] { return !deliveries.empty(); }));
    EXPECT_EQ(deliveries.at(0), std::make_pair(std::string("partial"), int(kSockClosing)));
}

}  // namespace
}  // namespace vantorin::testing
