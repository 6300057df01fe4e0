// What goes into a message: addresses, headers, texts, attachments, as the server and the reader get them.

#include "core/Literals.h"
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

const QString kAnn = u"ann@example.com"_s;
const QString kBob = u"bob@example.com"_s;

QString WriteTemporary(const QTemporaryDir &folder, const QString &name, const QByteArray &bytes) {
    QFile file(folder.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return file.fileName();
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
    EXPECT_EQ(read.Header("From"), u"\"The Editor\" <editor@example.org>"_s);
    EXPECT_EQ(read.Header("To"), u"\"Readers\" <ann@example.com>"_s);
    EXPECT_EQ(read.Header("Subject"), u"News"_s);
    EXPECT_EQ(read.Header("MIME-Version"), u"1.0"_s);
    EXPECT_TRUE(read.Header("Message-ID").endsWith(u"@example.org>"_s));
    const QDateTime date = QDateTime::fromString(read.Header("Date"), Qt::RFC2822Date);
    ASSERT_TRUE(date.isValid()) << read.Header("Date").toStdString();
    EXPECT_LT(std::abs(date.secsTo(QDateTime::currentDateTime())), 60);
    EXPECT_EQ(read.Text, u"Hello\r\n"_s);
}

TEST(SMTPMessageTest, LargeMessageArrivesWithItsHeadersToo) {
    const FakeSmtpServer server;
    Sender sender(server);
    const QString text = u"much\r\n"_s.repeated(20'000);
    sender.Message.Text = text;
    ASSERT_TRUE(sender.SendTo(kAnn));
    const ReceivedMail read = ReadMail(server.Mails().value(0).Data);
    EXPECT_EQ(read.Header("Subject"), u"News"_s);
    EXPECT_EQ(read.Header("To"), u"\"Readers\" <ann@example.com>"_s);
    EXPECT_EQ(read.Text, text);
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
    for (const QString &address : {QString(), u"a b@x.org"_s, u"a@x.org\r\nRSET"_s, u"a@x.org> SIZE=1"_s,
                                   u"a<b@x.org"_s, u"a@x\torg"_s, u"a@x.org\u0085"_s}) {
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
    sender.Account.Sender = u"\"X\" <no one>"_s;
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, (SmtpErrors{{501, u"The sender's address [no one] is not a mail address"_s}}));
}

TEST(SMTPMessageTest, BareRecipientIsTaken) {
    const FakeSmtpServer server;
    Sender sender(server);
    EXPECT_TRUE(sender.Send(kAnn));
    EXPECT_EQ(ReadMail(server.Mails().value(0).Data).Header("To"), kAnn);
}

TEST(SMTPMessageTest, DomainThatIsNotAsciiTravelsInItsAsciiForm) {
    const FakeSmtpServer server;
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(u"ann@b\u00fccher.example"_s));
    EXPECT_EQ(Reached(server), QByteArrayList{"ann@xn--bcher-kva.example"});
}

TEST(SMTPMessageTest, LocalPartThatIsNotAsciiNeedsAServerThatTakesIt) {
    SmtpScript script;
    const FakeSmtpServer plain;
    script.Extensions << "SMTPUTF8";
    const FakeSmtpServer able(script);
    const QString address = u"j\u00fcrgen@example.com"_s;
    Sender sender(plain);
    EXPECT_FALSE(sender.SendTo(address));
    EXPECT_EQ(sender.Errors,
              (SmtpErrors{{553, u"The server does not take addresses with other than ASCII characters"_s}}));
    EXPECT_TRUE(sender.SendTo(kAnn));
    sender.Account.Port = able.Port();
    EXPECT_TRUE(sender.SendTo(address));
    EXPECT_EQ(Reached(able), QByteArrayList{address.toUtf8()});
    EXPECT_TRUE(ClientLines(able).contains("MAIL FROM:<editor@example.org> SMTPUTF8"));
}

TEST(SMTPMessageTest, NoHeaderCanBeInjected) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Message.Subject = u"a\r\nBcc: all@example.com\r\n\r\nbody\r\n.\r\nMAIL"_s;
    sender.Account.Sender = u"\"E\r\nX-Evil: 1\" <editor@example.org>"_s;
    ASSERT_TRUE(sender.Send(u"\"R\nX-Evil: 2\rX-Evil: 3\" <ann@example.com>"_s));
    const ReceivedMail mail = ReadMail(server.Mails().value(0).Data);
    QByteArrayList names;
    for (const auto &header : mail.Headers)
        names << header.first;
    EXPECT_EQ(names, QByteArrayList({"date", "from", "to", "subject", "message-id", "mime-version",
                                     "content-type", "content-transfer-encoding"}));
    EXPECT_EQ(mail.Header("Subject"), u"a  Bcc: all@example.com    body  .  MAIL"_s);
    EXPECT_EQ(mail.Text, u"Hello\r\n"_s);
}

TEST(SMTPMessageTest, LinesOfDotsArriveAsTheyAre) {
    const FakeSmtpServer server;
    Sender sender(server);
    const QString text = u".\r\n..\r\n.dot\r\nend\r\n.\r\n"_s;
    sender.Message.Text = text;
    ASSERT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(ReadMail(server.Mails().value(0).Data).Text, text);
}

TEST(SMTPMessageTest, EmptySubjectAndTextAreTaken) {
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Message.Subject = QString();
    sender.Message.Text = QString();
    ASSERT_TRUE(sender.SendTo(kAnn));
    const ReceivedMail mail = ReadMail(server.Mails().value(0).Data);
    EXPECT_EQ(mail.Header("Subject"), QString());
    EXPECT_EQ(mail.Text, QString());
}

TEST(SMTPMessageTest, TextsOfAllTheWorldArriveAsTheyAre) {
    const QTemporaryDir folder;
    const QString file = WriteTemporary(folder, u"\u540d\u524d \u00fc.bin"_s, QByteArray(4, '\0'));
    const FakeSmtpServer server;
    Sender sender(server);
    const QString text =
        u"Gr\u00fc\u00dfe \u0394\u0395\u0396 \U0001F600=\r\n"_s + QString(2000, QLatin1Char('x')) + u"\r\n"_s;
    const QString subject = u"\u65e5\u672c\u8a9e\u306e\u4ef6\u540d \U0001F600 "_s.repeated(20);
    sender.Message.Subject = subject;
    sender.Message.Text = text;
    sender.Message.Attachments = {file};
    ASSERT_TRUE(sender.Send(u"\"Zo\u00eb \"Z\" L\u00f3pez\" <ann@example.com>"_s));
    const ReceivedMail mail = ReadMail(server.Mails().value(0).Data);
    EXPECT_EQ(mail.Header("Subject"), subject);
    EXPECT_EQ(mail.Header("To"), u"Zo\u00eb \"Z\" L\u00f3pez <ann@example.com>"_s);
    EXPECT_EQ(mail.Text, text);
    EXPECT_EQ(mail.Files, (QList<ReceivedFile>{{u"\u540d\u524d \u00fc.bin"_s, "application/octet-stream",
                                                QByteArray(4, '\0')}}));
}

TEST(SMTPMessageTest, AttachmentsBelongToTheirMessage) {
    const QTemporaryDir folder;
    const QString file = WriteTemporary(folder, u"a.txt"_s, "data");
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Message.Attachments = {file};
    for (const QString &address : {kAnn, kBob})
        ASSERT_TRUE(sender.SendTo(address));
    sender.Message.Attachments.clear();
    ASSERT_TRUE(sender.SendTo(kAnn));
    QList<qsizetype> counts;
    for (const SmtpMail &mail : server.Mails())
        counts << ReadMail(mail.Data).Files.size();
    EXPECT_EQ(counts, (QList<qsizetype>{1, 1, 0}));
}

TEST(SMTPMessageTest, AttachmentIsReadAgainWhenItChanged) {
    const QTemporaryDir folder;
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Message.Attachments = {WriteTemporary(folder, u"a.txt"_s, "old")};
    ASSERT_TRUE(sender.SendTo(kAnn));
    WriteTemporary(folder, u"a.txt"_s, "newer");
    ASSERT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(ReadMail(server.Mails().value(1).Data).Files.value(0).Bytes, "newer");
}

TEST(SMTPMessageTest, AttachmentsThatCannotBeReadAreNoFaultOfTheRecipient) {
    const QTemporaryDir folder;
    const FakeSmtpServer server;
    Sender sender(server);
    for (const auto &[path, number] :
         {std::pair(folder.filePath(u"none"_s), FileNotFound), std::pair(folder.path(), PermissionDenied)}) {
        sender.Message.Attachments = {path};
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Last(),
                  (Outcome{Outcome::Kind::NotTried, number, RuntimeError(number).Description(), true}));
    }
    EXPECT_EQ(sender.Errors, SmtpErrors());
    EXPECT_EQ(server.Connections(), 0);
}

TEST(SMTPMessageTest, AttachmentThatVanishedBetweenTwoRecipientsIsTold) {
    const QTemporaryDir folder;
    const QString file = WriteTemporary(folder, u"a.txt"_s, "data");
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Message.Attachments = {file};
    ASSERT_TRUE(sender.SendTo(kAnn));
    QFile::remove(file);
    EXPECT_FALSE(sender.SendTo(kBob));
    EXPECT_EQ(sender.Last().Number, FileNotFound);
    EXPECT_TRUE(sender.Last().IsLocal);
    sender.Message.Attachments.clear();
    EXPECT_TRUE(sender.SendTo(kBob));
}

TEST(SMTPMessageTest, SizeIsThatOfTheMessageWithoutDoubledDotsAndTheLast) {
    SmtpScript script;
    script.Extensions << "SIZE 1000000";
    const FakeSmtpServer server(script);
    Sender sender(server);
    for (const QString &text : {u"Hello\r\n"_s, u".\r\n..\r\nx\r\n.y\r\n"_s, u".\u00fc\r\n."_s}) {
        sender.Message.Text = text;
        ASSERT_TRUE(sender.SendTo(kAnn));
        const QByteArray size = QByteArray::number(server.Mails().last().Data.size());
        EXPECT_TRUE(ClientLines(server).contains("MAIL FROM:<editor@example.org> SIZE=" + size))
            << size.constData();
    }
}

TEST(SMTPMessageTest, LocalPartOfTheSenderThatIsNotAsciiNeedsAServerThatTakesItToo) {
    SmtpScript script;
    script.Extensions << "SMTPUTF8";
    const FakeSmtpServer plain;
    const FakeSmtpServer able(script);
    Sender sender(plain);
    sender.Account.Sender = u"\"Ed\" <j\u00fcrgen@example.com>"_s;
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Last().Number, 553);
    sender.Account.Port = able.Port();
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_TRUE(ClientLines(able).contains(u"MAIL FROM:<j\u00fcrgen@example.com> SMTPUTF8"_s.toUtf8()));
}

} // namespace varlo::test
