// The connection to the mailbox server, against a real server on loopback.
#include "pop3/WinsockPOP.h"

#include "core/Literals.h"
#include "support/FakePop3Server.h"
#include "support/Printers.h"
#include "support/Settle.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <memory>
#include <thread>

namespace varlo {

using test::FakePop3Server;
using test::ServerReply;

namespace {

const QString kLoopback = u"127.0.0.1"_s;

class WinsockPOPTest : public testing::Test {
protected:
    WinsockPOPTest() {
        QObject::connect(socket.get(), &WinsockPOP::DataArrival, socket.get(),
                         [this](const QByteArray &chunk) {
                             Chunks << chunk;
                             if (OnChunk)
                                 OnChunk();
                         });
        QObject::connect(socket.get(), &WinsockPOP::Error, socket.get(),
                         [this](int number, const QString &words) {
                             EXPECT_FALSE(words.isEmpty());
                             Errors << number;
                         });
    }

    void Connect() { socket->Connect(kLoopback, server.serverPort()); }
    // Connects to a server that greets with these pieces.
    void ConnectToGreeting(const QByteArrayList &pieces, ServerReply::Then end = ServerReply::Then::Stay) {
        server.Script[""] = {pieces, end};
        Connect();
    }
    static bool Until(const std::function<bool()> &condition) { return test::WaitUntil(condition); }
    bool UntilClosed() {
        return Until([this] { return server.Connections > 0 && socket->IsClosed(); });
    }
    qsizetype Bytes() const {
        qsizetype sum = 0;
        for (const QByteArray &chunk : Chunks)
            sum += chunk.size();
        return sum;
    }

    FakePop3Server server;
    bool AwaitsLine = true;
    std::unique_ptr<WinsockPOP> socket = std::make_unique<WinsockPOP>([this] { return AwaitsLine; });
    QByteArrayList Chunks;
    QList<int> Errors;
    std::function<void()> OnChunk;
};

// A server that talks without a pause until the connection ends; a thread of its own lets it go on while the
// client's event loop stands still, as a real server's process does.
class EagerServer {
public:
    EagerServer() {
        thread_ = std::thread([this] { Serve(); });
    }
    ~EagerServer() { thread_.join(); }
    quint16 Port() { return port_.get_future().get(); }

private:
    void Serve() {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost);
        port_.set_value(server.serverPort());
        if (!server.waitForNewConnection(30000))
            return;
        const std::unique_ptr<QTcpSocket> client(server.nextPendingConnection());
        do {
            client->write(QByteArray("+OK\r\n").repeated(10000));
        } while (client->waitForBytesWritten());
    }

    std::promise<quint16> port_;
    std::thread thread_;
};

} // namespace

TEST_F(WinsockPOPTest, EventsRunWhileAServerTalksWithoutAPause) {
    EagerServer eager;
    int turns = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&] { ++turns; });
    ticker.start(0);
    const QDeadlineTimer tooLong(10000);
    OnChunk = [&] {
        if (tooLong.hasExpired())
            socket->Close();
    };
    socket->Connect(kLoopback, eager.Port());
    EXPECT_TRUE(Until([&] { return Chunks.size() > 100 && turns > 10; }));
    EXPECT_FALSE(tooLong.hasExpired());
    EXPECT_EQ(Errors, QList<int>());
    socket->Close();
}

TEST_F(WinsockPOPTest, AnswerThatIsNotThereInAMomentIsNoError) {
    ConnectToGreeting({"+OK\r\n"});
    EXPECT_TRUE(Until([&] { return !Chunks.isEmpty(); }));
    test::Settle();
    EXPECT_EQ(Errors, QList<int>());
    EXPECT_FALSE(socket->IsClosed());
}

TEST_F(WinsockPOPTest, GreetingInThreePiecesIsOneChunk) {
    ConnectToGreeting({"+OK", " rea", "dy\r\n"});
    EXPECT_TRUE(Until([&] { return !Chunks.isEmpty(); }));
    EXPECT_EQ(Chunks, QByteArrayList{"+OK ready\r\n"});
}

TEST_F(WinsockPOPTest, PiecesOfAMessageArriveAsTheyCome) {
    AwaitsLine = false;
    ConnectToGreeting({"+OK", " rea", "dy\r\n"});
    EXPECT_TRUE(Until([&] { return Bytes() == 11; }));
    EXPECT_EQ(Chunks.join(), "+OK ready\r\n");
    EXPECT_GT(Chunks.size(), 1);
}

TEST_F(WinsockPOPTest, EveryByteArrivesUnchanged) {
    QByteArray bytes;
    for (int i = 0; i < 256; ++i)
        bytes += static_cast<char>(i);
    ConnectToGreeting({bytes + '\n'});
    EXPECT_TRUE(Until([&] { return !Chunks.isEmpty(); }));
    EXPECT_EQ(Chunks, QByteArrayList{bytes + '\n'});
}

TEST_F(WinsockPOPTest, LineThatNeverEndsIsHandedOnInBoundedPieces) {
    ConnectToGreeting({QByteArray(1024 * 1024, 'x')});
    EXPECT_TRUE(Until([&] { return Bytes() == 1024 * 1024; }));
    EXPECT_TRUE(std::all_of(Chunks.begin(), Chunks.end(), [](const QByteArray &chunk) {
        return chunk.size() == WinsockPOP::kLongestLine;
    }));
}

TEST_F(WinsockPOPTest, ClosingAtTheFirstPieceEndsAFlood) {
    OnChunk = [&] { socket->Close(); };
    ConnectToGreeting({QByteArray(1024 * 1024, 'x')});
    EXPECT_TRUE(UntilClosed());
    test::Settle();
    EXPECT_EQ(Chunks, QByteArrayList{QByteArray(WinsockPOP::kLongestLine, 'x')});
    EXPECT_EQ(Errors, QList<int>());
}

TEST_F(WinsockPOPTest, CloseByTheServerIsNoEvent) {
    ConnectToGreeting({"+OK\r\n"}, ServerReply::Then::Close);
    EXPECT_TRUE(UntilClosed());
    test::Settle();
    EXPECT_EQ(Chunks, QByteArrayList{"+OK\r\n"});
    EXPECT_EQ(Errors, QList<int>());
}

TEST_F(WinsockPOPTest, CloseByTheServerLetsTheUnfinishedLineOut) {
    ConnectToGreeting({"-ERR go ", "away"}, ServerReply::Then::Close);
    EXPECT_TRUE(Until([&] { return !Chunks.isEmpty(); }));
    EXPECT_EQ(Chunks, QByteArrayList{"-ERR go away"});
    EXPECT_TRUE(socket->IsClosed());
}

TEST_F(WinsockPOPTest, AllThatWasSentBeforeACloseArrives) {
    AwaitsLine = false;
    ConnectToGreeting({QByteArray(5 * 1024 * 1024, 'x')}, ServerReply::Then::Close);
    EXPECT_TRUE(UntilClosed());
    test::Settle();
    EXPECT_EQ(Bytes(), 5 * 1024 * 1024);
}

TEST_F(WinsockPOPTest, RefusedConnectionIsAnErrorAfterTheCall) {
    server.close();
    socket->Connect(kLoopback, server.serverPort() ? server.serverPort() : quint16(1));
    EXPECT_EQ(Errors, QList<int>());
    EXPECT_TRUE(Until([&] { return !Errors.isEmpty(); }));
    EXPECT_EQ(Errors, QList<int>{10061});
    EXPECT_TRUE(socket->IsClosed());
}

TEST_F(WinsockPOPTest, UnknownHostIsAnError) {
    socket->Connect(QString(70, u'x') + u".test"_s, 110); // too long a label for any host
    EXPECT_TRUE(Until([&] { return !Errors.isEmpty(); }));
    EXPECT_EQ(Errors, QList<int>{11001});
}

TEST_F(WinsockPOPTest, ResetConnectionIsAnError) {
    ConnectToGreeting({"+OK\r\n"});
    EXPECT_TRUE(Until([&] { return !Chunks.isEmpty(); }));
    server.Reset();
    EXPECT_TRUE(Until([&] { return !Errors.isEmpty(); }));
    EXPECT_EQ(Errors, QList<int>{10054});
    EXPECT_TRUE(socket->IsClosed());
}

TEST_F(WinsockPOPTest, SendingAfterTheServerClosedIsSwallowed) {
    ConnectToGreeting({}, ServerReply::Then::Close);
    EXPECT_TRUE(UntilClosed());
    socket->SendData("USER joe\r\n");
    test::Settle();
    EXPECT_EQ(Errors, QList<int>());
    EXPECT_EQ(server.Commands, QByteArrayList());
}

TEST_F(WinsockPOPTest, NextEventWaitsForTheHandlerThatRunsAnEventLoop) {
    int depth = 0;
    OnChunk = [&] {
        EXPECT_EQ(++depth, 1);
        if (Chunks.size() == 1) {
            server.Say("+second\r\n");
            server.Reset();
            test::Settle();
            EXPECT_EQ(Chunks.size() + Errors.size(), 1);
        }
        --depth;
    };
    ConnectToGreeting({"+first\r\n"});
    EXPECT_TRUE(Until([&] { return !Errors.isEmpty(); }));
    EXPECT_EQ(Chunks.first(), "+first\r\n");
    EXPECT_EQ(Errors, QList<int>{10054});
}

TEST_F(WinsockPOPTest, DataThatCameWhileAHandlerRanIsDeliveredAfterIt) {
    OnChunk = [&] {
        if (Chunks.size() > 1)
            return;
        server.Say("+second\r\n");
        test::Settle();
    };
    ConnectToGreeting({"+first\r\n"});
    EXPECT_TRUE(Until([&] { return Chunks.size() == 2; }));
    EXPECT_EQ(Chunks, (QByteArrayList{"+first\r\n", "+second\r\n"}));
}

TEST_F(WinsockPOPTest, FloodWhileAHandlerRunsWaitsAtTheServer) {
    constexpr qsizetype flood = 64 * 1024 * 1024; // far above what the system's buffers take
    AwaitsLine = false;
    OnChunk = [&] {
        if (Chunks.size() > 1)
            return;
        server.Say(QByteArray(flood, 'x'));
        test::Settle();
        EXPECT_GT(server.Last->bytesToWrite(), flood / 4);
    };
    ConnectToGreeting({"+first\r\n"});
    EXPECT_TRUE(Until([&] { return Bytes() == flood + 8; }));
    EXPECT_TRUE(std::all_of(Chunks.begin(), Chunks.end(), [](const QByteArray &chunk) {
        return chunk.size() <= net::Connection::kReadAhead;
    }));
}

TEST_F(WinsockPOPTest, CloseForgetsWhatHasArrived) {
    ConnectToGreeting({"half a line"});
    EXPECT_TRUE(Until([&] { return server.Connections == 1; }));
    test::Settle();
    socket->Close();
    EXPECT_TRUE(socket->IsClosed());
    ConnectToGreeting({"+OK\r\n"});
    EXPECT_TRUE(Until([&] { return !Chunks.isEmpty(); }));
    EXPECT_EQ(Chunks, QByteArrayList{"+OK\r\n"});
    EXPECT_TRUE(Until([&] { return server.Open() == 1; }));
}

TEST_F(WinsockPOPTest, CloseForgetsAFailure) {
    socket->Connect(kLoopback, 1);
    socket->Close();
    Connect();
    EXPECT_TRUE(Until([&] { return !Chunks.isEmpty(); }));
    EXPECT_EQ(Errors, QList<int>());
}

TEST_F(WinsockPOPTest, HandlerMayConnectAnew) {
    OnChunk = [&] {
        if (Chunks.size() > 1)
            return;
        socket->Close();
        Connect();
        test::Settle(); // the new greeting is here, and waits
        EXPECT_EQ(Chunks.size(), 1);
    };
    ConnectToGreeting({"+OK\r\n"});
    EXPECT_TRUE(Until([&] { return Chunks.size() == 2; }));
    EXPECT_EQ(server.Connections, 2);
}

TEST_F(WinsockPOPTest, HandlerMayDestroyTheConnection) {
    OnChunk = [&] { socket.reset(); };
    ConnectToGreeting({"+OK\r\n"});
    EXPECT_TRUE(Until([&] { return socket == nullptr; }));
    test::Settle();
    EXPECT_EQ(server.Open(), 0);
}

TEST_F(WinsockPOPTest, SilenceKeepsTheLoopAlive) {
    ConnectToGreeting({});
    EXPECT_TRUE(Until([&] { return server.Connections == 1; }));
    bool ticked = false;
    QTimer::singleShot(0, socket.get(), [&] { ticked = true; });
    EXPECT_TRUE(Until([&] { return ticked; }));
    EXPECT_EQ(Chunks, QByteArrayList());
}

} // namespace varlo
