// The engine with the real component, against a server on loopback that follows a script.

#include "compose/EngineFixture.h"
#include "smtp/BlockingMailer.h"
#include "support/FakeSmtpServer.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::FakeSmtpServer;
using test::SmtpFault;
using test::SmtpMail;
using test::SmtpScript;
using test::SmtpStep;

QString Text(const char *text) {
    return QString::fromUtf8(text);
}

class SendOverWireTest : public test::EngineFixture {
protected:
    void Start(SmtpScript script) {
        server = std::make_unique<FakeSmtpServer>(std::move(script));
        session.Prefs.SMTPServer = Text("127.0.0.1");
        // A free port of the system may be above what the 16-bit setting can hold.
        makeMailer = [this, port = server->Port()](MailAccount account) {
            account.Port = port;
            auto mailer = std::make_unique<OSSMTP::BlockingMailer>(account);
            mailer->SetTimeout(timeout);
            return mailer;
        };
    }

    // Who got a message, in the order of the server; each message of a run has one recipient. The server
    // notes a message after its answer: the last ones are waited for.
    QStringList Received(qsizetype expected) const {
        EXPECT_TRUE(QTest::qWaitFor([&] { return server->Mails().size() >= expected; }));
        QStringList received;
        for (const SmtpMail &mail : server->Mails())
            received << QString::fromUtf8(mail.Recipients.join(", "));
        return received;
    }

    // Cancels as soon as a line of the client that begins so is at the server.
    void CancelAt(const QByteArray &start, std::function<void()> cancel) {
        poll.setInterval(5);
        QObject::connect(&poll, &QTimer::timeout, &keeper, [this, start, cancel] {
            const QByteArrayList lines = server->Dialogue();
            if (std::none_of(lines.begin(), lines.end(),
                             [&](const QByteArray &line) { return line.startsWith(start); }))
                return;
            poll.stop();
            cancel();
        });
        poll.start();
    }

    QString Summary() const { return profile.Boxes.Texts().value(0); }

    std::unique_ptr<FakeSmtpServer> server;
    int timeout = 60000;
    QTimer poll;
};

SmtpFault At(SmtpStep step, SmtpFault::Deed what, const QByteArray &bytes = {},
             const QByteArray &holding = {}) {
    SmtpFault fault{step, what};
    fault.Bytes = bytes;
    fault.Holding = holding;
    return fault;
}

SmtpScript Script(std::vector<SmtpFault> faults) {
    SmtpScript script;
    script.Faults = std::move(faults);
    return script;
}

// 985 good addresses, 10 of them once more in other letter case, and 5 that the server does not know.
QStringList MixedRecipients() {
    QStringList recipients;
    for (int i = 1; i <= 985; ++i)
        recipients << u'a' + QString::number(i) + Text("@example.org");
    for (int i = 1; i <= 5; ++i)
        recipients.insert(i * 150, Text("unknown") + QString::number(i) + Text("@example.org"));
    for (int i = 1; i <= 10; ++i)
        recipients.insert(900 + i, u'A' + QString::number(i * 7) + Text("@EXAMPLE.org"));
    return recipients;
}

void ExpectMixedOutcome(const QStringList &received, const QStringList &pending, const QString &summary) {
    QStringList expected;
    for (int i = 1; i <= 985; ++i)
        expected << u'a' + QString::number(i) + Text("@example.org");
    EXPECT_EQ(received, expected);
    EXPECT_EQ(pending, (QStringList{Text("-unknown1@example.org"), Text("-unknown2@example.org"),
                                    Text("-unknown3@example.org"), Text("-unknown4@example.org"),
                                    Text("-unknown5@example.org")}));
    EXPECT_EQ(
        summary,
        Text("Message sending complete.\r\n\r\n- The sending process lasted 0 secs\r\n- The message was "
             "sent to 985 recipients\r\n- 10 duplicate recipients were ignored\r\n- The message could "
             "not be delivered to 5 recipients*\r\n\r\n* Failed addresses are added to the pending list "
             "flagged for removal."));
}

TEST_F(SendOverWireTest, TheRecipientSeesHisOwnAddressAndTheCommonName) {
    Start({});
    message.Text = Text("aaaa bbbb cccc");
    message.Recipients = Addresses(1);
    session.Prefs.SMTPWrap = 10;
    EXPECT_TRUE(Send());
    ASSERT_EQ(Received(1), Addresses(1));
    const SmtpMail mail = server->Mails().constFirst();
    EXPECT_EQ(mail.Sender, "ann@example.org");
    EXPECT_TRUE(mail.Data.contains("To: \"Mailing List\" <a1@example.org>\r\n") ||
                mail.Data.contains("To: Mailing List <a1@example.org>\r\n"))
        << mail.Data.constData();
    EXPECT_TRUE(mail.Data.contains("\r\nSubject: News\r\n")) << mail.Data.constData();
    EXPECT_TRUE(mail.Data.contains("\r\n\r\naaaa bbbb\r\ncccc")) << mail.Data.constData();
}

TEST_F(SendOverWireTest, OfAThousandEveryGoodAddressGetsOneMessage) {
    Start(Script({At(SmtpStep::Rcpt, SmtpFault::Reply, "550 no such user\r\n", "<unknown")}));
    message.Recipients = MixedRecipients();
    ASSERT_EQ(message.Recipients.size(), 1000);
    EXPECT_TRUE(Send());
    ExpectMixedOutcome(Received(985), pending, Summary());
    EXPECT_EQ(statuses.count(Text("SMTP error 550 - no such user")), 5);
    EXPECT_EQ(server->Connections(), 1);
}

TEST_F(SendOverWireTest, AServerWithoutPipeliningIsNeverHurried) {
    SmtpScript script = Script({At(SmtpStep::Rcpt, SmtpFault::Reply, "550 no such user\r\n", "<unknown")});
    script.Extensions.clear();
    Start(std::move(script));
    message.Recipients = MixedRecipients();
    EXPECT_TRUE(Send());
    ExpectMixedOutcome(Received(985), pending, Summary());
    EXPECT_FALSE(server->WasOverrun());
}

TEST_F(SendOverWireTest, AServerThatClosesAfterEachHundredCostsNobodyHisMessage) {
    SmtpScript script;
    script.CloseEvery = 100;
    Start(std::move(script));
    message.Recipients = Addresses(450);
    EXPECT_TRUE(Send());
    EXPECT_EQ(Received(450), Addresses(450));
    EXPECT_EQ(pending, QStringList());
    EXPECT_EQ(server->Connections(), 5);
    EXPECT_TRUE(Summary().endsWith(Text("- The message was sent to 450 recipients")));
}

TEST_F(SendOverWireTest, AServerThatGoesAwayOnceIsAskedAgain) {
    SmtpFault away = At(SmtpStep::Mail, SmtpFault::ReplyThenClose, "421 going down\r\n");
    away.Skip = 2;
    away.Times = 1;
    Start(Script({away}));
    message.Recipients = Addresses(5);
    EXPECT_TRUE(Send());
    EXPECT_EQ(Received(5), Addresses(5));
    EXPECT_EQ(pending, QStringList());
    EXPECT_EQ(server->Connections(), 2);
}

TEST_F(SendOverWireTest, ASilenceIsLoggedAndCountsAsSent) {
    timeout = 200;
    Start(Script({At(SmtpStep::Rcpt, SmtpFault::Silence, {}, "<a2@")}));
    EXPECT_TRUE(Send());
    EXPECT_EQ(Received(2), (QStringList{Text("a1@example.org"), Text("a3@example.org")}));
    EXPECT_EQ(pending, QStringList());
    EXPECT_EQ(statuses.filter(Text("SMTP error 12002 - ")).size(), 1);
    EXPECT_TRUE(Summary().endsWith(Text("- The message was sent to 3 recipients")));
}

TEST_F(SendOverWireTest, WhenEveryRecipientIsRefusedAllAreMarkedForRemoval) {
    Start(Script({At(SmtpStep::Rcpt, SmtpFault::Reply, "550 no\r\n")}));
    message.Recipients = Addresses(20);
    EXPECT_TRUE(Send());
    EXPECT_EQ(Received(0), QStringList());
    EXPECT_EQ(pending, Addresses(20).replaceInStrings(QRegularExpression(Text("^")), Text("-")));
    EXPECT_TRUE(
        Summary().contains(Text("sent to 0 recipients\r\n- The message could not be delivered to 20 ")));
}

TEST_F(SendOverWireTest, WithoutAServerEveryRecipientFails) {
    Start({});
    server.reset(); // the port is free again
    EXPECT_TRUE(Send());
    EXPECT_EQ(pending.size(), 3);
    EXPECT_EQ(statuses.filter(Text("SMTP error 12029 - ")).size(), 3);
}

TEST_F(SendOverWireTest, ABlankLineOfAListFailsAndHoldsNobodyUp) {
    Start({});
    message.Recipients = {Text("a1@example.org"), QString(), Text("a2@example.org")};
    EXPECT_TRUE(Send());
    EXPECT_EQ(Received(2), Addresses(2));
    EXPECT_EQ(pending, QStringList(Text("-")));
}

TEST_F(SendOverWireTest, ACancelInTheMiddleEndsTheRunThere) {
    Start({});
    message.Recipients = Addresses(1000);
    CancelAt("C: RCPT TO:<a100@", [this] { engine->Cancel(); });
    EXPECT_FALSE(Send());
    const QStringList received = Received(99);
    EXPECT_GE(received.size(), 99);
    EXPECT_EQ(received, Addresses(1000).mid(0, received.size()));
    EXPECT_EQ(pending, QStringList());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(SendOverWireTest, ACancelDuringASilenceTakesEffectAtOnce) {
    Start(Script({At(SmtpStep::Message, SmtpFault::Silence)}));
    CancelAt("C: (message)", [this] { engine->Cancel(); });
    EXPECT_FALSE(Send());
    EXPECT_EQ(statuses, QStringList(Text("Sending message 1/3")));
    EXPECT_EQ(sendings, (std::vector<bool>{true, false}));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(SendOverWireTest, AnEngineDestroyedDuringASilenceIsGone) {
    Start(Script({At(SmtpStep::Greeting, SmtpFault::Silence)}));
    QTimer::singleShot(50, &keeper, [this] { engine.reset(); });
    EXPECT_FALSE(Send());
    EXPECT_EQ(statuses, QStringList(Text("Sending message 1/3")));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(SendOverWireTest, AfterACancelledSendTheNextOneConnectsAnew) {
    SmtpFault silence = At(SmtpStep::Message, SmtpFault::Silence);
    silence.Times = 1;
    Start(Script({silence}));
    CancelAt("C: (message)", [this] { engine->Cancel(); });
    EXPECT_FALSE(Send());
    EXPECT_TRUE(Send());
    EXPECT_EQ(Received(3), Addresses(3));
    EXPECT_EQ(server->Connections(), 2);
}

TEST_F(SendOverWireTest, EveryMessageCarriesTheAttachment) {
    Start({});
    profile.Write(Text("notes.txt"), "some notes");
    message.Attachments = {profile.Path(Text("notes.txt"))};
    EXPECT_TRUE(Send());
    ASSERT_EQ(Received(3), Addresses(3));
    for (const SmtpMail &mail : server->Mails())
        EXPECT_EQ(mail.Data.count("notes.txt"), server->Mails().constFirst().Data.count("notes.txt"));
    EXPECT_GE(server->Mails().constFirst().Data.count("notes.txt"), 1);
}

TEST_F(SendOverWireTest, AfterAnAttachmentThatVanishedTheNextSendHasOnlyItsOwn) {
    Start({});
    profile.Write(Text("a.txt"), "first");
    profile.Write(Text("b.txt"), "second");
    message.Attachments = {profile.Path(Text("a.txt")), profile.Path(Text("b.txt"))};
    QObject::connect(engine.get(), &SendEngine::StatusChanged, &keeper, [this](const QString &text) {
        if (text == Text("Sending message 2/3"))
            QFile::remove(profile.Path(Text("b.txt")));
    });
    EXPECT_FALSE(Send());
    EXPECT_EQ(Errors(), QStringList(Text("53 in Compose.cmdSend - File not found")));
    EXPECT_EQ(Received(1), Addresses(1));
    profile.Write(Text("c.txt"), "third");
    message.Attachments = {profile.Path(Text("c.txt"))};
    EXPECT_TRUE(Send());
    ASSERT_EQ(Received(4), Addresses(1) + Addresses(3));
    EXPECT_FALSE(server->Mails().at(1).Data.contains("a.txt"));
    EXPECT_TRUE(server->Mails().at(1).Data.contains("c.txt"));
}

} // namespace
} // namespace varlo
