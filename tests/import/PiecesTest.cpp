#include "import/Pieces.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

// "2 cell: text" for each piece.
QStringList Cut(const QString &text) {
    QStringList cut;
    const auto pieces = PiecesOf(text);
    for (Piece piece; pieces->Next(piece);)
        cut << QString::number(piece.Line) + (piece.IsCell ? u" cell: "_s : u" prose: "_s) +
                   piece.Text.toString();
    EXPECT_EQ(pieces->Position(), text.size());
    return cut;
}

TEST(PiecesTest, GoThroughLinesWithEveryKindOfEnd) {
    Lines lines(u"a\nb\r\nc\rd\n\ne");
    QStringList read;
    for (QStringView line; lines.Next(line);)
        read << QString::number(lines.Number()) + line.toString();
    EXPECT_EQ(read, QString(u"1a 2b 3c 4d 5 6e"_s).split(u' '));
    EXPECT_EQ(lines.Position(), 11);
}

TEST(PiecesTest, OfProseAreTheLinesWithAnAt) {
    EXPECT_EQ(Cut(u"Dear all,\nask anna@x.org.\n\nOr bo@x.org"_s),
              (QStringList{u"2 prose: ask anna@x.org."_s, u"4 prose: Or bo@x.org"_s}));
}

TEST(PiecesTest, OfAMailLeaveOutTheFieldsOfMachinesWithTheirFoldedLines) {
    EXPECT_EQ(
        Cut(u"Received: from a\r\n by b for <x@y.org>\r\nTo: anna@x.org,\r\n bo@x.org\r\n"
            "References: <1@x.org>\r\n\t<2@x.org>\r\n\r\nask cy@x.org"_s),
        (QStringList{u"3 prose: To: anna@x.org,"_s, u"4 prose:  bo@x.org"_s, u"8 prose: ask cy@x.org"_s}));
}

TEST(PiecesTest, OfProseNoLineIsLostForLookingLikeAHeader) {
    EXPECT_EQ(Cut(u"References: Bo, bo@x.org\n\nReceived: 5 letters\n of cy@x.org\n"_s),
              (QStringList{u"1 prose: References: Bo, bo@x.org"_s, u"4 prose:  of cy@x.org"_s}));
}

TEST(PiecesTest, OfAListAreAllItsLines) {
    EXPECT_EQ(Cut(u"anna@x.org\r\n\r\nbo.x.org\r\ncy@x.org\r\n"_s),
              (QStringList{u"1 cell: anna@x.org"_s, u"3 cell: bo.x.org"_s, u"4 cell: cy@x.org"_s}));
}

TEST(PiecesTest, OneLineIsNoListYet) {
    EXPECT_EQ(Cut(u"anna@x.org"_s), QStringList{u"1 prose: anna@x.org"_s});
    EXPECT_EQ(Cut(QString()), QStringList());
}

TEST(PiecesTest, OfATableAreTheCellsUnderTheHeaderOfAddresses) {
    EXPECT_EQ(Cut(u"Name;E-mail;Added by\nAnna;anna@x.org;boss@x.org\nBo;bo@x.org;boss@x.org\n"_s),
              (QStringList{u"2 cell: anna@x.org"_s, u"3 cell: bo@x.org"_s}));
}

TEST(PiecesTest, OfCardsAreTheirAddresses) {
    EXPECT_EQ(Cut(u"BEGIN:VCARD\nFN:a@b.cd\nEMAIL:anna@x.org\nEND:VCARD\n"_s),
              QStringList{u"3 cell: anna@x.org"_s});
}

} // namespace
} // namespace varlo::test
