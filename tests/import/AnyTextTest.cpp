#include "import/AnyText.h"

#include "core/Literals.h"

#include <QStringEncoder>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

const QString kText = u"j\u00F6rg@m\u00FCller.de\r\nanna@example.org\r\n"_s;

QByteArray Encoded(QStringConverter::Encoding encoding, QStringConverter::Flag flag) {
    QStringEncoder encoder(encoding, flag);
    return encoder.encode(kText);
}

TEST(AnyTextTest, ReadsEveryEncodingThatProgramsWrite) {
    using C = QStringConverter;
    EXPECT_EQ(DecodeAnyText(kText.toUtf8()), kText);
    EXPECT_EQ(DecodeAnyText(kText.toLatin1()), kText) << "Windows-1252";
    for (const auto flag : {C::Flag::WriteBom, C::Flag::Default})
        for (const auto encoding : {C::Utf8, C::Utf16LE, C::Utf16BE})
            EXPECT_EQ(DecodeAnyText(Encoded(encoding, flag)), kText) << C::nameForEncoding(encoding);
}

TEST(AnyTextTest, KeepsTheCharactersThatWindows1252HasForItself) {
    EXPECT_EQ(DecodeAnyText("\x80 \x93x\x94 anna@example.org"), u"\u20AC \u201Cx\u201D anna@example.org"_s);
}

TEST(AnyTextTest, AnEmptyFileIsAnEmptyText) {
    EXPECT_EQ(DecodeAnyText({}), QString(u""_s));
}

TEST(AnyTextTest, RefusesWhatIsNoText) {
    EXPECT_EQ(DecodeAnyText(QByteArray("PK\x03\x04 anna@example.org")), std::nullopt) << "a spreadsheet";
    EXPECT_EQ(DecodeAnyText("%PDF-1.4 anna@example.org"), std::nullopt);
    EXPECT_EQ(DecodeAnyText(QByteArray("\x89PNG\0\0\0\rIHDR anna@example.org", 30)), std::nullopt);
    EXPECT_EQ(DecodeAnyText(QByteArray(10000, 'a') + '\0'), std::nullopt) << "one zero far behind";
}

} // namespace
} // namespace varlo::test
