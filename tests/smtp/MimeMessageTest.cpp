#include "smtp/MimeMessage.h"

#include "core/RuntimeError.h"
#include "smtp/HeaderText.h"
#include "support/Printers.h"
#include "support/ReceivedMail.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace OSSMTP {

namespace {

using varlo::test::ReadMail;
using varlo::test::ReceivedFile;
using varlo::test::ReceivedMail;

bool Always() {
    return true;
}

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
    EXPECT_EQ(content_.Encode(QStringLiteral("Hi\n.\nBye"), {}, Always),
              "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: "
              "7bit\r\n\r\nHi\r\n..\r\nBye\r\n.\r\n");
}

TEST_F(MimeMessageTest, OtherTextIsQuotedPrintable) {
    const QString text =
        QStringLiteral("\u00fc\r\n") + QString(2000, QLatin1Char('x')) + QStringLiteral("\r\n");
    const ReceivedMail mail = Read(content_.Encode(text, {}, Always));
    EXPECT_EQ(mail.TextEncoding, "quoted-printable");
    EXPECT_EQ(mail.Text, text);
}

TEST_F(MimeMessageTest, LongAsciiLineIsQuotedPrintable) {
    const QString text = QString(2000, QLatin1Char('x')) + QStringLiteral("\r\n");
    const ReceivedMail mail = Read(content_.Encode(text, {}, Always));
    EXPECT_EQ(mail.TextEncoding, "quoted-printable");
    EXPECT_EQ(mail.Text, text);
}

TEST_F(MimeMessageTest, FilesAreParts) {
    QByteArray bytes;
    for (quint32 i = 0; i < 300'000; ++i)
        bytes.append(static_cast<char>(i * 7919 >> 3));
    const std::vector<Attachment> files{Write(QStringLiteral("a.pdf"), "%PDF-1.4\n"),
                                        Write(QStringLiteral("empty.txt"), ""),
                                        Write(QStringLiteral("\u00fc.bin"), bytes)};
    const ReceivedMail mail = Read(content_.Encode(QStringLiteral("See\r\n.\r\n"), files, Always));
    EXPECT_EQ(mail.Text, QStringLiteral("See\r\n.\r\n"));
    ASSERT_EQ(mail.Files.size(), 3);
    EXPECT_EQ(mail.Files[0], (ReceivedFile{QStringLiteral("a.pdf"), "application/pdf", "%PDF-1.4\n"}));
    EXPECT_EQ(mail.Files[1].Name, QStringLiteral("empty.txt"));
    EXPECT_EQ(mail.Files[1].Bytes, "");
    EXPECT_EQ(mail.Files[2], (ReceivedFile{QStringLiteral("\u00fc.bin"), "application/octet-stream", bytes}));
}

TEST_F(MimeMessageTest, MessageAsAFileIsPlainBytes) {
    const Attachment eml = Write(QStringLiteral("old.eml"), "From: a@b\r\nSubject: x\r\n\r\nhi\r\n");
    const ReceivedMail mail = Read(content_.Encode(QString(), {eml}, Always));
    EXPECT_EQ(mail.Files.value(0).Type, "application/octet-stream");
}

TEST_F(MimeMessageTest, UnchangedMessageIsNotEncodedAgain) {
    const Attachment file = Write(QStringLiteral("a.txt"), "data");
    const QByteArray first = content_.Encode(QStringLiteral("text"), {file}, Always);
    ASSERT_TRUE(QFile::remove(file.Path)); // reading it again would fail
    const QByteArray second = content_.Encode(QStringLiteral("text"), {file}, Always);
    EXPECT_EQ(first.constData(), second.constData()) << "shared, not copied";
    EXPECT_TRUE(content_.Holds(file));
}

TEST_F(MimeMessageTest, ChangedTextOrFileIsEncodedAgain) {
    const Attachment file = Write(QStringLiteral("a.txt"), "data");
    content_.Encode(QStringLiteral("text"), {file}, Always);
    EXPECT_EQ(Read(content_.Encode(QStringLiteral("other"), {file}, Always)).Text,
              QStringLiteral("other\r\n"));
    const Attachment same = Write(QStringLiteral("a.txt"), "DATA");
    MakeOlder(same);
    const Attachment older = DescribeFile(same.Path);
    EXPECT_FALSE(content_.Holds(older));
    EXPECT_EQ(Read(content_.Encode(QStringLiteral("other"), {older}, Always)).Files.value(0).Bytes, "DATA");
    EXPECT_EQ(Read(content_.Encode(QStringLiteral("other"), {}, Always)).Files.size(), 0);
}

TEST_F(MimeMessageTest, FileThatVanishedThrowsAndKeepsNothing) {
    const Attachment file = Write(QStringLiteral("a.txt"), "data");
    ASSERT_TRUE(QFile::remove(file.Path));
    EXPECT_THROW(content_.Encode(QString(), {file}, Always), varlo::RuntimeError);
    EXPECT_FALSE(content_.Holds(file));
}

TEST_F(MimeMessageTest, EncodingCanBeStopped) {
    const Attachment file = Write(QStringLiteral("a.txt"), "data");
    EXPECT_TRUE(content_.Encode(QString(), {file}, [] { return false; }).isNull());
    EXPECT_FALSE(content_.Encode(QString(), {file}, Always).isNull());
}

TEST_F(MimeMessageTest, LargeFileIsHeldOnce) {
    const Attachment file = Write(QStringLiteral("big.bin"), QByteArray(5'000'000, 'b'));
    const QByteArray content = content_.Encode(QStringLiteral("text"), {file}, Always);
    EXPECT_LT(content.capacity(), 7'000'000) << "room was made once, for what is needed";
    EXPECT_GT(content.size(), 6'800'000);
}

TEST_F(MimeMessageTest, WhatIsNoFileCannotBeDescribed) {
    EXPECT_THROW(DescribeFile(folder_.filePath(QStringLiteral("none"))), varlo::RuntimeError);
    EXPECT_THROW(DescribeFile(folder_.path()), varlo::RuntimeError);
    EXPECT_THROW(CheckReadable(folder_.filePath(QStringLiteral("none"))), varlo::RuntimeError);
}

TEST_F(MimeMessageTest, HeadersNameTheSenderAndTheRecipient) {
    MessageHeaders headers;
    const Mailbox from = ParseMailbox(QStringLiteral("\"Ed\" <ed@x.org>"));
    const Mailbox to = ParseMailbox(QStringLiteral("\"All\" <ann@y.org>"));
    const QByteArray first = headers.Render(from, to, TextHeader("Subject", QStringLiteral("S")));
    const QByteArray second = headers.Render(from, to, TextHeader("Subject", QStringLiteral("S")));
    EXPECT_TRUE(first.contains(
        "\r\nFrom: \"Ed\" <ed@x.org>\r\nTo: \"All\" <ann@y.org>\r\nSubject: S\r\nMessage-ID: <"));
    EXPECT_TRUE(first.endsWith("@x.org>\r\nMIME-Version: 1.0\r\n"));
    EXPECT_NE(first, second) << "the identifiers differ";
}

} // namespace OSSMTP
