#include "import/TablePieces.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

// "line.column text" for each cell.
QStringList AllCells(const QString &text, QChar delimiter = u',') {
    QStringList all;
    for (Cells cells(text, delimiter); cells.Next();)
        all << u"%1.%2 "_s.arg(cells.Line()).arg(cells.Column()) + cells.Text().toString();
    return all;
}

QStringList Addresses(const QString &text) {
    QStringList all;
    const TableForm form = TableFormOf(text);
    if (form.Columns.isEmpty())
        return {u"no table"_s};
    TablePieces table(text, form);
    for (Piece piece; table.Next(piece);)
        all << QString::number(piece.Line) + u' ' + piece.Text.toString();
    return all;
}

TEST(TablePiecesTest, CellsStandBetweenDelimiters) {
    EXPECT_EQ(AllCells(u"a,b\r\nc,\n\n,d"_s),
              (QStringList{u"1.0 a"_s, u"1.1 b"_s, u"2.0 c"_s, u"2.1 "_s, u"3.0 "_s, u"4.0 "_s, u"4.1 d"_s}));
    EXPECT_EQ(AllCells(u"a,"_s), (QStringList{u"1.0 a"_s, u"1.1 "_s}));
    EXPECT_EQ(AllCells(QString()), QStringList());
}

TEST(TablePiecesTest, QuotesKeepDelimitersLinesAndQuotationMarks) {
    EXPECT_EQ(AllCells(u"\"a,b\",\"say \"\"x\"\"\", \"c\"\n\"two\nlines\",d\n\"\",e"_s),
              (QStringList{u"1.0 a,b"_s, u"1.1 say \"x\""_s, u"1.2 c"_s, u"2.0 two\nlines"_s, u"3.1 d"_s,
                           u"4.0 "_s, u"4.1 e"_s}));
}

TEST(TablePiecesTest, AQuotationMarkWithoutItsPartnerDoesNotSwallowTheRest) {
    EXPECT_EQ(AllCells(u"a,\"b\nc,d"_s), (QStringList{u"1.0 a"_s, u"1.1 \"b"_s, u"2.0 c"_s, u"2.1 d"_s}));
}

TEST(TablePiecesTest, TheHeaderTellsDelimiterAndColumn) {
    for (const char16_t delimiter : {u',', u';', u'\t', u'|'}) {
        QString text = u"Name/E-mail/City\nAnna/anna@x.org/Bern\nBo/bo@x.org/Rom\n"_s;
        text.replace(u'/', QChar(delimiter));
        EXPECT_EQ(Addresses(text), (QStringList{u"2 anna@x.org"_s, u"3 bo@x.org"_s})) << int(delimiter);
    }
}

TEST(TablePiecesTest, KnowsTheHeadersOfOtherPrograms) {
    for (const QString &header :
         {u"Email"_s, u"\"E-Mail Address\""_s, u"EMAIL_ADDRESS"_s, u"E-mail 1 - Value"_s, u"Primary Email"_s,
          u"E-Mail-Adresse"_s, u"Courriel"_s, u"Correo"_s, u"mail"_s})
        EXPECT_EQ(Addresses(u"Id,"_s + header + u"\n1,anna@x.org\n"_s), QStringList{u"2 anna@x.org"_s})
            << header.toStdString();
    for (const QString &header :
         {u"E-mail 1 - Type"_s, u"E-mail Display Name"_s, u"Mailing Street"_s, u"Id"_s})
        EXPECT_EQ(Addresses(u"No,"_s + header + u"\n1,anna@x.org\n"_s), QStringList{u"no table"_s})
            << header.toStdString();
}

TEST(TablePiecesTest, TakesEveryColumnOfAddressesAndNoEmptyCell) {
    EXPECT_EQ(Addresses(u"Email,Name,Email 2\na@x.org,A,b@x.org\n,B,\nc@x.org,C,\n"_s),
              (QStringList{u"2 a@x.org"_s, u"2 b@x.org"_s, u"4 c@x.org"_s}));
}

TEST(TablePiecesTest, ALoneColumnIsATable) {
    EXPECT_EQ(Addresses(u"\nEmail\nanna@x.org\nnobody\nbo@x.org\n"_s),
              (QStringList{u"3 anna@x.org"_s, u"4 nobody"_s, u"5 bo@x.org"_s}));
}

TEST(TablePiecesTest, TheDelimiterCanBeTold) {
    EXPECT_EQ(Addresses(u"sep=;\nName;Email\nA, B;anna@x.org\n"_s), QStringList{u"3 anna@x.org"_s});
    EXPECT_EQ(Addresses(u"sep=^\nName^Email\nA^anna@x.org\n"_s), QStringList{u"3 anna@x.org"_s});
}

TEST(TablePiecesTest, ProseThatSpeaksOfMailIsNoTable) {
    EXPECT_EQ(Addresses(u"Hello, my e-mail\nis anna@x.org,\nas you, dear friend, know\n"_s),
              QStringList{u"no table"_s});
    EXPECT_EQ(Addresses(u"Name,Email"_s), QStringList{u"no table"_s}) << "without rows";
    EXPECT_EQ(Addresses(u"anna@x.org,Email\nbo@x.org,x\n"_s), QStringList{u"no table"_s});
    EXPECT_EQ(Addresses(QString()), QStringList{u"no table"_s});
}

} // namespace
} // namespace varlo::test
