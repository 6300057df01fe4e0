#include "core/SocketPoll.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <gtest/gtest.h>

namespace varlo {

TEST(SocketPollTest, TellsWhenASocketCanBeUsed) {
    QTcpServer server;
    ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
    QTcpSocket client;
    client.connectToHost(server.serverAddress(), server.serverPort());
    ASSERT_TRUE(client.waitForConnected(5000));
    ASSERT_TRUE(server.waitForNewConnection(5000));
    QTcpSocket *peer = server.nextPendingConnection();
    const qintptr socket = client.socketDescriptor();
    EXPECT_FALSE(PollSocket(socket, false, 0)) << "nothing to read";
    EXPECT_TRUE(PollSocket(socket, true, 0)) << "room to write";
    peer->write("x");
    ASSERT_TRUE(peer->waitForBytesWritten(5000));
    EXPECT_TRUE(PollSocket(socket, false, 5000));
}

} // namespace varlo
