// What goes into a message: addresses, headers, texts, attachments, as the server and the reader get them.

#include "core/RuntimeError.h"
#include "smtp/SMTP.h"
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

} // namespace

TEST(SMTPMessageTest, MessageArrivesWithItsHeaders) {
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

TEST(SMTPMessageTest, MessageIdsDiffer) {
    const FakeSmtpServer server;
    Sender sender(server);
    QSet<QString> ids;
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(sender.SendTo(kAnn));
    for (const SmtpMail &mail : server.Mails())
        ids << ReadMail(mail.Data).Header("Message-ID");
    EXPECT_EQ(ids.size(), 20);
}

TEST(SMTPMessageTest, EachRecipientSeesOnlyHisOwnAddress) {
    const FakeSmtpServer server;
    Sender sender(server);
    ASSERT_TRUE(sender.SendTo(kAnn));
    ASSERT_TRUE(sender.SendTo(kBob));
    EXPECT_FALSE(server.Mails().value(0).Data.contains("bob@"));
    EXPECT_FALSE(server.Mails().value(1).Data.contains("ann@"));
}

TEST(SMTPMessageTest, AddressThatIsNoneNeverReachesTheServer) {
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

TEST(SMTPMessageTest, SenderThatIsNoneIsNamedInTheReport) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.SetSender(QStringLiteral("\"X\" <no one>"));
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors,
              (SmtpErrors{{501, QStringLiteral("The sender's address [no one] is not a mail address")}}));
}

TEST(SMTPMessageTest, BareRecipientIsTaken) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.SetRecipient(kAnn);
    EXPECT_TRUE(sender.Smtp.Send());
    EXPECT_EQ(ReadMail(server.Mails().value(0).Data).Header("To"), kAnn);
}

TEST(SMTPMessageTest, DomainThatIsNotAsciiTravelsInItsAsciiForm) {
    const FakeSmtpServer server;
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(QStringLiteral("ann@b\u00fccher.example")));
    EXPECT_EQ(Reached(server), QByteArrayList{"ann@xn--bcher-kva.example"});
}

TEST(SMTPMessageTest, LocalPartThatIsNotAsciiNeedsAServerThatTakesIt) {
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

TEST(SMTPMessageTest, NoHeaderCanBeInjected) {
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

TEST(SMTPMessageTest, LinesOfDotsArriveAsTheyAre) {
    const FakeSmtpServer server;
    Sender sender(server);
    const QString text = QStringLiteral(".\r\n..\r\n.dot\r\nend\r\n.\r\n");
    sender.Smtp.SetMessageText(text);
    ASSERT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(ReadMail(server.Mails().value(0).Data).Text, text);
}

TEST(SMTPMessageTest, EmptySubjectAndTextAreTaken) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.SetSubject(QString());
    sender.Smtp.SetMessageText(QString());
    ASSERT_TRUE(sender.SendTo(kAnn));
    const ReceivedMail mail = ReadMail(server.Mails().value(0).Data);
    EXPECT_EQ(mail.Header("Subject"), QString());
    EXPECT_EQ(mail.Text, QString());
}

TEST(SMTPMessageTest, TextsOfAllTheWorldArriveAsTheyAre) {
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

TEST(SMTPMessageTest, AttachmentsAreGoneAfterASend) {
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

TEST(SMTPMessageTest, AttachmentIsReadAgainWhenItChanged) {
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

TEST(SMTPMessageTest, BadAttachmentsAreRefused) {
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

TEST(SMTPMessageTest, AttachmentThatVanishedIsNoFaultOfTheRecipient) {
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
