// An SMTP server on loopback that follows a script: it takes mail, and says or does every wrong thing it is
// told to.
#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QThread>

#include <memory>
#include <vector>

class QTcpServer;
class QSslSocket;

namespace varlo::test {

enum class SmtpStep {
    Greeting,
    Ehlo, // HELO too
    StartTls,
    Auth, // with each line of the sign-in
    Mail,
    Rcpt,
    Data,
    MessageBegin, // the first bytes of a message, or BDAT, are here; its end is not looked at yet
    Message,      // the closing dot, or the last byte of the chunk
    Rset,
    Quit,
};

// What the server does instead of its usual answer.
struct SmtpFault {
    enum Deed { Reply, ReplyThenClose, ReplyThenSilence, Close, Silence }; // silent: it does not even read on

    SmtpStep At;
    Deed What = Close;
    QByteArray Bytes = {};   // of the reply, as they are; "\r\n" is not added
    QByteArray Holding = {}; // only when the command holds this text
    int Skip = 0;            // so many times all goes well first (over all connections)
    int Times = -1;          // then so many times it happens; -1: always
};

struct SmtpMail {
    QByteArray Sender;
    QByteArrayList Recipients;
    QByteArray Data;    // without doubled dots and without the closing one
    int Connection = 0; // 1 is the first

    bool operator==(const SmtpMail &) const = default;
};

void PrintTo(const SmtpMail &mail, std::ostream *out);

struct SmtpScript {
    QByteArrayList Extensions{"PIPELINING"};
    std::vector<SmtpFault> Faults;
    int CloseEvery = 0;       // close each connection after so many messages; 0: never
    bool TornReplies = false; // one byte at a time
    // The answers to MAIL and RCPT come with that to DATA: only a pipelining client goes on.
    bool HoldUntilData = false;
    bool Encrypts = false; // offers STARTTLS and means it; what is encrypted looks the same in the dialogue
    QByteArray StartTlsReply = "220 go ahead\r\n";    // of a server that means it
    QByteArrayList EncryptedExtensions{"PIPELINING"}; // offered from then on
    bool DataForNobody = false; // DATA is answered with 354 though no recipient was taken
    // BDAT is not known, though "CHUNKING" is among the extensions: what follows it is taken for commands.
    bool ChunksUnknown = false;
    QByteArray ChunkForNobody = "503 no valid recipients\r\n";
    // Accepted from whoever signs in, by the mechanisms that the extension "AUTH ..." names.
    QByteArray Password = "secret word";
    QByteArray Token = "token word";
    bool EncryptsAtOnce = false;
    const char *Certificate = nullptr; // nullptr: the one for "fake.example"
    const char *Key = nullptr;
};

// Runs on a thread of its own, so a client may block. All questions may be asked at any time.
class FakeSmtpServer {
public:
    explicit FakeSmtpServer(SmtpScript script = {});
    ~FakeSmtpServer();

    int Port() const { return port_; }
    // Replaces the script for all steps from now on, in open connections too.
    void Follow(SmtpScript script);

    QList<SmtpMail> Mails() const; // that were answered with 250
    int Connections() const;       // accepted so far
    // All that clients have said while their line was not encrypted.
    QByteArray HeardInTheClear() const;
    // "S: 220 fake ESMTP", "C: MAIL FROM:<a@b>"; a message is one line "C: (message)". Of all connections, in
    // order.
    QByteArrayList Dialogue() const;
    // A client sent a command before it had the answer to the one before, though PIPELINING was not offered.
    bool WasOverrun() const;
    // Waits, with events running, until a client line that begins so is in the dialogue (or a server line:
    // "S: ..."). False after five seconds.
    bool WaitFor(const QByteArray &start) const;

private:
    friend class FakeSmtpSession;

    void Accept();

    QThread thread_;
    QTcpServer *listener_ = nullptr; // lives in thread_
    int port_ = 0;

    mutable QMutex mutex_; // over all that follows
    SmtpScript script_;
    QList<SmtpMail> mails_;
    QByteArrayList dialogue_;
    int connections_ = 0;
    bool overrun_ = false;
    QByteArray heard_;
};

} // namespace varlo::test
