// The test of the settings: what it says step by step, what it shows, what it hands out when a certificate is
// not accepted.
#include "smtp/SendingTest.h"

#include "smtp/Sender.h"
#include "support/FakeCertificate.h"
#include "support/Printers.h"

#include <QSslConfiguration>
#include <gtest/gtest.h>

namespace OSSMTP {

namespace {

using namespace varlo;
using test::FakeSmtpServer;
using test::SmtpScript;
using test::WaitUntil;

class SendingTestTest : public testing::Test {
protected:
    SendingTestTest() {
        script.Encrypts = true;
        script.Certificate = test::kLocalCertificate;
        script.Key = test::kLocalKey;
        script.EncryptedExtensions = {"PIPELINING", "AUTH PLAIN LOGIN SCRAM-SHA-256"};
        account.Host = u"localhost"_s;
        account.Security = MailSecurity::StartTls;
        account.Username = u"ed"_s;
        account.Secret = u"secret word"_s;
    }
    ~SendingTestTest() override { QSslConfiguration::setDefaultConfiguration(before_); }

    // As if the system held the certificate for that of an authority.
    void Trust(const char *certificate) {
        QSslConfiguration trusting = before_;
        trusting.addCaCertificate(QSslCertificate(QByteArray(certificate)));
        QSslConfiguration::setDefaultConfiguration(trusting);
    }
    void Run() {
        server = std::make_unique<FakeSmtpServer>(script);
        account.Port = server->Port();
        test = std::make_unique<SendingTest>(account);
        Steps.clear();
        Lines.clear();
        result.reset();
        QObject::connect(test.get(), &net::ServerTest::Step, [this](const QString &what) { Steps << what; });
        QObject::connect(test.get(), &net::ServerTest::Line,
                         [this](net::ServerTest::Side side, const QString &text) {
                             Lines << (side == net::ServerTest::Side::Client ? u"C: "_s : u"S: "_s) + text;
                         });
        QObject::connect(test.get(), &net::ServerTest::Finished,
                         [this](const net::TestResult &told) { result = told; });
        test->Start();
        EXPECT_TRUE(Steps.isEmpty()) << "nothing comes from within Start";
        EXPECT_TRUE(WaitUntil([this] { return result.has_value(); }));
    }
    QString Trouble() const { return result ? result->Trouble : u"(none)"_s; }
    void ExpectDistrusted(const char *certificate) {
        const QByteArray print = QSslCertificate(QByteArray(certificate)).digest(QCryptographicHash::Sha256);
        EXPECT_TRUE(
            Trouble().startsWith(u"The certificate of the mail server [localhost] was not accepted: "_s))
            << Trouble().toStdString();
        ASSERT_TRUE(result && result->Distrusted);
        EXPECT_EQ(result->Distrusted->Sha256, print);
        EXPECT_EQ(Lines.filter(u"AUTH"_s), QStringList()) << "no word to whom nobody trusts";
        account.Trusted = print; // as the operator says
    }

    SmtpScript script;
    MailAccount account;
    std::unique_ptr<FakeSmtpServer> server;
    std::unique_ptr<SendingTest> test;
    QStringList Steps;
    QStringList Lines;
    std::optional<net::TestResult> result;

private:
    const QSslConfiguration before_ = QSslConfiguration::defaultConfiguration();
};

} // namespace

TEST_F(SendingTestTest, TellsEachStepAndTheDialogueWithoutThePassword) {
    Trust(test::kLocalCertificate);
    script.EncryptedExtensions = {"AUTH PLAIN"};
    Run();
    EXPECT_EQ(Trouble(), QString());
    EXPECT_EQ(Steps,
              (QStringList{u"Connecting to [localhost], port %1."_s.arg(account.Port), u"Connected."_s,
                           u"Encrypted. The certificate was accepted."_s, u"Signed in as [ed] (PLAIN)."_s}));
    EXPECT_EQ(Lines.value(0), u"S: 220 fake ESMTP"_s);
    EXPECT_TRUE(Lines.value(1).startsWith(u"C: EHLO "_s));
    EXPECT_EQ(Lines.mid(2, 3),
              (QStringList{u"S: 250 fake.example"_s, u"S: 250 PIPELINING"_s, u"S: 250 STARTTLS"_s}));
    EXPECT_EQ(Lines.mid(Lines.size() - 3),
              (QStringList{u"C: AUTH PLAIN ***"_s, u"S: 235 2.7.0 welcome"_s, u"C: QUIT"_s}));
    EXPECT_FALSE(Lines.join(u' ').contains(u"secret"_s));
    EXPECT_TRUE(server->Mails().isEmpty());
}

TEST_F(SendingTestTest, ResponsesToChallengesAreMasked) {
    Trust(test::kLocalCertificate);
    for (const QByteArray mechanism : {"LOGIN", "SCRAM-SHA-256", "CRAM-MD5"}) {
        script.EncryptedExtensions = {"AUTH " + mechanism};
        Run();
        EXPECT_EQ(Trouble(), QString());
        EXPECT_TRUE(Lines.contains(u"C: ***"_s)) << mechanism.constData();
        const QString all = Lines.join(u' ');
        EXPECT_FALSE(all.contains(u"c2VjcmV0"_s) || all.contains(u"secret"_s));
    }
}

TEST_F(SendingTestTest, WithoutAUserNameNobodySignsIn) {
    Trust(test::kLocalCertificate);
    account.Username.clear();
    Run();
    EXPECT_EQ(Trouble(), QString());
    EXPECT_EQ(Steps.last(), u"Nobody signs in, as no user name is set."_s);
}

TEST_F(SendingTestTest, RefusedSignInIsTheTrouble) {
    Trust(test::kLocalCertificate);
    script.Password = "another";
    Run();
    EXPECT_EQ(Trouble(), u"The mail server [localhost] refused the user name or the password: 535 5.7.8 no "
                         "such user, or not with that password"_s);
    EXPECT_FALSE(result->Distrusted);
    EXPECT_FALSE(result->NeedsClearText);
}

TEST_F(SendingTestTest, SelfSignedCertificateIsHandedOutAndMayBeTrusted) {
    for (const MailSecurity security : {MailSecurity::StartTls, MailSecurity::Tls}) {
        account.Security = security;
        account.Trusted.clear();
        script.EncryptsAtOnce = security == MailSecurity::Tls;
        Run();
        ExpectDistrusted(test::kLocalCertificate);
        EXPECT_EQ(result->Distrusted->Subject, u"localhost"_s);
        Run();
        EXPECT_EQ(Trouble(), QString());
    }
}

TEST_F(SendingTestTest, CertificateForAnotherNameIsHandedOutAndMayBeTrusted) {
    Trust(test::kFakeCertificate);
    script.Certificate = test::kFakeCertificate;
    script.Key = test::kFakeKey;
    Run();
    ExpectDistrusted(test::kFakeCertificate);
    Run();
    EXPECT_EQ(Trouble(), QString());
}

TEST_F(SendingTestTest, ExpiredCertificateIsHandedOut) {
    Trust(test::kLocalCertificate);
    script.Certificate = test::kExpiredCertificate;
    script.Key = test::kExpiredKey;
    Run();
    ExpectDistrusted(test::kExpiredCertificate);
    EXPECT_TRUE(Trouble().contains(u"expired"_s)) << Trouble().toStdString();
    EXPECT_EQ(result->Distrusted->ValidUntil, QDateTime(QDate(2021, 1, 1), QTime(0, 0), Qt::UTC));
}

TEST_F(SendingTestTest, CertificateThatHasChangedIsRefusedAgain) {
    account.Trusted = QSslCertificate(QByteArray(test::kFakeCertificate)).digest(QCryptographicHash::Sha256);
    Run();
    ExpectDistrusted(test::kLocalCertificate);
}

TEST_F(SendingTestTest, LineInTheClearAsksForPermission) {
    script.Encrypts = false;
    script.Extensions = {"AUTH PLAIN"};
    account.Security = MailSecurity::Automatic;
    Run();
    EXPECT_TRUE(result->NeedsClearText);
    account.ClearTextAllowed = true;
    Run();
    EXPECT_EQ(Trouble(), QString());
    EXPECT_EQ(Steps.value(2), u"The server does not encrypt: everything crosses the line in the clear."_s);
}

TEST_F(SendingTestTest, ServerThatIsNotThereIsTold) {
    Run();
    account.Port = server->Port();
    server.reset();
    result.reset();
    test = std::make_unique<SendingTest>(account);
    QObject::connect(test.get(), &net::ServerTest::Finished,
                     [this](const net::TestResult &told) { result = told; });
    test->Start();
    EXPECT_TRUE(WaitUntil([this] { return result.has_value(); }));
    EXPECT_TRUE(Trouble().endsWith(u" (12029)"_s)) << Trouble().toStdString();
}

TEST_F(SendingTestTest, MayBeDestroyedByAnyOfItsSignals) {
    Trust(test::kLocalCertificate);
    server = std::make_unique<FakeSmtpServer>(script);
    account.Port = server->Port();
    for (int after = 1; after < 16; ++after) {
        test = std::make_unique<SendingTest>(account);
        int heard = 0;
        const auto hear = [&] {
            if (++heard == after)
                test.reset();
        };
        QObject::connect(test.get(), &net::ServerTest::Step, hear);
        QObject::connect(test.get(), &net::ServerTest::Line, hear);
        QObject::connect(test.get(), &net::ServerTest::Finished, hear);
        test->Start();
        EXPECT_TRUE(WaitUntil([&] { return !test; })) << after;
    }
}

} // namespace OSSMTP
