#include "smtp/HeaderText.h"

#include "core/Literals.h"
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
    EXPECT_EQ(Subject(u"News of \"May\", 100% <free>"_s), "Subject: News of \"May\", 100% <free>\r\n");
}

TEST(HeaderTextTest, EmptyTextIsAnEmptyHeader) {
    EXPECT_EQ(Subject(QString()), "Subject: \r\n");
}

TEST(HeaderTextTest, LineBreaksAndZerosBecomeBlanks) {
    EXPECT_EQ(Subject(u"a\r\nBcc: b"_s + QChar(0) + u"c\u001bd"_s), "Subject: a  Bcc: b c d\r\n");
    EXPECT_EQ(Subject(u"a\u007fb"_s), "Subject: a b\r\n");
}

TEST(HeaderTextTest, TabsAmongBlanksMakeNoEmptyLine) {
    const QString text = u"a"_s + QString(100, QLatin1Char(' ')) + QLatin1Char('\t');
    EXPECT_EQ(ReadBack(Subject(text), 998), u"a"_s + QString(101, QLatin1Char(' ')));
}

TEST(HeaderTextTest, LongAsciiIsFoldedAtBlanks) {
    const QString text = u"seven words and more of them still "_s.repeated(10).trimmed();
    EXPECT_EQ(ReadBack(Subject(text)), text);
}

TEST(HeaderTextTest, FoldedBlanksSurviveAndMakeNoEmptyLine) {
    const QString text = u"a"_s + QString(200, QLatin1Char(' ')) + u"b "_s + QString(70, QLatin1Char('c'));
    EXPECT_EQ(ReadBack(Subject(text), 998), text);
}

TEST(HeaderTextTest, LongWordIsNotBroken) {
    const QString text = QString(300, QLatin1Char('w'));
    EXPECT_EQ(ReadBack(Subject(text), 998), text);
}

TEST(HeaderTextTest, WordTooLongForALineIsEncoded) {
    const QString text = QString(5000, QLatin1Char('w'));
    EXPECT_EQ(ReadBack(Subject(text)), text);
    const QString blanks = u"a"_s + QString(2000, QLatin1Char(' ')) + u"b"_s;
    EXPECT_EQ(ReadBack(Subject(blanks)), blanks);
}

TEST(HeaderTextTest, TextThatLooksEncodedArrivesAsItWasTyped) {
    const QString text = u"=?UTF-8?Q?free?= money"_s;
    EXPECT_EQ(ReadBack(Subject(text)), text);
}

TEST(HeaderTextTest, MostlyAsciiIsReadableInItsEncoding) {
    EXPECT_EQ(Subject(u"Gr\u00fc\u00dfe aus Ulm"_s), "Subject: =?UTF-8?Q?Gr=C3=BC=C3=9Fe_aus_Ulm?=\r\n");
}

TEST(HeaderTextTest, UnderscoreIsNoBlankInAnEncodedWord) {
    EXPECT_EQ(Subject(u"a_b \u00fc"_s), "Subject: =?UTF-8?Q?a=5Fb_=C3=BC?=\r\n");
}

TEST(HeaderTextTest, OtherScriptsAreEncodedBriefly) {
    EXPECT_EQ(Subject(u"\u65e5\u672c"_s), "Subject: =?UTF-8?B?5pel5pys?=\r\n");
}

TEST(HeaderTextTest, LongTextOfAnyLengthIsNeverSplitWithinACharacter) {
    for (int length = 1; length < 120; ++length) {
        for (const QString &unit : {u"\u00fc"_s, u"\u65e5"_s, u"\U0001F600"_s, u"a\u00fc "_s}) {
            const QString text = unit.repeated(length);
            EXPECT_EQ(ReadBack(Subject(text), 76), text);
        }
    }
}

TEST(HeaderTextTest, EncodedLinesAreAsFullAsTheyMayBe) {
    QList<qsizetype> sizes;
    for (const QByteArray &line : Subject(QString(100, QChar(0xFC))).chopped(2).split('\n'))
        sizes << line.trimmed().size();
    EXPECT_EQ(sizes, (QList<qsizetype>{73, 72, 72, 72, 52})) << "the name takes room on the first line only";
}

TEST(HeaderTextTest, MailboxIsQuoted) {
    EXPECT_EQ(MailboxHeader("To", u"A \"B\" \\ C, D"_s, "a@x.org"),
              "To: \"A \\\"B\\\" \\\\ C, D\" <a@x.org>\r\n");
}

TEST(HeaderTextTest, MailboxWithoutNameIsTheAddress) {
    EXPECT_EQ(MailboxHeader("To", u" \r\n "_s, "a@x.org"), "To: a@x.org\r\n");
}

TEST(HeaderTextTest, MailboxNameThatIsNotAsciiIsEncoded) {
    EXPECT_EQ(MailboxHeader("To", u"Zo\u00eb \"Z\""_s, "a@x.org"),
              "To: =?UTF-8?Q?Zo=C3=AB_=22Z=22?= <a@x.org>\r\n");
}

TEST(HeaderTextTest, LongMailboxIsFoldedBeforeTheAddress) {
    EXPECT_EQ(MailboxHeader("To", QString(60, QLatin1Char('n')), "somebody@example.org"),
              "To: \"" + QByteArray(60, 'n') + "\"\r\n <somebody@example.org>\r\n");
}

TEST(HeaderTextTest, VeryLongNameIsEncodedInPieces) {
    const QString name = u"name "_s.repeated(300).trimmed();
    const QByteArray header = MailboxHeader("Subject", name, "a@x.org");
    EXPECT_EQ(ReadBack(header), name + u" <a@x.org>"_s);
}

TEST(HeaderTextTest, AsciiParameterIsQuoted) {
    EXPECT_EQ(HeaderParameter("name", u"a \"b\".txt"_s), ";\r\n name=\"a \\\"b\\\".txt\"");
}

TEST(HeaderTextTest, ParameterThatIsNotAsciiIsExtended) {
    EXPECT_EQ(HeaderParameter("name", u"\u00fc b.txt"_s), ";\r\n name*=UTF-8''%C3%BC%20b%2Etxt");
}

TEST(HeaderTextTest, SignsOfTheExtendedFormAreEncodedInIt) {
    EXPECT_EQ(HeaderParameter("name", u"\u00fc*/'%"_s), ";\r\n name*=UTF-8''%C3%BC%2A%2F%27%25");
}

TEST(HeaderTextTest, LongParameterComesInNumberedPieces) {
    const QByteArray parameter = HeaderParameter("filename", QString(50, QChar(0xFC)));
    EXPECT_TRUE(parameter.startsWith(";\r\n filename*0*=UTF-8''%C3%BC"));
    EXPECT_TRUE(parameter.contains(";\r\n filename*4*="));
    for (const QByteArray &line : parameter.split('\n'))
        EXPECT_LE(line.size(), 79) << line.toStdString();
}

TEST(HeaderTextTest, LineBreakInAParameterIsABlank) {
    EXPECT_EQ(HeaderParameter("name", u"a\r\nb"_s), ";\r\n name=\"a  b\"");
}

} // namespace OSSMTP
