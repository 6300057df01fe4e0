// One connection to a mail server, brought from the greeting to the first mail, then replies as they come.
#pragma once

#include "core/Mailer.h"
#include "net/Connection.h"
#include "net/ServerTest.h"
#include "smtp/Handshake.h"

#include <QElapsedTimer>

#include <functional>

namespace OSSMTP {

// How long what may take, in milliseconds. Giving up while the server considers a whole message means not to
// know whether it has it, so that takes ten minutes.
struct Waits {
    int Connect = 30'000;
    int Answer = 60'000;
    int Content = 600'000;
};

// The handlers of all signals but Settled may call anything here, but must not destroy the link.
class Link : public QObject {
    Q_OBJECT

public:
    explicit Link(const varlo::MailAccount &account, QObject *parent = nullptr);

    Waits Limits; // count from the next step on

    // Leads to Ready or Failed, through the encryption and the sign-in that the account asks for.
    void Open();
    // Ready for a mail: nothing has happened that nobody asked for.
    bool IsUsable() const;
    bool Offers(const QByteArray &extension) const { return handshake_.Offers(extension); }
    const Handshake &Greeting() const { return handshake_; }
    // It failed, because the certificate was not accepted.
    bool WasDistrusted() const { return distrusted_; }

    void Write(const QByteArray &bytes);
    bool IsWriting() const { return connection_.IsWriting(); }
    // Begins to listen: each of the next replies may take so long, and while something is written it may
    // stand still for Limits.Answer at most.
    void AwaitWithin(int milliseconds);
    // Nothing is due any more; a server that talks on is left.
    void Rest();
    void Close(const QByteArray &farewell = {});

    // What is awaited, as a line for the operator, and for how many milliseconds already.
    QString Awaited() const;
    qint64 Silence() const { return since_.isValid() ? since_.elapsed() : 0; }

    // Gets every line of the dialogue, secrets masked, when it is set.
    std::function<void(varlo::net::ServerTest::Side, const QByteArray &line)> OnLine;

Q_SIGNALS:
    void Opened();
    void CertificateSeen(const QSslCertificate &certificate);
    void Encrypted();
    void Ready();
    void Replied(const OSSMTP::Reply &reply);
    // The connection is closed. `isCut`: not all that was written had been handed to the system.
    void Failed(const OSSMTP::Failure &failure, bool isCut);
    // The last of the signals of an event. Its handler may destroy the link.
    void Settled();

private:
    void Open(varlo::net::Encryption security);
    void Connection_Opened();
    void Connection_Encrypted();
    void Connection_Arrived(const QByteArray &bytes);
    void Connection_Ended(const varlo::net::Failure &failure);
    Failure FailureOf(const varlo::net::Failure &failure);
    void Take(Reply reply);
    void Greet(const Reply &reply);
    void Say(const QByteArray &bytes);
    void Tell(varlo::net::ServerTest::Side side, const QByteArray &bytes) const;
    void Fail(const Failure &failure);

    const varlo::MailAccount account_;
    const std::optional<varlo::net::Credentials> credentials_;
    varlo::net::Connection connection_;
    varlo::net::Encryption security_ = varlo::net::Encryption::None; // of the connection
    ReplyParser parser_;
    Handshake handshake_;
    bool opened_ = false;
    bool distrusted_ = false;
    bool listening_ = false;
    int limit_ = 0; // of what is listened for
    QElapsedTimer since_;
};

} // namespace OSSMTP
