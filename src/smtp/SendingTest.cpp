#include "smtp/SendingTest.h"

#include "smtp/Link.h"

namespace OSSMTP {

using varlo::net::TestResult;

// What is told is told in events of its own, in order, so that whoever hears it may end the test.
class SendingTest::Private : public QObject {
public:
    Private(SendingTest &test, const varlo::MailAccount &account);

    void Start();

private:
    void Link_Opened();
    void Link_Encrypted();
    void Link_Ready();
    void Link_Failed(const Failure &failure);
    void Step(const QString &what);
    void Finish(const TestResult &result);

    SendingTest &test_;
    const varlo::MailAccount account_;
    Link link_;
    std::optional<varlo::net::Certificate> certificate_;
};

SendingTest::Private::Private(SendingTest &test, const varlo::MailAccount &account)
    : test_(test), account_(account), link_(account) {
    connect(&link_, &Link::Opened, this, &Private::Link_Opened);
    connect(&link_, &Link::CertificateSeen, this,
            [this](const QSslCertificate &seen) { certificate_ = varlo::net::Describe(seen); });
    connect(&link_, &Link::Encrypted, this, &Private::Link_Encrypted);
    connect(&link_, &Link::Ready, this, &Private::Link_Ready);
    connect(&link_, &Link::Failed, this, &Private::Link_Failed);
    link_.OnLine = [this](Side side, const QByteArray &line) {
        const QString text =
            Reply{0, line}.Description(); // shown as replies are: control characters as blanks
        QMetaObject::invokeMethod(
            &test_, [this, side, text] { Q_EMIT test_.Line(side, text); }, Qt::QueuedConnection);
    };
}

void SendingTest::Private::Start() {
    Step(u"Connecting to [%1], port %2."_s.arg(account_.Host, QString::number(account_.Port)));
    link_.Open();
}

void SendingTest::Private::Link_Opened() {
    Step(account_.Security == varlo::MailSecurity::Tls
             ? u"Connected and encrypted. The certificate was accepted."_s
             : u"Connected."_s);
}

void SendingTest::Private::Link_Encrypted() {
    Step(account_.Security == varlo::MailSecurity::StartTls
             ? u"Encrypted. The certificate was accepted."_s
             : u"Encrypted. Whose certificate it is was not checked."_s);
}

void SendingTest::Private::Link_Ready() {
    if (!link_.Greeting().IsEncrypted())
        Step(u"The server does not encrypt: everything crosses the line in the clear."_s);
    if (account_.Username.isEmpty())
        Step(u"Nobody signs in, as no user name is set."_s);
    else
        Step(u"Signed in as [%1] (%2)."_s.arg(account_.Username,
                                              QString::fromLatin1(link_.Greeting().Mechanism())));
    link_.Rest();
    link_.Close("QUIT\r\n");
    Finish({});
}

void SendingTest::Private::Link_Failed(const Failure &failure) {
    const QString told =
        failure.IsOfAccount ? failure.Description : u"%1 (%2)"_s.arg(failure.Description).arg(failure.Number);
    Finish({told, link_.WasDistrusted() ? certificate_ : std::nullopt, link_.Greeting().NeedsClearText()});
}

void SendingTest::Private::Step(const QString &what) {
    QMetaObject::invokeMethod(
        &test_, [this, what] { Q_EMIT test_.Step(what); }, Qt::QueuedConnection);
}

void SendingTest::Private::Finish(const TestResult &result) {
    QMetaObject::invokeMethod(
        &test_, [this, result] { Q_EMIT test_.Finished(result); }, Qt::QueuedConnection);
}

SendingTest::SendingTest(const varlo::MailAccount &account, QObject *parent)
    : varlo::net::ServerTest(parent), d(std::make_unique<Private>(*this, account)) {
}

SendingTest::~SendingTest() = default;

void SendingTest::Start() {
    d->Start();
}

} // namespace OSSMTP
