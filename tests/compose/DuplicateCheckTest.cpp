#include "compose/DuplicateCheck.h"

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
    ExpectAgreement({QStringLiteral("ann@example.org"), QStringLiteral("ANN@Example.ORG"),
                     QStringLiteral("ann@example.org")});
}

TEST(DuplicateCheckTest, ATrailingBlankMakesAnother) {
    DuplicateCheck check;
    EXPECT_TRUE(check.IsNew(QStringLiteral("ann@example.org")));
    EXPECT_TRUE(check.IsNew(QStringLiteral("ann@example.org ")));
    EXPECT_TRUE(check.IsNew(QStringLiteral("\"Ann\" <ann@example.org>")));
    EXPECT_EQ(check.Count(), 0);
}

TEST(DuplicateCheckTest, ASecondBlankLineIsADuplicateOfTheFirst) {
    ExpectAgreement({QString(), QStringLiteral(""), QStringLiteral(" "), QString()});
}

TEST(DuplicateCheckTest, LowersLettersOutsideAscii) {
    ExpectAgreement({QStringLiteral("jürgen@example.org"), QStringLiteral("JÜRGEN@example.org"),
                     QStringLiteral("straße@example.org"), QStringLiteral("STRASSE@example.org"),
                     QStringLiteral("İ@example.org"), QStringLiteral("i̇@example.org"),
                     QStringLiteral("Σ@example.org"), QStringLiteral("σ@example.org"),
                     QStringLiteral("ς@example.org")});
}

TEST(DuplicateCheckTest, AgreesWithASearchOnRandomLists) {
    std::mt19937 random(7);
    const QStringList pieces{QStringLiteral("a"), QStringLiteral("A"), QStringLiteral("b"),
                             QStringLiteral("B"), QStringLiteral("@"), QStringLiteral(" ")};
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
    EXPECT_EQ(DuplicateCheck::StatusText(QStringLiteral("Ann@Example.org ")),
              QStringLiteral("Duplicate recipient [Ann@Example.org ] ignored"));
}

} // namespace
} // namespace varlo
