#include "smtp/MimeMessage.h"

#include "core/Literals.h"
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
    EXPECT_EQ(content_.Encode(u"Hi\n.\nBye"_s, {}, Always),
              "Content-Type: text/plain; charset=utf-8\r\nContent-Transfer-Encoding: "
              "7bit\r\n\r\nHi\r\n..\r\nBye\r\n.\r\n");
}

TEST_F(MimeMessageTest, OtherTextIsQuotedPrintable) {
    const QString text = u"\u00fc\r\n"_s + QString(2000, QLatin1Char('x')) + u"\r\n"_s;
    const ReceivedMail mail = Read(content_.Encode(text, {}, Always));
    EXPECT_EQ(mail.TextEncoding, "quoted-printable");
    EXPECT_EQ(mail.Text, text);
}

TEST_F(MimeMessageTest, LongAsciiLineIsQuotedPrintable) {
    const QString text = QString(2000, QLatin1Char('x')) + u"\r\n"_s;
    const ReceivedMail mail = Read(content_.Encode(text, {}, Always));
    EXPECT_EQ(mail.TextEncoding, "quoted-printable");
    EXPECT_EQ(mail.Text, text);
}

TEST_F(MimeMessageTest, FilesAreParts) {
    QByteArray bytes;
    for (quint32 i = 0; i < 300'000; ++i)
        bytes.append(static_cast<char>(i * 7919 >> 3));
    const std::vector<Attachment> files{Write(u"a.pdf"_s, "%PDF-1.4\n"), Write(u"empty.txt"_s, ""),
                                        Write(u"\u00fc.bin"_s, bytes)};
    const ReceivedMail mail = Read(content_.Encode(u"See\r\n.\r\n"_s, files, Always));
    EXPECT_EQ(mail.Text, u"See\r\n.\r\n"_s);
    ASSERT_EQ(mail.Files.size(), 3);
    EXPECT_EQ(mail.Files[0], (ReceivedFile{u"a.pdf"_s, "application/pdf", "%PDF-1.4\n"}));
    EXPECT_EQ(mail.Files[1].Name, u"empty.txt"_s);
    EXPECT_EQ(mail.Files[1].Bytes, "");
    EXPECT_EQ(mail.Files[2], (ReceivedFile{u"\u00fc.bin"_s, "application/octet-stream", bytes}));
}

TEST_F(MimeMessageTest, MessageAsAFileIsPlainBytes) {
    const Attachment eml = Write(u"old.eml"_s, "From: a@b\r\nSubject: x\r\n\r\nhi\r\n");
    const ReceivedMail mail = Read(content_.Encode(QString(), {eml}, Always));
    EXPECT_EQ(mail.Files.value(0).Type, "application/octet-stream");
}

TEST_F(MimeMessageTest, UnchangedMessageIsNotEncodedAgain) {
    const Attachment file = Write(u"a.txt"_s, "data");
    const QByteArray first = content_.Encode(u"text"_s, {file}, Always);
    ASSERT_TRUE(QFile::remove(file.Path)); // reading it again would fail
    const QByteArray second = content_.Encode(u"text"_s, {file}, Always);
    EXPECT_EQ(first.constData(), second.constData()) << "shared, not copied";
    EXPECT_TRUE(content_.Holds(file));
}

TEST_F(MimeMessageTest, ChangedTextOrFileIsEncodedAgain) {
    const Attachment file = Write(u"a.txt"_s, "data");
    content_.Encode(u"text"_s, {file}, Always);
    EXPECT_EQ(Read(content_.Encode(u"other"_s, {file}, Always)).Text, u"other\r\n"_s);
    const Attachment same = Write(u"a.txt"_s, "DATA");
    MakeOlder(same);
    const Attachment older = DescribeFile(same.Path);
    EXPECT_FALSE(content_.Holds(older));
    EXPECT_EQ(Read(content_.Encode(u"other"_s, {older}, Always)).Files.value(0).Bytes, "DATA");
    EXPECT_EQ(Read(content_.Encode(u"other"_s, {}, Always)).Files.size(), 0);
}

TEST_F(MimeMessageTest, FileThatVanishedThrowsAndKeepsNothing) {
    const Attachment file = Write(u"a.txt"_s, "data");
    ASSERT_TRUE(QFile::remove(file.Path));
    EXPECT_THROW(content_.Encode(QString(), {file}, Always), varlo::RuntimeError);
    EXPECT_FALSE(content_.Holds(file));
}

TEST_F(MimeMessageTest, EncodingCanBeStopped) {
    const Attachment file = Write(u"a.txt"_s, "data");
    EXPECT_TRUE(content_.Encode(QString(), {file}, [] { return false; }).isNull());
    EXPECT_FALSE(content_.Encode(QString(), {file}, Always).isNull());
}

TEST_F(MimeMessageTest, LargeFileIsHeldOnce) {
    const Attachment file = Write(u"big.bin"_s, QByteArray(5'000'000, 'b'));
    const QByteArray content = content_.Encode(u"text"_s, {file}, Always);
    EXPECT_LT(content.capacity(), 7'000'000) << "room was made once, for what is needed";
    EXPECT_GT(content.size(), 6'800'000);
}

TEST_F(MimeMessageTest, WhatIsNoFileCannotBeDescribed) {
    EXPECT_THROW(DescribeFile(folder_.filePath(u"none"_s)), varlo::RuntimeError);
    EXPECT_THROW(DescribeFile(folder_.path()), varlo::RuntimeError);
    EXPECT_THROW(CheckReadable(folder_.filePath(u"none"_s)), varlo::RuntimeError);
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
}

} // namespace OSSMTP
