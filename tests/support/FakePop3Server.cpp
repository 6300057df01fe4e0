#include "support/FakePop3Server.h"

#include "support/ResetOnClose.h"

#include <QHostAddress>
#include <QPointer>
#include <QTimer>
#include <gtest/gtest.h>

#include <algorithm>

namespace varlo::test {

FakePop3Server::FakePop3Server() {
    EXPECT_TRUE(listen(QHostAddress::LocalHost));
    connect(this, &QTcpServer::newConnection, this, &FakePop3Server::Accept);
}

void FakePop3Server::Accept() {
    while (QTcpSocket *client = nextPendingConnection()) {
        ++Connections;
        ++open_;
        marked_.clear(); // without QUIT nothing is deleted
        Last = client;
        connect(client, &QTcpSocket::readyRead, this, [this, client] { Read(client); });
        connect(client, &QTcpSocket::disconnected, this, [this] { --open_; });
        Answer(client, QByteArray());
    }
}

void FakePop3Server::Read(QTcpSocket *client) {
    while (client->canReadLine()) {
        const QByteArray line = client->readLine();
        EXPECT_TRUE(line.endsWith("\r\n")) << line.constData();
        Commands << line.chopped(2);
        Answer(client, Commands.last());
    }
}

void FakePop3Server::Answer(QTcpSocket *client, const QByteArray &command) {
    const auto scripted = Script.constFind(command);
    Send(client, scripted != Script.constEnd() ? *scripted : MailboxReply(command));
}

ServerReply FakePop3Server::MailboxReply(const QByteArray &command) {
    const QByteArray verb = command.left(4);
    const qsizetype index = command.mid(5).toInt() - 1;
    if (verb == "STAT") {
        qsizetype size = 0;
        for (const QByteArray &message : Mailbox)
            size += message.size();
        return {{"+OK " + QByteArray::number(Mailbox.size()) + ' ' + QByteArray::number(size) + "\r\n"}};
    }
    if (verb == "RETR" || verb == "DELE") {
        if (index < 0 || index >= Mailbox.size())
            return {{"-ERR no such message\r\n"}};
        if (verb == "RETR")
            return {{"+OK " + QByteArray::number(Mailbox[index].size()) + " octets\r\n" + Mailbox[index] +
                     ".\r\n"}};
        marked_ << index;
    }
    if (verb == "QUIT") {
        std::sort(marked_.rbegin(), marked_.rend());
        for (const qsizetype deleted : std::as_const(marked_))
            Mailbox.removeAt(deleted);
        marked_.clear();
        return {{"+OK bye\r\n"}, ServerReply::Then::Close};
    }
    return {{"+OK\r\n"}};
}

void FakePop3Server::Send(QTcpSocket *client, const ServerReply &reply) {
    if (reply.Pieces.isEmpty())
        return End(client, reply.End);
    client->write(reply.Pieces.first());
    client->flush();
    // A moment between the pieces, or the other side would find them joined.
    QTimer::singleShot(reply.Pieces.size() > 1 ? 1 : 0, client, [client, reply] {
        Send(client, {reply.Pieces.sliced(1), reply.End});
    });
}

void FakePop3Server::End(QTcpSocket *client, ServerReply::Then end) {
    if (end == ServerReply::Then::Close)
        client->disconnectFromHost();
    if (end == ServerReply::Then::Reset) {
        ResetOnClose(client->socketDescriptor());
        client->abort();
    }
}

void FakePop3Server::Say(const QByteArray &bytes) const {
    Last->write(bytes);
    Last->flush();
}

void FakePop3Server::Reset() const {
    End(Last, ServerReply::Then::Reset);
}

} // namespace varlo::test
