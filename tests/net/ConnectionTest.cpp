// The connection against a scripted server: what arrives, and how it ends.
#include "net/ConnectionFixture.h"

#include <QEventLoop>

namespace varlo::net {

using ConnectionTest = ConnectionFixture;

TEST_F(ConnectionTest, BytesGoOutAndComeIn) {
    server.Greeting = "hello\r\n";
    OnArrived = [this] { connection->Write("bye\r\n"); };
    Open();
    EXPECT_EQ(Events, QByteArrayList()) << "never from within a call";
    EXPECT_TRUE(test::WaitUntil([this] { return server.Received == "bye\r\n"; }));
    EXPECT_EQ(Events, QByteArrayList{"opened"});
    EXPECT_EQ(Arrived, "hello\r\n");
    EXPECT_TRUE(connection->IsQuiet());
}

TEST_F(ConnectionTest, RefusedConnectionSaysSo) {
    const quint16 port = server.serverPort();
    server.close();
    connection->Open({u"127.0.0.1"_s, port, Encryption::None, {}});
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::Refused);
    EXPECT_FALSE(End.Text.isEmpty());
    EXPECT_TRUE(connection->IsClosed());
}

TEST_F(ConnectionTest, UnknownHostsSaySo) {
    for (const QString &host : {QString(70, u'x') + u".test"_s, u"a@b"_s, u""_s}) {
        Events.clear();
        Open(Encryption::None, host);
        EXPECT_EQ(Events, QByteArrayList()) << "never from within a call";
        EXPECT_TRUE(UntilEnded());
        EXPECT_EQ(End.Cause, Trouble::UnknownHost) << host.toStdString();
    }
}

TEST_F(ConnectionTest, PortsThatDoNotExistSaySo) {
    for (const int port : {0, -1, 65536}) {
        Events.clear();
        connection->Open({u"127.0.0.1"_s, port, Encryption::None, {}});
        EXPECT_TRUE(UntilEnded());
        EXPECT_EQ(End, (Failure{Trouble::NoSuchPort, u"The port %1 does not exist"_s.arg(port), false}));
    }
}

TEST_F(ConnectionTest, CloseByTheServerComesAfterItsLastWord) {
    server.Greeting = "go away";
    Open();
    EXPECT_TRUE(test::WaitUntil([this] { return server.Last != nullptr; }));
    server.Last->disconnectFromHost();
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(Arrived, "go away");
    EXPECT_EQ(End.Cause, Trouble::Closed);
}

TEST_F(ConnectionTest, ResetIsToldFromAClose) {
    for (const Encryption security : {Encryption::None, Encryption::WhenOffered}) {
        server.Greeting = "hello";
        Arrived.clear();
        Events.clear();
        Open(security);
        EXPECT_TRUE(UntilArrived("hello"));
        server.Reset();
        EXPECT_TRUE(UntilEnded());
        EXPECT_EQ(End.Cause, Trouble::Reset);
    }
}

TEST_F(ConnectionTest, LargeWriteArrivesWhole) {
    const QByteArray large = QByteArray("0123456789abcde\n").repeated(1'000'000);
    Open();
    EXPECT_TRUE(Until("opened"));
    connection->Write("first ");
    connection->Write(large);
    connection->Write(" last");
    EXPECT_TRUE(connection->IsWriting());
    EXPECT_TRUE(test::WaitUntil([&] { return server.Received.size() == large.size() + 11; }));
    EXPECT_EQ(server.Received, "first " + large + " last");
    EXPECT_FALSE(connection->IsWriting());
}

TEST_F(ConnectionTest, ServerThatEndsWithinAWriteIsHeardAndTheWriteIsCut) {
    Open();
    EXPECT_TRUE(Until("opened"));
    server.Last->setReadBufferSize(1);
    connection->Write(QByteArray(50'000'000, 'x'));
    server.Say("no more");
    EXPECT_TRUE(UntilArrived("no more"));
    EXPECT_TRUE(connection->IsWriting());
    server.Reset();
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::Reset);
    EXPECT_TRUE(End.IsCut);
}

TEST_F(ConnectionTest, SilenceIsATimeOut) {
    Open();
    connection->AwaitWithin(50);
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End, (Failure{Trouble::TimedOut, u"The server did not answer in time"_s, false}));
    EXPECT_TRUE(connection->IsClosed());
}

TEST_F(ConnectionTest, LimitThatIsTakenBackEndsNothing) {
    server.Greeting = "hello";
    Open();
    connection->AwaitWithin(50);
    EXPECT_TRUE(UntilArrived("hello") || Events.contains("ended"));
    connection->AwaitWithin(0);
    QElapsedTimer passed;
    passed.start();
    EXPECT_TRUE(test::WaitUntil([&] { return passed.hasExpired(120); }));
    EXPECT_FALSE(connection->IsClosed());
}

TEST_F(ConnectionTest, WriteThatNobodyTakesIsATimeOut) {
    Open();
    EXPECT_TRUE(Until("opened"));
    server.Last->setReadBufferSize(1);
    connection->AwaitWithin(200);
    connection->Write(QByteArray(50'000'000, 'x'));
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::TimedOut);
    EXPECT_TRUE(End.IsCut);
}

TEST_F(ConnectionTest, WriteMayHaveALimitOfItsOwn) {
    Open();
    EXPECT_TRUE(Until("opened"));
    connection->AwaitWithin(60'000, 100);
    connection->Write("hello");
    QElapsedTimer passed;
    passed.start();
    EXPECT_TRUE(test::WaitUntil([&] { return passed.hasExpired(200); }));
    EXPECT_FALSE(connection->IsClosed()) << "that is written; the answer has its own time";
    server.Last->setReadBufferSize(1);
    connection->Write(QByteArray(50'000'000, 'x'));
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(End.Cause, Trouble::TimedOut);
    EXPECT_TRUE(End.IsCut);
}

TEST_F(ConnectionTest, OwnAddressIsKnownOnceItIsOpen) {
    EXPECT_EQ(connection->LocalAddress(), QString());
    Open();
    EXPECT_TRUE(Until("opened"));
    EXPECT_EQ(connection->LocalAddress(), u"127.0.0.1"_s);
}

TEST_F(ConnectionTest, FloodComesInBoundedPiecesWhileTheLoopTurns) {
    constexpr qsizetype kFlood = 20'000'000;
    int turnsMeanwhile = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout,
                     [&] { turnsMeanwhile += !Arrived.isEmpty() && Arrived.size() < kFlood ? 1 : 0; });
    ticker.start(0);
    qsizetype longest = 0;
    QObject::connect(connection.get(), &Connection::Arrived,
                     [&](const QByteArray &bytes) { longest = std::max(longest, bytes.size()); });
    server.Greeting = QByteArray(kFlood, 'x');
    Open();
    EXPECT_TRUE(test::WaitUntil([&] { return Arrived.size() == kFlood; }));
    EXPECT_LE(longest, Connection::kReadAhead);
    EXPECT_GT(turnsMeanwhile, 0);
}

TEST_F(ConnectionTest, FarewellIsSentBeforeTheClose) {
    Open();
    EXPECT_TRUE(Until("opened"));
    connection->Close("QUIT\r\n");
    EXPECT_TRUE(connection->IsClosed());
    EXPECT_TRUE(test::WaitUntil([this] { return server.Ended == 1; }));
    EXPECT_EQ(server.Received, "QUIT\r\n");
    EXPECT_EQ(Events, QByteArrayList{"opened"}) << "who closes is not told of it";
}

TEST_F(ConnectionTest, ClosedConnectionSwallowsWhatIsWritten) {
    connection->Write("hello");
    connection->Close("bye");
    EXPECT_TRUE(connection->IsClosed());
    EXPECT_FALSE(connection->IsWriting());
    EXPECT_FALSE(connection->IsQuiet());
}

TEST_F(ConnectionTest, WhatIsOnItsWayMakesAConnectionNotQuiet) {
    Open();
    EXPECT_TRUE(Until("opened"));
    EXPECT_TRUE(connection->IsQuiet());
    server.Say("unasked");
    const QDeadlineTimer tooLong(10000);
    while (connection->IsQuiet() && !tooLong.hasExpired()) {
    }
    EXPECT_FALSE(connection->IsQuiet()) << "seen without a turn of the event loop";
    EXPECT_EQ(Arrived, "");
}

TEST_F(ConnectionTest, NextEventWaitsForTheHandlerThatRunsAnEventLoop) {
    server.Greeting = "first";
    bool inHandler = false;
    OnArrived = [&] {
        EXPECT_FALSE(std::exchange(inHandler, true));
        if (Arrived == "first") {
            server.Say("second");
            server.Last->disconnectFromHost();
            QEventLoop box;
            QTimer::singleShot(20, &box, &QEventLoop::quit);
            box.exec();
            EXPECT_EQ(Arrived, "first");
        }
        inHandler = false;
    };
    Open();
    EXPECT_TRUE(UntilEnded());
    EXPECT_EQ(Arrived, "firstsecond");
}

TEST_F(ConnectionTest, HandlersMayDestroyTheConnection) {
    server.Greeting = "hello";
    OnArrived = [this] { connection.reset(); };
    Open();
    EXPECT_TRUE(test::WaitUntil([this] { return server.Ended == 1; }));
    Listen();
    QObject::connect(connection.get(), &Connection::Opened, [this] { connection.reset(); });
    Open();
    EXPECT_TRUE(test::WaitUntil([this] { return server.Ended == 2; }));
}

TEST_F(ConnectionTest, ConnectionMayBeOpenedAgainInItsHandlers) {
    server.Greeting = "hello";
    OnArrived = [this] {
        if (Arrived == "hello")
            Open();
    };
    Open();
    EXPECT_TRUE(UntilArrived("hellohello"));
    EXPECT_EQ(Events, (QByteArrayList{"opened", "opened"}));
}

} // namespace varlo::net
