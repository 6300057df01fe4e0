#include "smtp/Link.h"

#include <QHostInfo>
#include <QSysInfo>

#include <utility>

namespace OSSMTP {

namespace {

using Side = varlo::net::ServerTest::Side;
using varlo::net::Encryption;
using varlo::net::Trouble;

Encryption WantedBy(const varlo::MailAccount &account) {
    switch (account.Security) {
    case varlo::MailSecurity::StartTls:
        return Encryption::StartTls;
    case varlo::MailSecurity::Tls:
        return Encryption::Tls;
    case varlo::MailSecurity::Automatic:
        break;
    }
    // Without a choice there is nobody to ask about a certificate: a mail server on the local network usually
    // has one that nobody signed. Encrypted without a check is better than in the clear, which is what a
    // refusal would come to.
    return Encryption::WhenOffered;
}

std::optional<varlo::net::Credentials> CredentialsOf(const varlo::MailAccount &account) {
    if (account.Username.isEmpty())
        return {};
    return varlo::net::Credentials{account.Username, account.Secret,
                                   account.SignIn == varlo::MailSignIn::Token, account.Host, account.Port};
}

} // namespace

Link::Link(const varlo::MailAccount &account, QObject *parent)
    : QObject(parent), account_(account), credentials_(CredentialsOf(account)) {
    using varlo::net::Connection;
    connect(&connection_, &Connection::Opened, this, &Link::Connection_Opened);
    connect(&connection_, &Connection::CertificateSeen, this, &Link::CertificateSeen);
    connect(&connection_, &Connection::Encrypted, this, &Link::Connection_Encrypted);
    connect(&connection_, &Connection::Arrived, this, &Link::Connection_Arrived);
    connect(&connection_, &Connection::Ended, this, &Link::Connection_Ended);
}

void Link::Open() {
    Open(WantedBy(account_));
}

void Link::Open(Encryption security) {
    security_ = security;
    opened_ = distrusted_ = false;
    parser_.Clear();
    handshake_ = Handshake();
    connection_.Open({account_.Host, account_.Port, security, account_.Trusted});
    AwaitWithin(Limits.Connect);
}

void Link::Connection_Opened() {
    opened_ = true;
    handshake_ = Handshake(
        {security_, credentials_, account_.ClearTextAllowed,
         OwnName(QSysInfo::machineHostName(), QHostInfo::localDomainName(), connection_.LocalAddress())});
    AwaitWithin(Limits.Answer);
    Q_EMIT Opened();
}

void Link::Connection_Encrypted() {
    Q_EMIT Encrypted();
    Say(handshake_.Resume());
}

bool Link::IsUsable() const {
    return handshake_.Now() == Handshake::State::Ready && parser_.IsEmpty() && connection_.IsQuiet();
}

void Link::AwaitWithin(int milliseconds) {
    listening_ = true;
    limit_ = milliseconds;
    since_.start();
    connection_.AwaitWithin(limit_, std::min(limit_, Limits.Answer));
}

void Link::Rest() {
    listening_ = false;
    connection_.AwaitWithin(0);
}

void Link::Close(const QByteArray &farewell) {
    Tell(Side::Client, farewell);
    connection_.Close(farewell);
}

// ---- What the server says

void Link::Connection_Arrived(const QByteArray &bytes) {
    if (!listening_)
        return connection_.Close(); // nobody asked
    parser_.Add(bytes);             // what is left there makes the connection unusable for the next mail
    while (listening_ && !parser_.IsBroken()) {
        auto reply = parser_.Next();
        if (!reply)
            break;
        AwaitWithin(limit_);
        Take(*std::move(reply));
    }
    if (listening_ && parser_.IsBroken())
        Fail(InvalidReplyFailure());
    Q_EMIT Settled();
}

// What a refusal says is shown to people; a server may say in it whatever it was told.
void Link::Take(Reply reply) {
    if (credentials_ && reply.IsRefusal())
        reply.Text = varlo::net::WithoutSecret(reply.Text, *credentials_);
    if (OnLine) {
        const QByteArray code = QByteArray::number(reply.Code) + ' ';
        Tell(Side::Server, code + QByteArray(reply.Text).replace("\n", '\n' + code));
    }
    handshake_.Now() == Handshake::State::Ready ? Q_EMIT Replied(reply) : Greet(reply);
}

void Link::Greet(const Reply &reply) {
    Say(handshake_.Take(reply));
    switch (handshake_.Now()) {
    case Handshake::State::Talking:
        break;
    case Handshake::State::Encrypting:
        parser_.Clear(); // nothing that was said in the clear counts from here on
        return connection_.StartTls();
    case Handshake::State::Ready:
        Q_EMIT Ready();
        break;
    case Handshake::State::Failed:
        return Fail(handshake_.Trouble());
    }
}

void Link::Connection_Ended(const varlo::net::Failure &failure) {
    if (!listening_)
        return;
    // Encryption that was only offered asks for nothing in return, so a server whose TLS does not work is
    // spoken to in the clear, as if it had offered none.
    const bool isEarly = handshake_.Now() != Handshake::State::Ready; // later a mail may be under way
    if (isEarly && failure.Cause == Trouble::NotEncrypted && security_ == Encryption::WhenOffered)
        return Open(Encryption::None);
    Q_EMIT Failed(FailureOf(failure), failure.IsCut);
    Q_EMIT Settled();
}

Failure Link::FailureOf(const varlo::net::Failure &failure) {
    distrusted_ = failure.Cause == Trouble::NotTrusted;
    if (distrusted_)
        return AccountFailure(CannotConnect,
                              u"The certificate of the mail server [%1] was not accepted: %2."_s.arg(
                                  account_.Host, failure.Text));
    if (failure.Cause == Trouble::NotEncrypted)
        return AccountFailure(CannotConnect,
                              u"The line to the mail server [%1] could not be encrypted: %2."_s.arg(
                                  account_.Host, failure.Text));
    return OSSMTP::FailureOf(failure);
}

void Link::Fail(const Failure &failure) {
    const bool isCut = connection_.IsWriting();
    connection_.Close();
    Q_EMIT Failed(failure, isCut);
}

// ---- What the client says

void Link::Write(const QByteArray &bytes) {
    connection_.Write(bytes);
}

void Link::Say(const QByteArray &bytes) {
    Tell(Side::Client, bytes);
    connection_.Write(bytes);
}

void Link::Tell(Side side, const QByteArray &bytes) const {
    if (!OnLine || bytes.isEmpty())
        return;
    const bool isSecret = side == Side::Client && handshake_.WroteSecret() && !bytes.startsWith("QUIT");
    if (isSecret)
        return OnLine(side, bytes.startsWith("AUTH ") ? "AUTH " + handshake_.Mechanism() + " ***" : "***");
    for (const QByteArray &line : bytes.trimmed().split('\n'))
        OnLine(side, credentials_ ? varlo::net::WithoutSecret(line, *credentials_) : line);
}

// ---- What is waited for

QString Link::Awaited() const {
    const QString within =
        limit_ < 120'000 ? u"%1 seconds"_s.arg(limit_ / 1000) : u"%1 minutes"_s.arg(limit_ / 60'000);
    const QString what = !opened_                                      ? u"Waiting for a connection to [%1]"_s
                         : handshake_.Now() != Handshake::State::Ready ? u"Waiting for [%1] to let us in"_s
                         : limit_ == Limits.Content && connection_.IsWriting()
                             ? u"Handing the message to [%1]"_s
                         : limit_ == Limits.Content ? u"Waiting for [%1] to take the message"_s
                                                    : u"Waiting for [%1] to take the recipient"_s;
    return what.arg(account_.Host) + u", "_s + within + u" at most"_s;
}

} // namespace OSSMTP
