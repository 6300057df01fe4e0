#include "import/VCardPieces.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

QStringList Addresses(const QString &text) {
    QStringList all;
    VCardPieces cards(text);
    for (Piece piece; cards.Next(piece);)
        all << QString::number(piece.Line) + (piece.IsCell ? u" "_s : u" prose "_s) + piece.Text.toString();
    return all;
}

QString Card(const QString &lines) {
    return u"BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Anna\r\n"_s + lines + u"END:VCARD\r\n"_s;
}

TEST(VCardPiecesTest, TakesEveryAddressOfACard) {
    EXPECT_EQ(Addresses(Card(u"EMAIL:a@x.org\r\nEMAIL;TYPE=work:b@x.org\r\nitem1.EMAIL;PREF=1:c@x.org\r\n"
                             "email;internet:d@x.org\r\nEMAIL:\r\n"_s)),
              (QStringList{u"4 a@x.org"_s, u"5 b@x.org"_s, u"6 c@x.org"_s, u"7 d@x.org"_s}));
}

TEST(VCardPiecesTest, LeavesEveryOtherProperty) {
    EXPECT_EQ(Addresses(Card(u"X-SKYPE:a@x.org\r\nNOTE:ask b@x.org\r\nURL:https://c@x.org/\r\n"
                             "PHOTO;ENCODING=b:EMAIL:x@y.zz\r\nXEMAIL:d@x.org\r\n"_s)),
              QStringList());
}

TEST(VCardPiecesTest, UnfoldsLines) {
    EXPECT_EQ(Addresses(Card(u"EMAIL:anna@exa\r\n mple.org\r\nEMAIL:bo@x.org\r\n"_s)),
              (QStringList{u"4 anna@example.org"_s, u"6 bo@x.org"_s}));
}

TEST(VCardPiecesTest, DecodesQuotedPrintableAndEscapes) {
    EXPECT_EQ(Addresses(Card(u"EMAIL;ENCODING=QUOTED-PRINTABLE:anna=40exam=\r\nple.org\r\n"
                             "EMAIL:a\\,b@x.org\\;\\n\r\nEMAIL;QUOTED-PRINTABLE:bo@x.org=\r\n"_s)),
              (QStringList{u"4 anna@example.org"_s, u"6 a,b@x.org; "_s, u"7 bo@x.orgEND:VCARD"_s}));
}

TEST(VCardPiecesTest, TakesTheTextAroundTheCards) {
    EXPECT_EQ(Addresses(u"See bo@x.org\n"_s + Card(u"EMAIL:a@x.org\r\n"_s) + u"and cy@x.org"_s),
              (QStringList{u"1 prose See bo@x.org"_s, u"5 a@x.org"_s, u"7 prose and cy@x.org"_s}));
}

TEST(VCardPiecesTest, SeesWhetherThereAreCards) {
    EXPECT_TRUE(HoldsVCards(u"x\nbegin:vcard\n"));
    EXPECT_FALSE(HoldsVCards(u"anna@x.org"));
}

} // namespace
} // namespace varlo::test
