// One connection to a server: bytes out, bytes and the connection's fate in. Knows nothing of mail.
#pragma once

#include "net/Endpoint.h"
#include "net/ResetProbe.h"
#include "net/Trouble.h"

#include <QByteArrayList>
#include <QDeadlineTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QSslCertificate>
#include <QTcpSocket>
#include <QTimer>

#include <memory>
#include <optional>

namespace varlo::net {

Trouble TroubleOf(QAbstractSocket::SocketError error);

// Events come out one at a time, never from within a call: while a handler runs, what happens waits until it
// has returned, even when the handler runs an event loop. A handler may call anything here and may destroy
// the connection. Nothing waits longer than a moment: after a write, or after something arrived, the answer
// of a near server is awaited for core/SocketPoll's short wait, and handlers that answer each other's bytes
// go on so for up to 30 ms before the event loop turns. A send ends its part sooner, by waiting for a timer of
// its own.
class Connection : public QObject {
    Q_OBJECT

public:
    // The most that arrives at once, and the most that is taken in while a handler runs, in bytes.
    static constexpr qsizetype kReadAhead = qsizetype(64) * 1024;

    explicit Connection(QObject *parent = nullptr);
    ~Connection() override;

    // Begins to connect, through the environment's proxy if there is one. Leads to Opened or Ended.
    void Open(const Endpoint &endpoint);
    // Sends the bytes, in pieces as large as the system takes; they are shared, not copied. A connection that
    // is closed swallows them. When the other end takes no more, Ended tells, after everything that it had
    // still to say has Arrived.
    void Write(const QByteArray &bytes);
    // Whether some of what was written has not been handed to the system yet.
    bool IsWriting() const;
    // Begins to encrypt, on a connection whose endpoint says WhenOffered or StartTls. What has arrived before
    // and was not handed on does not count. Leads to Encrypted or Ended.
    void StartTls();
    // How long the next bytes may take from now on, in milliseconds; past the limit the connection ends with
    // TimedOut. 0: for ever, and no short wait for what nobody awaits. Progress of a write begins the time
    // anew, bytes that arrive do not.
    void AwaitWithin(int milliseconds);
    // Closes at once and forgets everything that was not handed on. A farewell is sent if that takes no time.
    void Close(const QByteArray &farewell = {});

    bool IsClosed() const;
    // Open, and nothing has happened that was not handed on.
    bool IsQuiet() const;

Q_SIGNALS:
    // Connected; encrypted if the endpoint says Tls.
    void Opened();
    // The other end's certificate, before the handshake's success or failure is told.
    void CertificateSeen(const QSslCertificate &certificate);
    void Encrypted();
    // At least one byte.
    void Arrived(const QByteArray &bytes);
    // The connection is closed, by Trouble::Closed or by something worse; all that arrived was handed on.
    void Ended(const varlo::net::Failure &failure);

private:
    void MakeSocket();
    void NoteConnected();
    void NoteEncrypted();
    void NoteError(QAbstractSocket::SocketError error);
    Failure FailureOf(QAbstractSocket::SocketError error) const;
    void Fail(const Failure &failure);
    void Handshake();
    void NoteCertificate();
    bool IsPinned() const;
    void CheckTime();
    void DeliverSoon();
    void Deliver();
    bool Step();
    bool DeliverNext();
    QByteArray Receive();
    bool PushOut();
    bool PushThroughSocket(const QByteArray &bytes);
    void TakeOut(qint64 sent);
    bool WaitAMoment();
    void AwaitWritable();
    qint64 Backlog() const;
    bool IsDirect() const;

    Endpoint endpoint_;
    std::unique_ptr<QTcpSocket> socket_; // of class QSslSocket when it may have to encrypt
    ResetProbe probe_;
    bool proxied_ = false;
    bool handshaking_ = false;
    QString distrust_; // why the certificate was not accepted

    QByteArrayList out_; // what is still to be sent, the first of it without its first `sent_` bytes
    qint64 sent_ = 0;
    bool unwritable_ = false; // for good; the other end may still have something to say
    std::unique_ptr<QSocketNotifier> writable_;

    // Events that were not handed on yet.
    bool opened_ = false;
    std::optional<QSslCertificate> certificate_;
    bool encrypted_ = false;
    bool readable_ = false; // the system has bytes that the socket has not taken in
    std::optional<Failure> failure_;

    bool answerDue_ = false; // so that a short wait pays
    bool queued_ = false;
    bool delivering_ = false;
    int limit_ = 0;
    QDeadlineTimer deadline_{QDeadlineTimer::Forever};
    QTimer timer_;
};

} // namespace varlo::net
