#include "smtp/HeaderText.h"

#include "support/Printers.h"
#include "support/ReceivedMail.h"

#include <gtest/gtest.h>

namespace OSSMTP {

namespace {

QByteArray Subject(const QString &text) {
    return TextHeader("Subject", text);
}

// Reads a header back as a mail reader does, and checks the length of its lines.
QString ReadBack(const QByteArray &header, qsizetype longest = 78) {
    EXPECT_TRUE(header.endsWith("\r\n"));
    for (const QByteArray &line : header.chopped(2).split('\n'))
        EXPECT_LE(line.size(), longest + 1) << line.toStdString(); // the CR
    return varlo::test::ReadMail(header + "Content-Type: text/plain; charset=utf-8\r\n\r\n")
        .Header("Subject");
}

} // namespace

TEST(HeaderTextTest, ShortAsciiStaysAsItIs) {
    EXPECT_EQ(Subject(QStringLiteral("News of \"May\", 100% <free>")),
              "Subject: News of \"May\", 100% <free>\r\n");
}

TEST(HeaderTextTest, EmptyTextIsAnEmptyHeader) {
    EXPECT_EQ(Subject(QString()), "Subject: \r\n");
}

TEST(HeaderTextTest, LineBreaksAndZerosBecomeBlanks) {
    EXPECT_EQ(Subject(QStringLiteral("a\r\nBcc: b") + QChar(0) + QStringLiteral("c\u001bd")),
              "Subject: a  Bcc: b c d\r\n");
}

TEST(HeaderTextTest, TabsAmongBlanksMakeNoEmptyLine) {
    const QString text = QStringLiteral("a") + QString(100, QLatin1Char(' ')) + QLatin1Char('\t');
    EXPECT_EQ(ReadBack(Subject(text), 998), QStringLiteral("a") + QString(101, QLatin1Char(' ')));
}

TEST(HeaderTextTest, LongAsciiIsFoldedAtBlanks) {
    const QString text = QStringLiteral("seven words and more of them still ").repeated(10).trimmed();
    EXPECT_EQ(ReadBack(Subject(text)), text);
}

TEST(HeaderTextTest, FoldedBlanksSurviveAndMakeNoEmptyLine) {
    const QString text = QStringLiteral("a") + QString(200, QLatin1Char(' ')) + QStringLiteral("b ") +
                         QString(70, QLatin1Char('c'));
    EXPECT_EQ(ReadBack(Subject(text), 998), text);
}

TEST(HeaderTextTest, LongWordIsNotBroken) {
    const QString text = QString(300, QLatin1Char('w'));
    EXPECT_EQ(ReadBack(Subject(text), 998), text);
}

TEST(HeaderTextTest, WordTooLongForALineIsEncoded) {
    const QString text = QString(5000, QLatin1Char('w'));
    EXPECT_EQ(ReadBack(Subject(text)), text);
    const QString blanks = QStringLiteral("a") + QString(2000, QLatin1Char(' ')) + QStringLiteral("b");
    EXPECT_EQ(ReadBack(Subject(blanks)), blanks);
}

TEST(HeaderTextTest, TextThatLooksEncodedArrivesAsItWasTyped) {
    const QString text = QStringLiteral("=?UTF-8?Q?free?= money");
    EXPECT_EQ(ReadBack(Subject(text)), text);
}

TEST(HeaderTextTest, MostlyAsciiIsReadableInItsEncoding) {
    EXPECT_EQ(Subject(QStringLiteral("Gr\u00fc\u00dfe aus Ulm")),
              "Subject: =?UTF-8?Q?Gr=C3=BC=C3=9Fe_aus_Ulm?=\r\n");
}

TEST(HeaderTextTest, OtherScriptsAreEncodedBriefly) {
    EXPECT_EQ(Subject(QStringLiteral("\u65e5\u672c")), "Subject: =?UTF-8?B?5pel5pys?=\r\n");
}

TEST(HeaderTextTest, LongTextOfAnyLengthIsNeverSplitWithinACharacter) {
    for (int length = 1; length < 120; ++length) {
        for (const QString &unit : {QStringLiteral("\u00fc"), QStringLiteral("\u65e5"),
                                    QStringLiteral("\U0001F600"), QStringLiteral("a\u00fc ")}) {
            const QString text = unit.repeated(length);
            EXPECT_EQ(ReadBack(Subject(text), 76), text);
        }
    }
}

TEST(HeaderTextTest, MailboxIsQuoted) {
    EXPECT_EQ(MailboxHeader("To", QStringLiteral("A \"B\" \\ C, D"), "a@x.org"),
              "To: \"A \\\"B\\\" \\\\ C, D\" <a@x.org>\r\n");
}

TEST(HeaderTextTest, MailboxWithoutNameIsTheAddress) {
    EXPECT_EQ(MailboxHeader("To", QStringLiteral(" \r\n "), "a@x.org"), "To: a@x.org\r\n");
}

TEST(HeaderTextTest, MailboxNameThatIsNotAsciiIsEncoded) {
    EXPECT_EQ(MailboxHeader("To", QStringLiteral("Zo\u00eb \"Z\""), "a@x.org"),
              "To: =?UTF-8?Q?Zo=C3=AB_=22Z=22?= <a@x.org>\r\n");
}

TEST(HeaderTextTest, LongMailboxIsFoldedBeforeTheAddress) {
    EXPECT_EQ(MailboxHeader("To", QString(60, QLatin1Char('n')), "somebody@example.org"),
              "To: \"" + QByteArray(60, 'n') + "\"\r\n <somebody@example.org>\r\n");
}

TEST(HeaderTextTest, VeryLongNameIsEncodedInPieces) {
    const QString name = QStringLiteral("name ").repeated(300).trimmed();
    const QByteArray header = MailboxHeader("Subject", name, "a@x.org");
    EXPECT_EQ(ReadBack(header), name + QStringLiteral(" <a@x.org>"));
}

TEST(HeaderTextTest, AsciiParameterIsQuoted) {
    EXPECT_EQ(HeaderParameter("name", QStringLiteral("a \"b\".txt")), ";\r\n name=\"a \\\"b\\\".txt\"");
}

TEST(HeaderTextTest, ParameterThatIsNotAsciiIsExtended) {
    EXPECT_EQ(HeaderParameter("name", QStringLiteral("\u00fc b.txt")), ";\r\n name*=UTF-8''%C3%BC%20b%2Etxt");
}

TEST(HeaderTextTest, LongParameterComesInNumberedPieces) {
    const QByteArray parameter = HeaderParameter("filename", QString(50, QChar(0xFC)));
    EXPECT_TRUE(parameter.startsWith(";\r\n filename*0*=UTF-8''%C3%BC"));
    EXPECT_TRUE(parameter.contains(";\r\n filename*4*="));
    for (const QByteArray &line : parameter.split('\n'))
        EXPECT_LE(line.size(), 79) << line.toStdString();
}

TEST(HeaderTextTest, LineBreakInAParameterIsABlank) {
    EXPECT_EQ(HeaderParameter("name", QStringLiteral("a\r\nb")), ";\r\n name=\"a  b\"");
}

} // namespace OSSMTP
