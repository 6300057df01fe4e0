#include "pop3/MailboxTest.h"

#include "core/Literals.h"
#include "core/TextFile.h"

#include <QPointer>

#include <utility>

namespace varlo {

namespace {

using net::Encryption;
using net::TestResult;

// "+OK 3 1200": the number of messages.
QString Count(const QByteArray &reply) {
    const QList<QByteArray> words = reply.simplified().split(' ');
    return QString::fromLatin1(words.value(1, "an unknown number of"));
}

} // namespace

MailboxTest::MailboxTest(Pop3Account account, net::Endpoint endpoint, int patience, QObject *parent)
    : net::ServerTest(parent), account_(std::move(account)), endpoint_(std::move(endpoint)),
      patience_(patience) {
    connect(&connection_, &net::Connection::Opened, this, &MailboxTest::Connection_Opened);
    connect(&connection_, &net::Connection::Encrypted, this, &MailboxTest::Connection_Encrypted);
    connect(&connection_, &net::Connection::Arrived, this, &MailboxTest::Connection_Arrived);
    connect(&connection_, &net::Connection::Ended, this, &MailboxTest::Connection_Ended);
    connect(&connection_, &net::Connection::CertificateSeen, this,
            [this](const QSslCertificate &shown) { certificate_ = net::Describe(shown); });
}

void MailboxTest::Start() {
    const QString place = u"Connecting to [%1], port %2."_s.arg(endpoint_.Host).arg(endpoint_.Port);
    QMetaObject::invokeMethod(
        this, [this, place] { Q_EMIT Step(place); }, Qt::QueuedConnection);
    connection_.Open(endpoint_);
    connection_.AwaitWithin(patience_);
}

void MailboxTest::Connection_Opened() {
    Q_EMIT Step(endpoint_.Security == Encryption::Tls
                    ? u"Connected and encrypted. The certificate was accepted."_s
                    : u"Connected."_s);
}

void MailboxTest::Connection_Encrypted() {
    const QPointer<MailboxTest> alive(this);
    Q_EMIT Step(u"Encrypted. The certificate was accepted."_s);
    if (alive)
        SignIn();
}

void MailboxTest::Connection_Arrived(const QByteArray &bytes) {
    line_ += bytes;
    const QPointer<MailboxTest> alive(this);
    while (alive && line_.contains('\n') && !connection_.IsClosed()) {
        const QByteArray reply = line_.first(line_.indexOf('\n') + 1);
        line_.remove(0, reply.size());
        connection_.AwaitWithin(patience_);
        Take(reply.trimmed());
    }
    if (alive && line_.size() > Pop3Session::kTooLongReply)
        End({u"The server's answer is too long."_s});
}

void MailboxTest::Connection_Ended(const net::Failure &failure) {
    TestResult result{Masked(failure.Cause == net::Trouble::Closed
                                 ? u"The server closed the connection."_s
                                 : u"%1 (error %2)."_s.arg(failure.Text).arg(SocketNumber(failure.Cause)))};
    if (failure.Cause == net::Trouble::NotTrusted)
        result.Distrusted = certificate_;
    End(result);
}

void MailboxTest::Take(const QByteArray &reply) {
    const QPointer<MailboxTest> alive(this);
    const QString text = Masked(DecodeText(reply));
    Q_EMIT Line(Side::Server, text);
    if (!alive)
        return;
    if (!reply.startsWith('+'))
        return End({u"The server refused: %1"_s.arg(text)});
    switch (awaited_) {
    case Awaited::Greeting:
        return endpoint_.Security == Encryption::StartTls ? Say(Awaited::Stls, u"STLS"_s) : SignIn();
    case Awaited::Stls:
        line_.clear(); // what was said before the handshake does not count
        return connection_.StartTls();
    case Awaited::User:
        return Say(Awaited::Pass, u"PASS "_s + account_.Password, u"PASS ***"_s);
    case Awaited::Pass:
        Q_EMIT Step(u"Signed in as [%1]."_s.arg(account_.UserName));
        return alive ? Say(Awaited::Stat, u"STAT"_s) : void();
    case Awaited::Stat:
        Q_EMIT Step(u"The mailbox holds %1 messages."_s.arg(Count(reply)));
        return alive ? Say(Awaited::Quit, u"QUIT"_s) : void();
    case Awaited::Quit:
        return End({});
    }
}

void MailboxTest::SignIn() {
    Say(Awaited::User, u"USER "_s + account_.UserName);
}

void MailboxTest::Say(Awaited next, const QString &command, const QString &shown) {
    awaited_ = next;
    connection_.Write(EncodeText(command) + "\r\n");
    Q_EMIT Line(Side::Client, shown.isEmpty() ? command : shown);
}

void MailboxTest::End(const TestResult &result) {
    connection_.Close();
    Q_EMIT Finished(result);
}

// A server may repeat what it was told.
QString MailboxTest::Masked(QString text) const {
    return account_.Password.isEmpty() ? text : text.replace(account_.Password, u"***"_s);
}

} // namespace varlo
