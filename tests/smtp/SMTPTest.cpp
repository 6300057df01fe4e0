#include "smtp/SMTP.h"

#include "core/Literals.h"
#include "smtp/Sender.h"

#include <gtest/gtest.h>

namespace varlo::test {

namespace {

const QString kAnn = u"ann@example.com"_s;
const QString kBob = u"bob@example.com"_s;

SmtpScript WithFault(SmtpFault fault, QByteArrayList extensions = {"PIPELINING"}) {
    SmtpScript script;
    script.Extensions = std::move(extensions);
    script.Faults = {std::move(fault)};
    return script;
}

const QByteArrayList kOneMail{"MAIL FROM:<editor@example.org>", "RCPT TO:<ann@example.com>", "DATA",
                              "(message)"};

} // namespace

TEST(SMTPTest, ServerWithPipeliningGetsTheCommandsWithoutWaiting) {
    SmtpScript script;
    script.HoldUntilData = true;
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(ClientLines(server), kOneMail);
    EXPECT_EQ(sender.Errors, SmtpErrors());
}

TEST(SMTPTest, ServerWithoutPipeliningGetsOneCommandAtATime) {
    SmtpScript script;
    script.Extensions = {};
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(Reached(server), QByteArrayList({"ann@example.com", "bob@example.com"}));
    EXPECT_FALSE(server.WasOverrun());
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, EncryptedServerGetsLargeMessagesToo) {
    SmtpScript script;
    script.Encrypts = true;
    const FakeSmtpServer server(script);
    Sender sender(server);
    const QString text = u"The same line again and again\r\n"_s.repeated(100'000);
    sender.Message.Text = text;
    for (const QString &address : {kAnn, kBob})
        EXPECT_TRUE(sender.SendTo(address));
    ASSERT_EQ(Reached(server), QByteArrayList({"ann@example.com", "bob@example.com"}));
    EXPECT_TRUE(server.Mails().value(1).Data.endsWith(text.toLatin1()));
    EXPECT_TRUE(ClientLines(server).contains("STARTTLS"));
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, ServerThatKnowsOnlyHeloIsServed) {
    SmtpFault noEhlo{SmtpStep::Ehlo, SmtpFault::Reply, "500 what\r\n", "EHLO"};
    const FakeSmtpServer server(WithFault(noEhlo));
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_FALSE(server.WasOverrun());
}

TEST(SMTPTest, RefusedRecipientIsReportedAndTheNextOneReached) {
    const SmtpFault refuse{SmtpStep::Rcpt, SmtpFault::Reply, "550-5.1.1 no such\r\n550 5.1.1 user here\r\n",
                           "ann"};
    for (const QByteArrayList &extensions : {QByteArrayList{"PIPELINING"}, QByteArrayList{}}) {
        const FakeSmtpServer server(WithFault(refuse, extensions));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_TRUE(sender.SendTo(kBob));
        EXPECT_EQ(sender.Errors, (SmtpErrors{{550, u"5.1.1 no such 5.1.1 user here"_s}}));
        EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
        EXPECT_EQ(server.Connections(), 1) << "the transaction left open must be reset, not the connection";
        EXPECT_TRUE(ClientLines(server).contains("RSET"));
    }
}

TEST(SMTPTest, RefusalBeforeTheConnectionBrokeIsTheAnswerAndNotTriedAgain) {
    const FakeSmtpServer server(
        WithFault({SmtpStep::Rcpt, SmtpFault::ReplyThenClose, "550 no such user\r\n", "ann"}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Last(), (Outcome{Outcome::Kind::Refused, 550, u"no such user"_s, false}));
    EXPECT_EQ(server.Connections(), 1);
    EXPECT_TRUE(sender.SendTo(kBob)) << "on a new connection";
}

TEST(SMTPTest, DataGrantedThoughTheRecipientWasRefusedGetsALoneDot) {
    SmtpScript script = WithFault({SmtpStep::Rcpt, SmtpFault::Reply, "550 no such user\r\n", "ann"});
    script.DataForNobody = true;
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{550, u"no such user"_s}}));
    EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, RefusedSenderIsReportedOnceWithItsOwnReply) {
    const FakeSmtpServer server(WithFault({SmtpStep::Mail, SmtpFault::Reply, "553 not yours\r\n"}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{553, u"not yours"_s}}));
}

TEST(SMTPTest, RefusedMessageIsReportedAndTheConnectionKept) {
    const SmtpFault spam{SmtpStep::Message, SmtpFault::Reply, "554 looks like spam\r\n", "", 0, 1};
    const FakeSmtpServer server(WithFault(spam));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{554, u"looks like spam"_s}}));
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, TooLargeMessageIsRefusedBeforeItIsTransferred) {
    SmtpScript script = WithFault({SmtpStep::Mail, SmtpFault::Reply, "552 too large\r\n", " SIZE="});
    script.Extensions << "SIZE 100";
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{552, u"too large"_s}}));
    EXPECT_FALSE(ClientLines(server).contains("(message)"));
}

TEST(SMTPTest, ConnectionIsKeptForManyMessages) {
    const FakeSmtpServer server;
    Sender sender(server);
    for (int i = 0; i < 50; ++i)
        ASSERT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, ThousandMessagesArriveOnceThoughTheServerClosesEveryHundred) {
    SmtpScript script;
    script.CloseEvery = 100;
    const FakeSmtpServer server(script);
    Sender sender(server);
    QByteArrayList wanted;
    for (int i = 0; i < 1000; ++i) {
        const QString address = u"member%1@example.com"_s.arg(i);
        wanted << address.toLatin1();
        ASSERT_TRUE(sender.SendTo(address)) << i;
    }
    EXPECT_EQ(Reached(server), wanted);
    EXPECT_EQ(server.Connections(), 10);
    EXPECT_EQ(sender.Errors, SmtpErrors());
}

TEST(SMTPTest, ConnectionThatBreaksOnceBeforeTheMessageIsTriedAgain) {
    for (const SmtpStep step :
         {SmtpStep::Greeting, SmtpStep::Ehlo, SmtpStep::Mail, SmtpStep::Rcpt, SmtpStep::Data}) {
        for (const QByteArrayList &extensions : {QByteArrayList{"PIPELINING"}, QByteArrayList{}}) {
            const FakeSmtpServer server(WithFault({step, SmtpFault::Close, "", "", 0, 1}, extensions));
            Sender sender(server);
            EXPECT_TRUE(sender.SendTo(kAnn)) << "step " << static_cast<int>(step);
            EXPECT_EQ(Reached(server), QByteArrayList{"ann@example.com"});
            EXPECT_EQ(sender.Errors, SmtpErrors());
        }
    }
}

TEST(SMTPTest, ConnectionThatBreaksTwiceBeforeTheMessageIsAFailure) {
    for (const SmtpStep step :
         {SmtpStep::Greeting, SmtpStep::Ehlo, SmtpStep::Mail, SmtpStep::Rcpt, SmtpStep::Data}) {
        const FakeSmtpServer server(WithFault({step, SmtpFault::Close}));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn)) << "step " << static_cast<int>(step);
        EXPECT_EQ(sender.Errors,
                  (SmtpErrors{{OSSMTP::ConnectionLost, u"The connection was closed by the server"_s}}));
        EXPECT_EQ(server.Connections(), 2);
    }
}

TEST(SMTPTest, ConnectionThatBreaksAfterTheMessageWasWrittenIsNeverTriedAgain) {
    for (const SmtpStep step : {SmtpStep::MessageBegin, SmtpStep::Message}) {
        const FakeSmtpServer server(WithFault({step, SmtpFault::Close, "", "", 0, 1}));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn));
        ASSERT_EQ(sender.Errors.size(), 1U);
        EXPECT_EQ(sender.Errors[0].Number, OSSMTP::ConnectionLost);
        EXPECT_EQ(server.Connections(), 1);
        EXPECT_TRUE(sender.SendTo(kBob));
        EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
    }
}

TEST(SMTPTest, ServerThatClosesDownBeforeTheMessageIsTriedOnceMore) {
    for (const SmtpStep step : {SmtpStep::Greeting, SmtpStep::Mail, SmtpStep::Rcpt, SmtpStep::Data}) {
        const FakeSmtpServer server(
            WithFault({step, SmtpFault::ReplyThenClose, "421 going down\r\n", "", 0, 1}));
        Sender sender(server);
        EXPECT_TRUE(sender.SendTo(kAnn)) << "step " << static_cast<int>(step);
        EXPECT_EQ(Reached(server), QByteArrayList{"ann@example.com"});
        EXPECT_EQ(server.Connections(), 2);
    }
}

TEST(SMTPTest, ServerThatClosesDownAgainIsReportedWithItsReply) {
    const FakeSmtpServer server(WithFault({SmtpStep::Mail, SmtpFault::ReplyThenClose, "421 going down\r\n"}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{421, u"going down"_s}}));
    EXPECT_EQ(server.Connections(), 2);
}

TEST(SMTPTest, ServerThatClosesDownInsteadOfTakingTheMessageIsTriedOnceMore) {
    const SmtpFault once{SmtpStep::Message, SmtpFault::ReplyThenClose, "421 later\r\n", "", 0, 1};
    const FakeSmtpServer server(WithFault(once));
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(Reached(server), QByteArrayList{"ann@example.com"});
    EXPECT_EQ(server.Connections(), 2);
    EXPECT_EQ(sender.Errors, SmtpErrors());
}

TEST(SMTPTest, ServerThatClosesDownInsteadOfTakingTheMessageTwiceIsReportedWithItsReply) {
    const FakeSmtpServer server(WithFault({SmtpStep::Message, SmtpFault::ReplyThenClose, "421 later\r\n"}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{421, u"later"_s}}));
    EXPECT_EQ(server.Connections(), 2);
}

TEST(SMTPTest, ConnectionThatBreaksWhileTheMessageIsWrittenIsTriedOnceMore) {
    const SmtpFault once{SmtpStep::MessageBegin, SmtpFault::Close, "", "", 0, 1};
    const FakeSmtpServer server(WithFault(once));
    Sender sender(server);
    sender.Message.Text = u"much\r\n"_s.repeated(4'000'000); // more than the buffers of a socket hold
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(Reached(server), QByteArrayList{"ann@example.com"});
    EXPECT_EQ(server.Connections(), 2);
}

TEST(SMTPTest, ConnectionThatBreaksWhileTheMessageIsWrittenAgainIsAFailure) {
    const FakeSmtpServer server(WithFault({SmtpStep::MessageBegin, SmtpFault::Close}));
    Sender sender(server);
    sender.Message.Text = u"much\r\n"_s.repeated(4'000'000);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Last(), (Outcome{Outcome::Kind::Later, OSSMTP::ConnectionLost,
                                      u"The connection was closed by the server"_s, false}));
    EXPECT_EQ(server.Connections(), 2);
}

TEST(SMTPTest, ServerThatSaysWhyItClosesWhileTheMessageIsWrittenIsQuoted) {
    const FakeSmtpServer server(
        WithFault({SmtpStep::MessageBegin, SmtpFault::ReplyThenSilence, "552 quota exceeded\r\n", "", 0, 1}));
    Sender sender(server);
    sender.Message.Text = u"much\r\n"_s.repeated(4'000'000); // more than the buffers of a socket hold
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{552, u"quota exceeded"_s}}));
    EXPECT_TRUE(sender.SendTo(kBob)) << "on a new connection";
    EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
}

TEST(SMTPTest, GreetingThatRefusesIsReportedWithItsReply) {
    const FakeSmtpServer server(
        WithFault({SmtpStep::Greeting, SmtpFault::ReplyThenClose, "554 no service\r\n"}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{554, u"no service"_s}}));
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, RepliesTornIntoBytesAreUnderstood) {
    SmtpScript script;
    script.TornReplies = true;
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(Reached(server), QByteArrayList({"ann@example.com", "bob@example.com"}));
}

TEST(SMTPTest, MegabyteWithoutALineEndIsNotAReply) {
    for (const SmtpStep step : {SmtpStep::Mail, SmtpStep::Rcpt, SmtpStep::Data, SmtpStep::Message}) {
        const FakeSmtpServer server(
            WithFault({step, SmtpFault::Reply, QByteArray(1024 * 1024, '2'), "", 0, 1}));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn));
        ASSERT_EQ(sender.Errors.size(), 1U);
        EXPECT_EQ(sender.Errors[0].Number, OSSMTP::InvalidReply);
        EXPECT_TRUE(sender.SendTo(kBob)) << "on a new connection";
    }
}

TEST(SMTPTest, ZerosInRepliesAreHarmless) {
    const FakeSmtpServer server(
        WithFault({SmtpStep::Rcpt, SmtpFault::Reply, QByteArray("550 a\0b\0\r\n", 10)}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{550, u"a b"_s}}));
}

TEST(SMTPTest, AnswersThatDoNotBelongAreNotSmtp) {
    struct Case {
        SmtpStep At;
        QByteArray Reply;
    };
    for (const Case &wrong :
         {Case{SmtpStep::Greeting, "HTTP/1.0 400 Bad Request\r\n"}, Case{SmtpStep::Mail, "354 eh\r\n"},
          Case{SmtpStep::Data, "250 eh\r\n"}, Case{SmtpStep::Message, "354 eh\r\n"},
          Case{SmtpStep::Rcpt, "hello\r\n"}, Case{SmtpStep::Mail, QByteArray(64, '\0') + "\r\n"}}) {
        const FakeSmtpServer server(WithFault({wrong.At, SmtpFault::Reply, wrong.Reply, "", 0, 1}));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn)) << wrong.Reply.constData();
        ASSERT_EQ(sender.Errors.size(), 1U);
        EXPECT_EQ(sender.Errors[0].Number, OSSMTP::InvalidReply) << wrong.Reply.constData();
        EXPECT_EQ(Reached(server), QByteArrayList());
        EXPECT_TRUE(sender.SendTo(kBob));
    }
}

TEST(SMTPTest, UnaskedReplyBetweenMessagesOpensANewConnection) {
    const SmtpFault twice{SmtpStep::Message, SmtpFault::Reply, "250 queued\r\n250 queued\r\n", "", 0, 1};
    const FakeSmtpServer server(WithFault(twice));
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(server.Connections(), 2);
}

TEST(SMTPTest, ClosedPortIsACleanFailure) {
    int port = 0;
    {
        const FakeSmtpServer server;
        port = server.Port();
    }
    Sender sender(port);
    EXPECT_FALSE(sender.SendTo(kAnn));
    ASSERT_EQ(sender.Errors.size(), 1U);
    EXPECT_EQ(sender.Errors[0].Number, OSSMTP::CannotConnect);
    EXPECT_FALSE(sender.Errors[0].Description.isEmpty());
}

TEST(SMTPTest, PortsThatDoNotExistAreACleanFailure) {
    for (const int port : {0, -5, 65536}) {
        Sender sender(port);
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Errors,
                  (SmtpErrors{{OSSMTP::CannotConnect, u"The port %1 does not exist"_s.arg(port)}}));
    }
}

TEST(SMTPTest, NamesThatAreNoServerAreNotResolved) {
    const FakeSmtpServer server;
    const QString port = QString::number(server.Port());
    for (const QString &host : {QString(), u"  "_s, u"user@127.0.0.1"_s, u"127.0.0.1/x"_s,
                                u"127.0.0.1:%1"_s.arg(port), u"127.0.0.1\r\nQUIT"_s, u"nowhere.invalid"_s}) {
        Sender sender(server);
        sender.Account.Host = host;
        EXPECT_FALSE(sender.SendTo(kAnn)) << host.toStdString();
        ASSERT_EQ(sender.Errors.size(), 1U);
        EXPECT_EQ(sender.Errors[0].Number, OSSMTP::NameNotResolved) << host.toStdString();
    }
    EXPECT_EQ(server.Connections(), 0);
}

TEST(SMTPTest, AnotherServerGetsAConnectionOfItsOwn) {
    const FakeSmtpServer first;
    const FakeSmtpServer second;
    Sender sender(first);
    EXPECT_TRUE(sender.SendTo(kAnn));
    sender.Account.Port = second.Port();
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_TRUE(first.WaitFor("C: QUIT"));
    EXPECT_EQ(Reached(second), QByteArrayList{"bob@example.com"});
}

TEST(SMTPTest, DestructionSaysQuit) {
    const FakeSmtpServer server;
    {
        Sender sender(server);
        EXPECT_TRUE(sender.SendTo(kAnn));
    }
    EXPECT_TRUE(server.WaitFor("C: QUIT"));
}

} // namespace varlo::test
