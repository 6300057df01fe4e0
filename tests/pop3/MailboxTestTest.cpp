// The test of a mailbox, against servers that are right or wrong.
#include "pop3/MailboxTest.h"

#include "core/Literals.h"
#include "pop3/EncryptedMailbox.h"
#include "support/Printers.h"
#include "support/Settle.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

namespace varlo {

using net::Encryption;
using test::EncryptedMailbox;

namespace {

const QByteArrayList kAll{"USER joe", "PASS secret", "STAT", "QUIT"};

class MailboxTestTest : public testing::Test {
protected:
    void Begin(Encryption security, const QByteArray &pin = test::LocalFingerprint(), int patience = 60000) {
        server.EncryptsAtOnce = security == Encryption::Tls;
        const net::Endpoint endpoint{u"localhost"_s, server.serverPort(), security, pin};
        tried = std::make_unique<MailboxTest>(Pop3Account{u"localhost"_s, u"joe"_s, u"secret"_s}, endpoint,
                                              patience);
        using net::ServerTest;
        QObject::connect(tried.get(), &ServerTest::Step, [this](const QString &step) { Steps << step; });
        QObject::connect(tried.get(), &ServerTest::Line, [this](ServerTest::Side side, const QString &text) {
            Lines << (side == ServerTest::Side::Client ? u"> "_s : u"< "_s) + text;
        });
        QObject::connect(tried.get(), &ServerTest::Finished, [this](const net::TestResult &result) {
            ++Ends;
            Result = result;
        });
        tried->Start();
    }
    void Try(Encryption security, const QByteArray &pin = test::LocalFingerprint()) {
        Begin(security, pin);
        EXPECT_TRUE(test::WaitUntil([this] { return Ends > 0; }));
        test::Settle();
        EXPECT_EQ(Ends, 1);
        EXPECT_FALSE((Steps + Lines).join(u'\n').contains(u"secret"_s));
    }
    QString Connecting() const { return u"Connecting to [localhost], port %1."_s.arg(server.serverPort()); }

    EncryptedMailbox server;
    std::unique_ptr<MailboxTest> tried;
    QStringList Steps;
    QStringList Lines;
    net::TestResult Result;
    int Ends = 0;
};

} // namespace

TEST_F(MailboxTestTest, TellsStepByStepWhatWorksAndTheDialogueWithoutThePassword) {
    Try(Encryption::StartTls);
    EXPECT_EQ(Result.Trouble, QString());
    EXPECT_EQ(Steps,
              (QStringList{Connecting(), u"Connected."_s, u"Encrypted. The certificate was accepted."_s,
                           u"Signed in as [joe]."_s, u"The mailbox holds 0 messages."_s}));
    EXPECT_EQ(Lines, (QStringList{u"< +OK ready"_s, u"> STLS"_s, u"< +OK"_s, u"> USER joe"_s, u"< +OK"_s,
                                  u"> PASS ***"_s, u"< +OK"_s, u"> STAT"_s, u"< +OK 0 0"_s, u"> QUIT"_s,
                                  u"< +OK"_s}));
    EXPECT_EQ(server.InTheClear, QByteArrayList{"STLS"});
    EXPECT_EQ(server.Encrypted, kAll);
}

TEST_F(MailboxTestTest, EncryptedFromTheFirstByte) {
    Try(Encryption::Tls);
    EXPECT_EQ(Result.Trouble, QString());
    EXPECT_EQ(Steps.value(1), u"Connected and encrypted. The certificate was accepted."_s);
    EXPECT_EQ(server.InTheClear, QByteArrayList());
    EXPECT_EQ(server.Encrypted, kAll);
}

TEST_F(MailboxTestTest, InTheClear) {
    Try(Encryption::None);
    EXPECT_EQ(Result.Trouble, QString());
    EXPECT_EQ(Steps.value(2), u"Signed in as [joe]."_s);
    EXPECT_EQ(server.InTheClear, kAll);
}

TEST_F(MailboxTestTest, CertificateOfNobodyComesBackAndNothingIsSaid) {
    Try(Encryption::Tls, {});
    EXPECT_FALSE(Result.Trouble.isEmpty());
    ASSERT_TRUE(Result.Distrusted);
    EXPECT_EQ(Result.Distrusted->Sha256, test::LocalFingerprint());
    EXPECT_EQ(Steps, QStringList{Connecting()});
    EXPECT_EQ(server.Encrypted + server.InTheClear, QByteArrayList());
}

TEST_F(MailboxTestTest, RefusalIsToldAndWhatTheServerRepeatsIsMasked) {
    server.Script["PASS secret"] = "-ERR [AUTH] wrong password secret\r\n";
    Try(Encryption::StartTls);
    EXPECT_EQ(Result.Trouble, u"The server refused: -ERR [AUTH] wrong password ***"_s);
    EXPECT_FALSE(Result.Distrusted);
}

TEST_F(MailboxTestTest, ServerWithoutStlsIsNotToldThePassword) {
    server.Script["STLS"] = "-ERR what\r\n";
    Try(Encryption::StartTls);
    EXPECT_EQ(Result.Trouble, u"The server refused: -ERR what"_s);
    EXPECT_EQ(server.InTheClear, QByteArrayList{"STLS"});
}

TEST_F(MailboxTestTest, WhatCameBeforeTheHandshakeDoesNotCount) {
    server.Script["STLS"] = "+OK go\r\n+OK\r\n+OK\r\n+OK 7 7\r\n";
    Try(Encryption::StartTls);
    EXPECT_EQ(Steps.last(), u"The mailbox holds 0 messages."_s);
    EXPECT_EQ(server.Encrypted, kAll);
}

TEST_F(MailboxTestTest, ServerThatIsNotThereIsToldWithItsNumber) {
    server.close();
    tried =
        std::make_unique<MailboxTest>(Pop3Account{}, net::Endpoint{u"127.0.0.1"_s, 1, Encryption::None, {}});
    QObject::connect(tried.get(), &net::ServerTest::Finished,
                     [this](const net::TestResult &result) { Result = result; });
    tried->Start();
    EXPECT_EQ(Result.Trouble, QString()) << "no signal from within Start";
    EXPECT_TRUE(test::WaitUntil([this] { return !Result.Trouble.isEmpty(); }));
    EXPECT_TRUE(Result.Trouble.endsWith(u"(error 10061)."_s)) << Result.Trouble.toStdString();
}

TEST_F(MailboxTestTest, SilenceEnds) {
    server.Greeting.clear();
    Begin(Encryption::None, {}, 50);
    EXPECT_TRUE(test::WaitUntil([this] { return Ends == 1; }));
    EXPECT_TRUE(Result.Trouble.endsWith(u"(error 10060)."_s)) << Result.Trouble.toStdString();
}

TEST_F(MailboxTestTest, LineWithoutAnEndIsCutOff) {
    server.Greeting = "+OK " + QByteArray(1024 * 1024, 'x');
    Try(Encryption::None);
    EXPECT_EQ(Result.Trouble, u"The server's answer is too long."_s);
}

TEST_F(MailboxTestTest, ServerThatHangsUpIsTold) {
    server.OnReceived = [this](const QByteArray &) { server.Last->disconnectFromHost(); };
    Try(Encryption::None);
    EXPECT_EQ(Result.Trouble, u"The server closed the connection."_s);
}

TEST_F(MailboxTestTest, HandlerMayDestroyTheTestAtAnyStep) {
    for (int end = 0; end < 15; ++end) {
        Begin(Encryption::StartTls);
        int events = 0;
        const auto count = [&] {
            if (events++ == end)
                tried.reset();
        };
        QObject::connect(tried.get(), &net::ServerTest::Step, count);
        QObject::connect(tried.get(), &net::ServerTest::Line, count);
        EXPECT_TRUE(test::WaitUntil([&] { return !tried; })) << end;
        test::Settle();
    }
    EXPECT_EQ(Ends, 0);
}

} // namespace varlo
