#include "smtp/BodyText.h"

#include "support/Printers.h"

#include <gtest/gtest.h>

namespace OSSMTP {

namespace {

QByteArray SevenBit(const QByteArray &text) {
    QByteArray out;
    AppendSevenBit(out, text);
    return out;
}

QByteArray QuotedPrintable(const QByteArray &text) {
    QByteArray out;
    AppendQuotedPrintable(out, text);
    return out;
}

QByteArray Base64(const QByteArray &data) {
    QByteArray out;
    AppendBase64(out, data);
    EXPECT_EQ(out.size(), Base64Size(data.size()));
    return out;
}

} // namespace

TEST(BodyTextTest, EveryKindOfLineEndBecomesOne) {
    EXPECT_EQ(SevenBit("a\rb\nc\r\nd\n\re"), "a\r\nb\r\nc\r\nd\r\n\r\ne\r\n");
}

TEST(BodyTextTest, LastLineIsEndedOnce) {
    EXPECT_EQ(SevenBit("a"), "a\r\n");
    EXPECT_EQ(SevenBit("a\r\n"), "a\r\n");
    EXPECT_EQ(SevenBit(""), "");
}

TEST(BodyTextTest, LeadingDotsAreDoubled) {
    EXPECT_EQ(SevenBit(".\r\n..\n.a\ra."), "..\r\n...\r\n..a\r\na.\r\n");
}

TEST(BodyTextTest, OnlyAsciiOfBearableLinesFitsSevenBit) {
    EXPECT_TRUE(FitsSevenBit(""));
    EXPECT_TRUE(FitsSevenBit(QByteArray(998, 'x') + "\r\n" + QByteArray(998, 'x')));
    EXPECT_FALSE(FitsSevenBit(QByteArray(999, 'x')));
    EXPECT_FALSE(FitsSevenBit("\xc3\xbc"));
    EXPECT_FALSE(FitsSevenBit(QByteArray(1, '\0')));
}

TEST(BodyTextTest, QuotedPrintableEncodesWhatMustBe) {
    EXPECT_EQ(QuotedPrintable("a=b \xc3\xbc\r\nend \t\r\n\x01"), "a=3Db =C3=BC\r\nend =09\r\n=01\r\n");
}

TEST(BodyTextTest, QuotedPrintableDoublesLeadingDotsOfItsOwnLinesToo) {
    EXPECT_EQ(QuotedPrintable("."), "..\r\n");
    EXPECT_EQ(QuotedPrintable(QByteArray(75, 'x') + ".y"), QByteArray(75, 'x') + "=\r\n..y\r\n");
    EXPECT_EQ(QuotedPrintable('.' + QByteArray(75, 'x')), ".." + QByteArray(74, 'x') + "=\r\nx\r\n");
}

TEST(BodyTextTest, QuotedPrintableLinesAreShort) {
    const QByteArray text = QByteArray(2000, 'x') + "\xc3\xbc" + QByteArray(2000, '=');
    QByteArray joined;
    for (QByteArray line : QuotedPrintable(text).split('\n')) {
        EXPECT_LE(line.size(), 77);
        joined += line.endsWith("=\r") ? line.chopped(2) : line;
    }
    EXPECT_EQ(joined, QByteArray(2000, 'x') + "=C3=BC" + QByteArray("=3D").repeated(2000) + "\r");
}

TEST(BodyTextTest, Base64AgreesWithAnotherEncoderAtEveryLength) {
    QByteArray data;
    for (int size = 0; size < 240; ++size) {
        EXPECT_EQ(Base64(data).replace("\r\n", ""), data.toBase64()) << size;
        data.append(static_cast<char>(size * 37));
    }
}

TEST(BodyTextTest, Base64LinesHaveSeventySixCharacters) {
    EXPECT_EQ(Base64(QByteArray(58, '\0')), QByteArray(76, 'A') + "\r\nAA==\r\n");
    EXPECT_EQ(Base64(QByteArray(57, '\0')), QByteArray(76, 'A') + "\r\n");
}

} // namespace OSSMTP
