// Resets told from closes, on connections of every end.
#include "net/ResetProbe.h"

#include "support/FakePop3Server.h"
#include "support/WaitUntil.h"

#include <QHostAddress>
#include <gtest/gtest.h>

namespace varlo::net {

using test::WaitUntil;

namespace {

class ResetProbeTest : public testing::Test {
protected:
    void SetUp() override {
        socket.connectToHost(QHostAddress(QHostAddress::LocalHost), server.serverPort());
        ASSERT_TRUE(WaitUntil([&] { return server.Open() == 1 && socket.bytesAvailable() > 0; }));
        probe.Watch(socket.socketDescriptor());
    }
    bool UntilClosed() {
        return WaitUntil([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
    }

    test::FakePop3Server server;
    QTcpSocket socket;
    ResetProbe probe;
};

} // namespace

TEST_F(ResetProbeTest, OpenConnectionIsNotReset) {
    EXPECT_FALSE(probe.WasReset());
}

TEST_F(ResetProbeTest, CloseByTheServerIsNoReset) {
    server.Last->disconnectFromHost();
    EXPECT_TRUE(UntilClosed());
    EXPECT_FALSE(probe.WasReset());
}

TEST_F(ResetProbeTest, ResetIsSeenThoughTheSocketHasLetGo) {
    server.Reset();
    EXPECT_TRUE(UntilClosed());
    EXPECT_TRUE(probe.WasReset());
}

TEST_F(ResetProbeTest, ForgottenConnectionEnds) {
    server.Reset();
    EXPECT_TRUE(UntilClosed());
    probe.Forget();
    EXPECT_FALSE(probe.WasReset());
}

TEST_F(ResetProbeTest, ConnectionEndsForTheServerOnlyWhenTheProbeLetsGo) {
    socket.abort();
    QCoreApplication::processEvents();
    EXPECT_EQ(server.Open(), 1);
    probe.Forget();
    EXPECT_TRUE(WaitUntil([&] { return server.Open() == 0; }));
}

TEST_F(ResetProbeTest, NewConnectionTakesTheOldOnesPlace) {
    server.Reset();
    EXPECT_TRUE(UntilClosed());
    server.Last = nullptr;
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), server.serverPort());
    ASSERT_TRUE(
        WaitUntil([&] { return server.Open() == 1 && socket.state() == QAbstractSocket::ConnectedState; }));
    probe.Watch(socket.socketDescriptor());
    EXPECT_FALSE(probe.WasReset());
}

} // namespace varlo::net
