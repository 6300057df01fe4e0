#include "smtp/MimeMessage.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "smtp/HeaderText.h"
#include "support/Printers.h"
#include "support/ReceivedMail.h"

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace OSSMTP {

namespace {

using varlo::test::ReadMail;
using varlo::test::ReceivedFile;
using varlo::test::ReceivedMail;

// The content as a reader gets it: without the closing dot, doubled dots undone.
ReceivedMail Read(const QByteArray &content) {
    EXPECT_TRUE(content.endsWith("\r\n.\r\n"));
    return ReadMail(content.chopped(3).replace("\r\n..", "\r\n."));
}

class MimeMessageTest : public testing::Test {
protected:
    Attachment Write(const QString &name, const QByteArray &bytes) {
        QFile file(folder_.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        EXPECT_EQ(file.write(bytes), bytes.size());
        file.close();
        return DescribeFile(file.fileName());
    }
    QByteArray Encode(const QString &text, const std::vector<Attachment> &files) {
        content_.Begin(text, files);
        while (!content_.Step()) {
        }
        return content_.Bytes();
    }
    void MakeOlder(const Attachment &attachment) {
        QFile file(attachment.Path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        ASSERT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addSecs(-100), QFileDevice::FileModificationTime));
    }

    QTemporaryDir folder_;
    MessageContent content_;
};

} // namespace

TEST_F(MimeMessageTest, AsciiTextTravelsAsItIs) {
    EXPECT_EQ(Encode(u"Hi\n.\nBye"_s, {}),
              "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: "
              "7bit\r\n\r\nHi\r\n..\r\nBye\r\n.\r\n");
}

TEST_F(MimeMessageTest, OtherTextIsQuotedPrintable) {
    const QString text = u"\u00fc\r\n"_s + QString(2000, QLatin1Char('x')) + u"\r\n"_s;
    const ReceivedMail mail = Read(Encode(text, {}));
    EXPECT_EQ(mail.TextEncoding, "quoted-printable");
    EXPECT_EQ(mail.Text, text);
}

TEST_F(MimeMessageTest, LongAsciiLineIsQuotedPrintable) {
    const QString text = QString(2000, QLatin1Char('x')) + u"\r\n"_s;
    const ReceivedMail mail = Read(Encode(text, {}));
    EXPECT_EQ(mail.TextEncoding, "quoted-printable");
    EXPECT_EQ(mail.Text, text);
}

TEST_F(MimeMessageTest, FilesAreParts) {
    QByteArray bytes;
    for (quint32 i = 0; i < 300'000; ++i)
        bytes.append(static_cast<char>(i * 7919 >> 3));
    const std::vector<Attachment> files{Write(u"a.pdf"_s, "%PDF-1.4\n"), Write(u"empty.txt"_s, ""),
                                        Write(u"\u00fc.bin"_s, bytes)};
    const ReceivedMail mail = Read(Encode(u"See\r\n.\r\n"_s, files));
    EXPECT_EQ(mail.Text, u"See\r\n.\r\n"_s);
    ASSERT_EQ(mail.Files.size(), 3);
    EXPECT_EQ(mail.Files[0], (ReceivedFile{u"a.pdf"_s, "application/pdf", "%PDF-1.4\n"}));
    EXPECT_EQ(mail.Files[1].Name, u"empty.txt"_s);
    EXPECT_EQ(mail.Files[1].Bytes, "");
    EXPECT_EQ(mail.Files[2], (ReceivedFile{u"\u00fc.bin"_s, "application/octet-stream", bytes}));
}

TEST_F(MimeMessageTest, MessageAsAFileIsPlainBytes) {
    const Attachment eml = Write(u"old.eml"_s, "From: a@b\r\nSubject: x\r\n\r\nhi\r\n");
    const ReceivedMail mail = Read(Encode(QString(), {eml}));
    EXPECT_EQ(mail.Files.value(0).Type, "application/octet-stream");
}

TEST_F(MimeMessageTest, UnchangedMessageIsNotEncodedAgain) {
    const Attachment file = Write(u"a.txt"_s, "data");
    const QByteArray first = Encode(u"text"_s, {file});
    ASSERT_TRUE(QFile::remove(file.Path)); // reading it again would fail
    const QByteArray second = Encode(u"text"_s, {file});
    EXPECT_EQ(first.constData(), second.constData()) << "shared, not copied";
}

TEST_F(MimeMessageTest, ChangedTextOrFileIsEncodedAgain) {
    const Attachment file = Write(u"a.txt"_s, "data");
    Encode(u"text"_s, {file});
    EXPECT_EQ(Read(Encode(u"other"_s, {file})).Text, u"other\r\n"_s);
    const Attachment same = Write(u"a.txt"_s, "DATA");
    MakeOlder(same);
    const Attachment older = DescribeFile(same.Path);
    EXPECT_EQ(Read(Encode(u"other"_s, {older})).Files.value(0).Bytes, "DATA");
    EXPECT_EQ(Read(Encode(u"other"_s, {})).Files.size(), 0);
}

TEST_F(MimeMessageTest, FileThatVanishedThrowsAndKeepsNothing) {
    const Attachment file = Write(u"a.txt"_s, "data");
    ASSERT_TRUE(QFile::remove(file.Path));
    EXPECT_THROW(Encode(QString(), {file}), varlo::RuntimeError);
    Write(u"a.txt"_s, "data");
    EXPECT_EQ(Read(Encode(QString(), {file})).Files.value(0).Bytes, "data");
}

TEST_F(MimeMessageTest, AnotherMessageMayBeginBeforeTheFirstIsDone) {
    const Attachment file = Write(u"a.txt"_s, QByteArray(1'000'000, 'a'));
    content_.Begin(u"first"_s, {file});
    EXPECT_FALSE(content_.Step());
    EXPECT_FALSE(content_.Step());
    EXPECT_EQ(Encode(u"second"_s, {}), "Content-Type: text/plain; charset=utf-8\r\n"
                                       "Content-Transfer-Encoding: 7bit\r\n\r\nsecond\r\n.\r\n");
}

TEST_F(MimeMessageTest, FileThatChangedWithinTheSecondIsReadAgain) {
    const QDateTime second = QDateTime::currentDateTime().addSecs(-100);
    const auto write = [&](const QByteArray &bytes, int milliseconds) {
        const Attachment file = Write(u"a.txt"_s, bytes);
        QFile open(file.Path);
        EXPECT_TRUE(open.open(QIODevice::ReadWrite));
        EXPECT_TRUE(open.setFileTime(second.addMSecs(milliseconds - second.time().msec()),
                                     QFileDevice::FileModificationTime));
        return DescribeFile(file.Path);
    };
    Encode(QString(), {write("old", 100)});
    EXPECT_EQ(Read(Encode(QString(), {write("new", 900)})).Files.value(0).Bytes, "new");
}

TEST_F(MimeMessageTest, TypesThatMustNotBeEncodedAreSentAsPlainBytes) {
    for (const QString &type : {u"message/rfc822"_s, u"multipart/mixed"_s, u"inode/x-empty"_s})
        EXPECT_EQ(AttachmentType(type), "application/octet-stream") << type.toStdString();
    EXPECT_EQ(AttachmentType(u"text/x-multipart"_s), "text/x-multipart");
}

TEST_F(MimeMessageTest, LargeFileIsHeldOnce) {
    const Attachment file = Write(u"big.bin"_s, QByteArray(5'000'000, 'b'));
    const QByteArray content = Encode(u"text"_s, {file});
    EXPECT_LT(content.capacity(), 7'000'000) << "room was made once, for what is needed";
    EXPECT_GT(content.size(), 6'800'000);
}

TEST_F(MimeMessageTest, WhatIsNoFileCannotBeDescribed) {
    EXPECT_THROW(DescribeFile(folder_.filePath(u"none"_s)), varlo::RuntimeError);
    EXPECT_THROW(DescribeFile(folder_.path()), varlo::RuntimeError);
}

TEST_F(MimeMessageTest, HeadersNameTheSenderAndTheRecipient) {
    MessageHeaders headers;
    const Mailbox from = ParseMailbox(u"\"Ed\" <ed@x.org>"_s);
    const Mailbox to = ParseMailbox(u"\"All\" <ann@y.org>"_s);
    const QByteArray first = headers.Render(from, to, TextHeader("Subject", u"S"_s));
    const QByteArray second = headers.Render(from, to, TextHeader("Subject", u"S"_s));
    EXPECT_TRUE(first.contains(
        "\r\nFrom: \"Ed\" <ed@x.org>\r\nTo: \"All\" <ann@y.org>\r\nSubject: S\r\nMessage-ID: <"));
    EXPECT_TRUE(first.endsWith("@x.org>\r\nMIME-Version: 1.0\r\n"));
    EXPECT_NE(first, second) << "the identifiers differ";
    const QString date = QString::fromLatin1(first.mid(6, first.indexOf("\r\n") - 6));
    EXPECT_TRUE(QDateTime::fromString(date, Qt::RFC2822Date).isValid()) << date.toStdString();
    EXPECT_FALSE(date.contains(u'.')) << "whole seconds";
}

#ifdef Q_OS_UNIX
TEST_F(MimeMessageTest, DateTellsTheOffsetOfThisPlace) {
    const QByteArray before = qgetenv("TZ");
    const Mailbox somebody = ParseMailbox(u"ed@x.org"_s);
    for (const auto &[zone, offset] : {std::pair("XXX-5:45", " +0545\r\n"),
                                       std::pair("YYY3:30", " -0330\r\n"), std::pair("UTC0", " +0000\r\n")}) {
        qputenv("TZ", zone);
        ::tzset();
        const qint64 earliest = QDateTime::currentSecsSinceEpoch();
        const QByteArray headers = MessageHeaders().Render(somebody, somebody, QByteArray());
        EXPECT_EQ(headers.mid(headers.indexOf("\r\n") - 6, 8), offset);
        const auto date = QDateTime::fromString(
            QString::fromLatin1(headers.mid(6, headers.indexOf("\r\n") - 6)), Qt::RFC2822Date);
        EXPECT_LE(std::abs(date.toSecsSinceEpoch() - earliest), 2) << "the same moment anywhere";
    }
    before.isNull() ? qunsetenv("TZ") : qputenv("TZ", before);
    ::tzset();
}
#endif

TEST_F(MimeMessageTest, VersionStandsOnceWhateverTheMessageHolds) {
    const Mailbox somebody = ParseMailbox(u"ed@x.org"_s);
    const QByteArray whole = MessageHeaders().Render(somebody, somebody, QByteArray()) +
                             Encode(u"text"_s, {Write(u"a.txt"_s, "a"), Write(u"b.eml"_s, "b")});
    EXPECT_EQ(whole.count("MIME-Version:"), 1);
    EXPECT_EQ(whole.count("Message-ID:"), 1);
    EXPECT_EQ(whole.count("Date:"), 1);
}

TEST_F(MimeMessageTest, DateIsWrittenInTheFormOfMail) {
    const Mailbox somebody = ParseMailbox(u"ed@x.org"_s);
    const QString headers = QString::fromLatin1(MessageHeaders().Render(somebody, somebody, QByteArray()));
    static const QRegularExpression date(u"^Date: [0-9]{2} (Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) "
                                         "[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2} [+-][0-9]{4}\r\nFrom: "_s);
    EXPECT_TRUE(date.match(headers).hasMatch()) << headers.toStdString();
}

} // namespace OSSMTP
