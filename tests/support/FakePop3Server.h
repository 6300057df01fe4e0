// A mailbox server on loopback that says what a test wants, right or wrong.
#pragma once

#include <QByteArrayList>
#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>

namespace varlo::test {

// What the server says: the pieces travel as packets of their own.
struct ServerReply {
    enum class Then { Stay, Close, Reset };

    QByteArrayList Pieces;
    Then End = Then::Stay;
};

// Without a script it is a plain mailbox server: messages marked by DELE go when QUIT is answered. `Script`
// comes first: the reply to that command line, where "" is the greeting.
class FakePop3Server : public QTcpServer {
public:
    FakePop3Server();

    QByteArrayList Mailbox; // whole messages, headers and body with CR LF ends
    QHash<QByteArray, ServerReply> Script;
    QByteArrayList Commands; // every line that any client has sent, without CR LF
    int Connections = 0;     // that were made
    QTcpSocket *Last = nullptr;

    // Clients that are connected now.
    int Open() const { return open_; }
    // Says more to the last client, out of turn.
    void Say(const QByteArray &bytes) const;
    // Breaks the last connection as a crashed server would.
    void Reset() const;

private:
    void Accept();
    void Read(QTcpSocket *client);
    void Answer(QTcpSocket *client, const QByteArray &command);
    ServerReply MailboxReply(const QByteArray &command);
    static void Send(QTcpSocket *client, const ServerReply &reply);
    static void End(QTcpSocket *client, ServerReply::Then end);

    QList<qsizetype> marked_;
    int open_ = 0;
};

} // namespace varlo::test
