#include "lists/AddressRules.h"

#include "lists/ListsFixture.h"

#include <gtest/gtest.h>

#include <random>

namespace varlo {
namespace {

using test::RandomBelow;

class AddressRulesTest : public test::ListsFixture {};

QStringList RefusedOf(const QStringList &addresses) {
    QStringList refused;
    for (const QString &address : addresses)
        if (!PassesAddressRules(address))
            refused << address;
    return refused;
}

TEST_F(AddressRulesTest, TakesWhatIsLooselyAnAddress) {
    const QStringList valid =
        test::Words("ab@c.d a@b.cd a@b.c. @ab.cd ab~c.d@x.com first.last@x.com "
                    "a_b-c@x-y.com 1@2.3.4 a@.bcd a@bcd. .a@b.cd A@B.CDE jörg@müller.de");
    EXPECT_EQ(RefusedOf(valid), QStringList());
}

TEST_F(AddressRulesTest, NeedsAnAtSign) {
    EXPECT_FALSE(PassesAddressRules(QStringLiteral("ab.cd.ef")));
}

TEST_F(AddressRulesTest, NeedsAPoint) {
    EXPECT_FALSE(PassesAddressRules(QStringLiteral("abc@defg")));
}

TEST_F(AddressRulesTest, NeedsSixCharacters) {
    EXPECT_FALSE(PassesAddressRules(QStringLiteral("a@b.c")));
    EXPECT_TRUE(PassesAddressRules(QStringLiteral("ab@c.d")));
    EXPECT_FALSE(PassesAddressRules(QString()));
    EXPECT_FALSE(PassesAddressRules(QStringLiteral("@.")));
}

TEST_F(AddressRulesTest, HasNoUpperLimitOfLength) {
    EXPECT_TRUE(PassesAddressRules(QString(100000, u'a') + QStringLiteral("@x.test")));
}

TEST_F(AddressRulesTest, RefusesASecondAtSign) {
    EXPECT_FALSE(PassesAddressRules(QStringLiteral("a@b@c.de")));
    EXPECT_FALSE(PassesAddressRules(QStringLiteral("a@@b.cd")));
    EXPECT_FALSE(PassesAddressRules(QStringLiteral("a@b.cd@")));
}

TEST_F(AddressRulesTest, NeedsAPointBehindTheAtSign) {
    EXPECT_FALSE(PassesAddressRules(QStringLiteral("a.b@cde")));
}

TEST_F(AddressRulesTest, RefusesTwoPointsInARow) {
    const QStringList invalid = test::Words("john..smith@x.com x@y..com ..a@b.cd a@b.cd..");
    EXPECT_EQ(RefusedOf(invalid), invalid);
}

TEST_F(AddressRulesTest, RefusesEveryForbiddenCharacterInEveryPlace) {
    const QString forbidden = QStringLiteral("!#$%^&*()=+{}[]|\\;:'/?>,< \"");
    ASSERT_EQ(forbidden.size(), 27);
    const QString address = QStringLiteral("abc@def.gh");
    for (QChar c : forbidden)
        for (qsizetype place = 0; place <= address.size(); ++place)
            EXPECT_FALSE(PassesAddressRules(QString(address).insert(place, c)));
}

TEST_F(AddressRulesTest, TakesEveryOtherAsciiCharacterInEveryPlaceOfTheName) {
    const QString forbidden = QStringLiteral("!#$%^&*()=+{}[]|\\;:'/?>,< \"@");
    for (char16_t code = u' '; code < 0x7F; ++code) {
        if (forbidden.contains(QChar(code)))
            continue;
        EXPECT_TRUE(PassesAddressRules(QStringLiteral("ab") + QChar(code) + QStringLiteral("c@def.gh")))
            << "character " << static_cast<int>(code);
    }
}

TEST_F(AddressRulesTest, RefusesNamesAndBracketsAroundAnAddress) {
    const QStringList invalid{QStringLiteral("first last@x.com"), QStringLiteral("a,b@x.com"),
                              QStringLiteral("<a@x.com>"),        QStringLiteral("\"a\"@x.com"),
                              QStringLiteral("mailto:ab@x.com"),  QStringLiteral("MAILTO:a@b.com")};
    EXPECT_EQ(RefusedOf(invalid), invalid);
}

// A line break in an address would be two lines of the list's file.
TEST_F(AddressRulesTest, RefusesControlCharacters) {
    for (char16_t code = 0; code < u' '; ++code)
        for (const char *place : {"%1ab@x.test", "a%1b@x.test", "ab@x%1.test", "ab@x.test%1"})
            EXPECT_FALSE(PassesAddressRules(QString::fromLatin1(place).arg(QChar(code))))
                << "character " << static_cast<int>(code);
}

// The rules one after another, as they are laid down.
bool PassesOneByOne(const QString &address) {
    if (!address.contains(u'@') || !address.contains(u'.') || address.size() < 6)
        return false;
    const QString domain = address.mid(address.indexOf(u'@') + 1);
    if (domain.contains(u'@') || !domain.contains(u'.') || address.contains(u'"'))
        return false;
    for (QChar c : QStringLiteral("!#$%^&*()=+{}[]|\\;:'/?>,< "))
        if (address.contains(c))
            return false;
    return !address.contains(QStringLiteral(".."));
}

TEST_F(AddressRulesTest, AgreesWithTheRulesTakenOneByOne) {
    constexpr unsigned kSeed = 99;
    std::mt19937 random(kSeed);
    const QString pieces = QStringLiteral("aab.@@.~é\" +");
    int valid = 0;
    for (int i = 0; i < 200000; ++i) {
        QString address;
        for (int length = 3 + RandomBelow(random, 8); length > 0; --length)
            address += pieces[RandomBelow(random, RandomBelow(random, 6) == 0 ? 12 : 9)];
        const bool expected = PassesOneByOne(address);
        valid += expected ? 1 : 0;
        ASSERT_EQ(PassesAddressRules(address), expected)
            << "seed " << kSeed << ", " << testing::PrintToString(address);
    }
    EXPECT_GT(valid, 1000) << "the texts hardly ever were addresses";
}

TEST_F(AddressRulesTest, AnInvalidAddressIsNamedInABox) {
    EXPECT_FALSE(IsValidAddress(session, QStringLiteral("<b>nobody</b>"), false));
    const std::vector<test::ShownBox> expected{
        {QStringLiteral("Varlo Pro Error"), QStringLiteral("The e-mail address [<b>nobody</b>] is invalid"),
         BoxButtons::Ok, BoxIcon::Critical}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(AddressRulesTest, SilentShowsNothing) {
    EXPECT_FALSE(IsValidAddress(session, QStringLiteral("nobody"), true));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(AddressRulesTest, AValidAddressShowsNothing) {
    EXPECT_TRUE(IsValidAddress(session, QStringLiteral("ab@x.test"), false));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(AddressRulesTest, ADuplicateIsNamedAsItWasGiven) {
    lists.lstEmailList(kChronological).SetEntries(test::Words("a@x.test B@X.test"));
    EXPECT_FALSE(IsNewAddress(session, QStringLiteral("b@x.TEST"), lists.lstEmailList(kChronological)));
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Duplicate address [b@x.TEST] ignored")));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(AddressRulesTest, ANewAddressSaysNothing) {
    lists.lstEmailList(kChronological).SetEntries(test::Words("a@x.test"));
    EXPECT_TRUE(IsNewAddress(session, QStringLiteral("a@x.tes"), lists.lstEmailList(kChronological)));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(AddressRulesTest, PendingEntriesAreComparedWithTheirSign) {
    AddPending(test::Words("+a@x.test"));
    EXPECT_TRUE(IsNewAddress(session, QStringLiteral("a@x.test"), lists.lstEmailList(kPending)));
    EXPECT_TRUE(IsNewAddress(session, QStringLiteral("-a@x.test"), lists.lstEmailList(kPending)));
    EXPECT_FALSE(IsNewAddress(session, QStringLiteral("+A@x.test"), lists.lstEmailList(kPending)));
}

TEST_F(AddressRulesTest, TypedTextLosesBlanksThenTheLinkPrefix) {
    EXPECT_EQ(CleanTypedAddress(QStringLiteral("  a@b.com ")), QStringLiteral("a@b.com"));
    EXPECT_EQ(CleanTypedAddress(QStringLiteral(" mailto:a@b.com")), QStringLiteral("a@b.com"));
    EXPECT_EQ(CleanTypedAddress(QStringLiteral("a b@c.com")), QStringLiteral("a b@c.com"));
    EXPECT_EQ(CleanTypedAddress(QStringLiteral("mailto:")), QString());
    EXPECT_EQ(CleanTypedAddress(QStringLiteral("   ")), QString());
}

TEST_F(AddressRulesTest, TheLinkPrefixIsToldFromOtherLetterCase) {
    EXPECT_EQ(CleanTypedAddress(QStringLiteral("MAILTO:a@b.com")), QStringLiteral("MAILTO:a@b.com"));
    EXPECT_EQ(CleanTypedAddress(QStringLiteral("mailto a@b.com")), QStringLiteral("mailto a@b.com"));
}

} // namespace
} // namespace varlo
