#include "smtp/SMTP.h"

#include "core/RuntimeError.h"
#include "smtp/Sender.h"
#include "support/ReceivedMail.h"

#include <QDateTime>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace varlo::test {

namespace {

const QString kAnn = QStringLiteral("ann@example.com");
const QString kBob = QStringLiteral("bob@example.com");

SmtpScript WithFault(SmtpFault fault, QByteArrayList extensions = {"PIPELINING"}) {
    SmtpScript script;
    script.Extensions = std::move(extensions);
    script.Faults = {std::move(fault)};
    return script;
}

// Who got mail, in order.
QByteArrayList Reached(const FakeSmtpServer &server) {
    QByteArrayList all;
    for (const SmtpMail &mail : server.Mails())
        all += mail.Recipients;
    return all;
}

QByteArrayList ClientLines(const FakeSmtpServer &server) {
    QByteArrayList lines;
    for (const QByteArray &line : server.Dialogue())
        if (line.startsWith("C: ") && !line.startsWith("C: EHLO"))
            lines << line.mid(3);
    return lines;
}

QString WriteTemporary(const QTemporaryDir &folder, const QString &name, const QByteArray &bytes) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return file.fileName();
}

int NumberThrown(const std::function<void()> &call) {
    try {
        call();
    } catch (const RuntimeError &error) {
        return error.Number();
    }
    return 0;
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

TEST(SMTPTest, ServerThatKnowsOnlyHeloIsServed) {
    SmtpFault noEhlo{SmtpStep::Ehlo, SmtpFault::Reply, "500 what\r\n", "EHLO"};
    const FakeSmtpServer server(WithFault(noEhlo));
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_FALSE(server.WasOverrun());
}

TEST(SMTPTest, MessageArrivesWithItsHeaders) {
    const FakeSmtpServer server;
    Sender sender(server);
    ASSERT_TRUE(sender.SendTo(kAnn));
    const SmtpMail mail = server.Mails().value(0);
    EXPECT_EQ(mail.Sender, "editor@example.org");
    EXPECT_EQ(mail.Recipients, QByteArrayList{"ann@example.com"});
    const ReceivedMail read = ReadMail(mail.Data);
    EXPECT_EQ(read.Header("From"), QStringLiteral("\"The Editor\" <editor@example.org>"));
    EXPECT_EQ(read.Header("To"), QStringLiteral("\"Readers\" <ann@example.com>"));
    EXPECT_EQ(read.Header("Subject"), QStringLiteral("News"));
    EXPECT_EQ(read.Header("MIME-Version"), QStringLiteral("1.0"));
    EXPECT_TRUE(read.Header("Message-ID").endsWith(QStringLiteral("@example.org>")));
    const QDateTime date = QDateTime::fromString(read.Header("Date"), Qt::RFC2822Date);
    EXPECT_LT(std::abs(date.secsTo(QDateTime::currentDateTime())), 60);
    EXPECT_EQ(read.Text, QStringLiteral("Hello\r\n"));
}

TEST(SMTPTest, MessageIdsDiffer) {
    const FakeSmtpServer server;
    Sender sender(server);
    QSet<QString> ids;
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(sender.SendTo(kAnn));
    for (const SmtpMail &mail : server.Mails())
        ids << ReadMail(mail.Data).Header("Message-ID");
    EXPECT_EQ(ids.size(), 20);
}

TEST(SMTPTest, EachRecipientSeesOnlyHisOwnAddress) {
    const FakeSmtpServer server;
    Sender sender(server);
    ASSERT_TRUE(sender.SendTo(kAnn));
    ASSERT_TRUE(sender.SendTo(kBob));
    EXPECT_FALSE(server.Mails().value(0).Data.contains("bob@"));
    EXPECT_FALSE(server.Mails().value(1).Data.contains("ann@"));
}

TEST(SMTPTest, RefusedRecipientIsReportedAndTheNextOneReached) {
    const SmtpFault refuse{SmtpStep::Rcpt, SmtpFault::Reply, "550-5.1.1 no such\r\n550 5.1.1 user here\r\n",
                           "ann"};
    for (const QByteArrayList &extensions : {QByteArrayList{"PIPELINING"}, QByteArrayList{}}) {
        const FakeSmtpServer server(WithFault(refuse, extensions));
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_TRUE(sender.SendTo(kBob));
        EXPECT_EQ(sender.Errors, (SmtpErrors{{550, QStringLiteral("5.1.1 no such 5.1.1 user here")}}));
        EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
        EXPECT_EQ(server.Connections(), 1) << "the transaction left open must be reset, not the connection";
        EXPECT_TRUE(ClientLines(server).contains("RSET"));
    }
}

TEST(SMTPTest, DataGrantedThoughTheRecipientWasRefusedGetsALoneDot) {
    SmtpScript script = WithFault({SmtpStep::Rcpt, SmtpFault::Reply, "550 no such user\r\n", "ann"});
    script.DataForNobody = true;
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{550, QStringLiteral("no such user")}}));
    EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, RefusedSenderIsReportedOnceWithItsOwnReply) {
    const FakeSmtpServer server(WithFault({SmtpStep::Mail, SmtpFault::Reply, "553 not yours\r\n"}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{553, QStringLiteral("not yours")}}));
}

TEST(SMTPTest, RefusedMessageIsReportedAndTheConnectionKept) {
    const SmtpFault spam{SmtpStep::Message, SmtpFault::Reply, "554 looks like spam\r\n", "", 0, 1};
    const FakeSmtpServer server(WithFault(spam));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.SendTo(kBob));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{554, QStringLiteral("looks like spam")}}));
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, TooLargeMessageIsRefusedBeforeItIsTransferred) {
    SmtpScript script = WithFault({SmtpStep::Mail, SmtpFault::Reply, "552 too large\r\n", " SIZE="});
    script.Extensions << "SIZE 100";
    const FakeSmtpServer server(script);
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{552, QStringLiteral("too large")}}));
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
        const QString address = QStringLiteral("member%1@example.com").arg(i);
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
        EXPECT_EQ(sender.Errors, (SmtpErrors{{OSSMTP::ConnectionLost,
                                              QStringLiteral("The connection was closed by the server")}}));
        EXPECT_EQ(server.Connections(), 2);
    }
}

TEST(SMTPTest, ConnectionThatBreaksWithinTheMessageIsNeverTriedAgain) {
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
    EXPECT_EQ(sender.Errors, (SmtpErrors{{421, QStringLiteral("going down")}}));
    EXPECT_EQ(server.Connections(), 2);
}

TEST(SMTPTest, ServerThatClosesDownAfterTheMessageIsNotTriedAgain) {
    const FakeSmtpServer server(WithFault({SmtpStep::Message, SmtpFault::ReplyThenClose, "421 later\r\n"}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{421, QStringLiteral("later")}}));
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPTest, ServerThatSaysWhyItClosesWhileTheMessageIsWrittenIsQuoted) {
    const FakeSmtpServer server(
        WithFault({SmtpStep::MessageBegin, SmtpFault::ReplyThenSilence, "552 quota exceeded\r\n", "", 0, 1}));
    Sender sender(server);
    sender.Smtp.SetMessageText(
        QStringLiteral("much\r\n").repeated(4'000'000)); // more than the buffers of a socket hold
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{552, QStringLiteral("quota exceeded")}}));
    EXPECT_TRUE(sender.SendTo(kBob)) << "on a new connection";
    EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
}

TEST(SMTPTest, GreetingThatRefusesIsReportedWithItsReply) {
    const FakeSmtpServer server(
        WithFault({SmtpStep::Greeting, SmtpFault::ReplyThenClose, "554 no service\r\n"}));
    Sender sender(server);
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{554, QStringLiteral("no service")}}));
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
    EXPECT_EQ(sender.Errors, (SmtpErrors{{550, QStringLiteral("a b")}}));
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
        EXPECT_EQ(sender.Errors, (SmtpErrors{{OSSMTP::CannotConnect,
                                              QStringLiteral("The port %1 does not exist").arg(port)}}));
    }
}

TEST(SMTPTest, NamesThatAreNoServerAreNotResolved) {
    const FakeSmtpServer server;
    const QString port = QString::number(server.Port());
    for (const QString &host : {QString(), QStringLiteral("  "), QStringLiteral("user@127.0.0.1"),
                                QStringLiteral("127.0.0.1/x"), QStringLiteral("127.0.0.1:%1").arg(port),
                                QStringLiteral("127.0.0.1\r\nQUIT"), QStringLiteral("nowhere.invalid")}) {
        Sender sender(server);
        sender.Smtp.SetServer(host);
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
    sender.Smtp.SetPort(second.Port());
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

TEST(SMTPTest, AddressThatIsNoneNeverReachesTheServer) {
    const FakeSmtpServer server;
    for (const QString &address : {QString(), QStringLiteral("a b@x.org"), QStringLiteral("a@x.org\r\nRSET"),
                                   QStringLiteral("a@x.org> SIZE=1"), QStringLiteral("a<b@x.org"),
                                   QStringLiteral("a@x\torg"), QStringLiteral("a@x.org\u0085")}) {
        Sender sender(server);
        EXPECT_FALSE(sender.SendTo(address));
        ASSERT_EQ(sender.Errors.size(), 1U) << address.toStdString();
        EXPECT_EQ(sender.Errors[0].Number, 501) << address.toStdString();
    }
    EXPECT_EQ(server.Connections(), 0);
}

TEST(SMTPTest, SenderThatIsNoneIsNamedInTheReport) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.SetSender(QStringLiteral("\"X\" <no one>"));
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors,
              (SmtpErrors{{501, QStringLiteral("The sender's address [no one] is not a mail address")}}));
}

TEST(SMTPTest, BareRecipientIsTaken) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.SetRecipient(kAnn);
    EXPECT_TRUE(sender.Smtp.Send());
    EXPECT_EQ(ReadMail(server.Mails().value(0).Data).Header("To"), kAnn);
}

TEST(SMTPTest, DomainThatIsNotAsciiTravelsInItsAsciiForm) {
    const FakeSmtpServer server;
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(QStringLiteral("ann@b\u00fccher.example")));
    EXPECT_EQ(Reached(server), QByteArrayList{"ann@xn--bcher-kva.example"});
}

TEST(SMTPTest, LocalPartThatIsNotAsciiNeedsAServerThatTakesIt) {
    SmtpScript script;
    const FakeSmtpServer plain;
    script.Extensions << "SMTPUTF8";
    const FakeSmtpServer able(script);
    const QString address = QStringLiteral("j\u00fcrgen@example.com");
    Sender sender(plain);
    EXPECT_FALSE(sender.SendTo(address));
    EXPECT_EQ(
        sender.Errors,
        (SmtpErrors{
            {553, QStringLiteral("The server does not take addresses with other than ASCII characters")}}));
    EXPECT_TRUE(sender.SendTo(kAnn));
    sender.Smtp.SetPort(able.Port());
    EXPECT_TRUE(sender.SendTo(address));
    EXPECT_EQ(Reached(able), QByteArrayList{address.toUtf8()});
    EXPECT_TRUE(ClientLines(able).contains("MAIL FROM:<editor@example.org> SMTPUTF8"));
}

TEST(SMTPTest, NoHeaderCanBeInjected) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.SetSubject(QStringLiteral("a\r\nBcc: all@example.com\r\n\r\nbody\r\n.\r\nMAIL"));
    sender.Smtp.SetSender(QStringLiteral("\"E\r\nX-Evil: 1\" <editor@example.org>"));
    sender.Smtp.SetRecipient(QStringLiteral("\"R\nX-Evil: 2\rX-Evil: 3\" <ann@example.com>"));
    ASSERT_TRUE(sender.Smtp.Send());
    const ReceivedMail mail = ReadMail(server.Mails().value(0).Data);
    QByteArrayList names;
    for (const auto &header : mail.Headers)
        names << header.first;
    EXPECT_EQ(names, QByteArrayList({"date", "from", "to", "subject", "message-id", "mime-version",
                                     "content-type", "content-transfer-encoding"}));
    EXPECT_EQ(mail.Header("Subject"), QStringLiteral("a  Bcc: all@example.com    body  .  MAIL"));
    EXPECT_EQ(mail.Text, QStringLiteral("Hello\r\n"));
}

TEST(SMTPTest, LinesOfDotsArriveAsTheyAre) {
    const FakeSmtpServer server;
    Sender sender(server);
    const QString text = QStringLiteral(".\r\n..\r\n.dot\r\nend\r\n.\r\n");
    sender.Smtp.SetMessageText(text);
    ASSERT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(ReadMail(server.Mails().value(0).Data).Text, text);
}

TEST(SMTPTest, EmptySubjectAndTextAreTaken) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.SetSubject(QString());
    sender.Smtp.SetMessageText(QString());
    ASSERT_TRUE(sender.SendTo(kAnn));
    const ReceivedMail mail = ReadMail(server.Mails().value(0).Data);
    EXPECT_EQ(mail.Header("Subject"), QString());
    EXPECT_EQ(mail.Text, QString());
}

TEST(SMTPTest, TextsOfAllTheWorldArriveAsTheyAre) {
    const QTemporaryDir folder;
    const QString file =
        WriteTemporary(folder, QStringLiteral("\u540d\u524d \u00fc.bin"), QByteArray(4, '\0'));
    const FakeSmtpServer server;
    Sender sender(server);
    const QString text = QStringLiteral("Gr\u00fc\u00dfe \u0394\u0395\u0396 \U0001F600=\r\n") +
                         QString(2000, QLatin1Char('x')) + QStringLiteral("\r\n");
    const QString subject = QStringLiteral("\u65e5\u672c\u8a9e\u306e\u4ef6\u540d \U0001F600 ").repeated(20);
    sender.Smtp.SetSubject(subject);
    sender.Smtp.SetMessageText(text);
    sender.Smtp.SetRecipient(QStringLiteral("\"Zo\u00eb \"Z\" L\u00f3pez\" <ann@example.com>"));
    sender.Smtp.AddAttachment(file, file);
    ASSERT_TRUE(sender.Smtp.Send());
    const ReceivedMail mail = ReadMail(server.Mails().value(0).Data);
    EXPECT_EQ(mail.Header("Subject"), subject);
    EXPECT_EQ(mail.Header("To"), QStringLiteral("Zo\u00eb \"Z\" L\u00f3pez <ann@example.com>"));
    EXPECT_EQ(mail.Text, text);
    EXPECT_EQ(mail.Files, (QList<ReceivedFile>{{QStringLiteral("\u540d\u524d \u00fc.bin"),
                                                "application/octet-stream", QByteArray(4, '\0')}}));
}

TEST(SMTPTest, AttachmentsAreGoneAfterASend) {
    const QTemporaryDir folder;
    const QString file = WriteTemporary(folder, QStringLiteral("a.txt"), "data");
    const FakeSmtpServer server;
    Sender sender(server);
    for (const QString &address : {kAnn, kBob}) {
        sender.Smtp.AddAttachment(file, file);
        ASSERT_TRUE(sender.SendTo(address));
    }
    ASSERT_TRUE(sender.SendTo(kAnn));
    QList<qsizetype> counts;
    for (const SmtpMail &mail : server.Mails())
        counts << ReadMail(mail.Data).Files.size();
    EXPECT_EQ(counts, (QList<qsizetype>{1, 1, 0}));
}

TEST(SMTPTest, AttachmentIsReadAgainWhenItChanged) {
    const QTemporaryDir folder;
    const QString file = WriteTemporary(folder, QStringLiteral("a.txt"), "old");
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.AddAttachment(file, file);
    ASSERT_TRUE(sender.SendTo(kAnn));
    WriteTemporary(folder, QStringLiteral("a.txt"), "newer");
    sender.Smtp.AddAttachment(file, file);
    ASSERT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(ReadMail(server.Mails().value(1).Data).Files.value(0).Bytes, "newer");
}

TEST(SMTPTest, BadAttachmentsAreRefused) {
    const QTemporaryDir folder;
    const QString file = WriteTemporary(folder, QStringLiteral("a.txt"), "data");
    Sender sender(1);
    sender.Smtp.AddAttachment(file, QStringLiteral("key"));
    EXPECT_EQ(NumberThrown([&] { sender.Smtp.AddAttachment(file, QStringLiteral("key")); }),
              KeyAlreadyPresent);
    EXPECT_EQ(NumberThrown([&] {
                  sender.Smtp.AddAttachment(folder.filePath(QStringLiteral("none")), QStringLiteral("b"));
              }),
              FileNotFound);
    EXPECT_EQ(NumberThrown([&] { sender.Smtp.AddAttachment(folder.path(), QStringLiteral("c")); }),
              PermissionDenied);
}

TEST(SMTPTest, AttachmentThatVanishedIsNoFaultOfTheRecipient) {
    const QTemporaryDir folder;
    const QString file = WriteTemporary(folder, QStringLiteral("a.txt"), "data");
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.AddAttachment(file, file);
    QFile::remove(file);
    EXPECT_EQ(NumberThrown([&] { sender.SendTo(kAnn); }), FileNotFound);
    EXPECT_EQ(sender.Errors, SmtpErrors());
    EXPECT_TRUE(sender.SendTo(kAnn)) << "the collection is empty again";
}

} // namespace varlo::test
