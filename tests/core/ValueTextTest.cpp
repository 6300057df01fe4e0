#include "core/ValueText.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

#include <gtest/gtest.h>

namespace varlo::test {
namespace {

template<typename Statement> int ErrorOf(Statement statement) {
    try {
        statement();
        return 0;
    } catch (const RuntimeError &error) {
        return error.Number();
    }
}

TEST(ToNumber, ReadsDecimalText) {
    EXPECT_EQ(ToWhole16(u" 25 "_s), 25);
    EXPECT_EQ(ToWhole16(u"-32768"_s), -32768);
    EXPECT_EQ(ToWhole32(u"+7"_s), 7);
    EXPECT_EQ(ToWhole32(u"1e3"_s), 1000);
}

TEST(ToNumber, RoundsHalvesToTheEvenNeighbour) {
    EXPECT_EQ(ToWhole16(u"0.5"_s), 0);
    EXPECT_EQ(ToWhole16(u"1.5"_s), 2);
    EXPECT_EQ(ToWhole16(u"2.5"_s), 2);
    EXPECT_EQ(ToWhole16(u"32767.4"_s), 32767);
}

TEST(ToNumber, RefusesWhatIsNoNumber) {
    for (const char *text : {"", " ", "x", "12abc", "0x10", "nan", "1 2", "--1"})
        EXPECT_EQ(ErrorOf([&] { ToWhole32(QString::fromLatin1(text)); }), TypeMismatch) << text;
}

TEST(ToNumber, RefusesWhatDoesNotFit) {
    for (const char *text : {"32768", "-32769", "32767.5", "1e300", "inf"})
        EXPECT_EQ(ErrorOf([&] { ToWhole16(QString::fromLatin1(text)); }), Overflow) << text;
    for (const char *text : {"2147483648", "-2147483649", "1e300"})
        EXPECT_EQ(ErrorOf([&] { ToWhole32(QString::fromLatin1(text)); }), Overflow) << text;
    EXPECT_EQ(ToWhole32(u"32768"_s), 32768);
}

TEST(ToTruth, ReadsWordsInAnyLetterCaseOrANumber) {
    const std::pair<const char *, bool> cases[] = {{"True", true}, {"FALSE", false}, {" true ", true},
                                                   {"0", false},   {"1", true},      {"-1", true}};
    for (const auto &[text, truth] : cases)
        EXPECT_EQ(ToTruth(QString::fromLatin1(text)), truth) << text;
    EXPECT_EQ(ErrorOf([&] { ToTruth(u"perhaps"_s); }), TypeMismatch);
}

TEST(OneLine, MultiLineTextsStandOnOneLine) {
    EXPECT_EQ(ToOneLine(u"a\r\n\r\nb"_s), u"a\\n\\nb"_s);
    EXPECT_EQ(FromOneLine(u"a\\n\\nb"_s), u"a\r\n\r\nb"_s);
    EXPECT_EQ(ToOneLine(QString()), QString());
    EXPECT_EQ(FromOneLine(u"plain"_s), u"plain"_s);
}

} // namespace
} // namespace varlo::test
