#include "compose/DuplicateCheck.h"

#include "core/Literals.h"
#include "support/Printers.h"

#include <QStringList>
#include <gtest/gtest.h>

#include <random>

namespace varlo {
namespace {

// What the check has to agree with: a comparison with every earlier address.
bool IsNewBySearch(const QStringList &recipients, qsizetype i) {
    for (qsizetype k = 0; k < i; ++k)
        if (recipients[k].toLower() == recipients[i].toLower())
            return false;
    return true;
}

void ExpectAgreement(const QStringList &recipients) {
    DuplicateCheck check;
    qsizetype duplicates = 0;
    for (qsizetype i = 0; i < recipients.size(); ++i) {
        const bool isNew = IsNewBySearch(recipients, i);
        duplicates += isNew ? 0 : 1;
        ASSERT_EQ(check.IsNew(recipients[i]), isNew) << i << ' ' << testing::PrintToString(recipients[i]);
        ASSERT_EQ(check.Count(), duplicates);
    }
}

TEST(DuplicateCheckTest, LetterCaseMakesNoDifference) {
    ExpectAgreement({u"ann@example.org"_s, u"ANN@Example.ORG"_s, u"ann@example.org"_s});
}

TEST(DuplicateCheckTest, ATrailingBlankMakesAnother) {
    DuplicateCheck check;
    EXPECT_TRUE(check.IsNew(u"ann@example.org"_s));
    EXPECT_TRUE(check.IsNew(u"ann@example.org "_s));
    EXPECT_TRUE(check.IsNew(u"\"Ann\" <ann@example.org>"_s));
    EXPECT_EQ(check.Count(), 0);
}

TEST(DuplicateCheckTest, ASecondBlankLineIsADuplicateOfTheFirst) {
    ExpectAgreement({QString(), u""_s, u" "_s, QString()});
}

TEST(DuplicateCheckTest, LowersLettersOutsideAscii) {
    ExpectAgreement({u"jürgen@example.org"_s, u"JÜRGEN@example.org"_s, u"straße@example.org"_s,
                     u"STRASSE@example.org"_s, u"İ@example.org"_s, u"i̇@example.org"_s, u"Σ@example.org"_s,
                     u"σ@example.org"_s, u"ς@example.org"_s});
}

TEST(DuplicateCheckTest, AgreesWithASearchOnRandomLists) {
    std::mt19937 random(7);
    const QStringList pieces{u"a"_s, u"A"_s, u"b"_s, u"B"_s, u"@"_s, u" "_s};
    for (int list = 0; list < 50; ++list) {
        QStringList recipients;
        for (int i = 0; i < 200; ++i) {
            QString address;
            for (auto length = random() % 5; length > 0; --length)
                address += pieces[static_cast<qsizetype>(random() % 6)];
            recipients << address;
        }
        ExpectAgreement(recipients);
    }
}

TEST(DuplicateCheckTest, NamesTheAddressAsItStands) {
    EXPECT_EQ(DuplicateCheck::StatusText(u"Ann@Example.org "_s),
              u"Duplicate recipient [Ann@Example.org ] ignored"_s);
}

} // namespace
} // namespace varlo
