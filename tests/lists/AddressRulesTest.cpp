#include "lists/AddressRules.h"

#include "core/Literals.h"
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
    EXPECT_FALSE(PassesAddressRules(u"ab.cd.ef"_s));
}

TEST_F(AddressRulesTest, NeedsAPoint) {
    EXPECT_FALSE(PassesAddressRules(u"abc@defg"_s));
}

TEST_F(AddressRulesTest, NeedsSixCharacters) {
    EXPECT_FALSE(PassesAddressRules(u"a@b.c"_s));
    EXPECT_TRUE(PassesAddressRules(u"ab@c.d"_s));
    EXPECT_FALSE(PassesAddressRules(QString()));
    EXPECT_FALSE(PassesAddressRules(u"@."_s));
}

TEST_F(AddressRulesTest, HasNoUpperLimitOfLength) {
    EXPECT_TRUE(PassesAddressRules(QString(100000, u'a') + u"@x.test"_s));
}

TEST_F(AddressRulesTest, RefusesASecondAtSign) {
    EXPECT_FALSE(PassesAddressRules(u"a@b@c.de"_s));
    EXPECT_FALSE(PassesAddressRules(u"a@@b.cd"_s));
    EXPECT_FALSE(PassesAddressRules(u"a@b.cd@"_s));
}

TEST_F(AddressRulesTest, NeedsAPointBehindTheAtSign) {
    EXPECT_FALSE(PassesAddressRules(u"a.b@cde"_s));
}

TEST_F(AddressRulesTest, RefusesTwoPointsInARow) {
    const QStringList invalid = test::Words("john..smith@x.com x@y..com ..a@b.cd a@b.cd..");
    EXPECT_EQ(RefusedOf(invalid), invalid);
}

TEST_F(AddressRulesTest, RefusesEveryForbiddenCharacterInEveryPlace) {
    const QString forbidden = u"!#$%^&*()=+{}[]|\\;:'/?>,< \""_s;
    ASSERT_EQ(forbidden.size(), 27);
    const QString address = u"abc@def.gh"_s;
    for (QChar c : forbidden)
        for (qsizetype place = 0; place <= address.size(); ++place)
            EXPECT_FALSE(PassesAddressRules(QString(address).insert(place, c)));
}

TEST_F(AddressRulesTest, TakesEveryOtherAsciiCharacterInEveryPlaceOfTheName) {
    const QString forbidden = u"!#$%^&*()=+{}[]|\\;:'/?>,< \"@"_s;
    for (char16_t code = u' '; code < 0x7F; ++code) {
        if (forbidden.contains(QChar(code)))
            continue;
        EXPECT_TRUE(PassesAddressRules(u"ab"_s + QChar(code) + u"c@def.gh"_s))
            << "character " << static_cast<int>(code);
    }
}

TEST_F(AddressRulesTest, RefusesNamesAndBracketsAroundAnAddress) {
    const QStringList invalid{u"first last@x.com"_s, u"a,b@x.com"_s,       u"<a@x.com>"_s,
                              u"\"a\"@x.com"_s,      u"mailto:ab@x.com"_s, u"MAILTO:a@b.com"_s};
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
    for (QChar c : u"!#$%^&*()=+{}[]|\\;:'/?>,< "_s)
        if (address.contains(c))
            return false;
    return !address.contains(u".."_s);
}

TEST_F(AddressRulesTest, AgreesWithTheRulesTakenOneByOne) {
    constexpr unsigned kSeed = 99;
    std::mt19937 random(kSeed);
    const QString pieces = u"aab.@@.~é\" +"_s;
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
    EXPECT_FALSE(IsValidAddress(session, u"<b>nobody</b>"_s, false));
    const std::vector<test::ShownBox> expected{{u"Varlo Pro Error"_s,
                                                u"The e-mail address [<b>nobody</b>] is invalid"_s,
                                                BoxButtons::Ok, BoxIcon::Critical}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(AddressRulesTest, SilentShowsNothing) {
    EXPECT_FALSE(IsValidAddress(session, u"nobody"_s, true));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(AddressRulesTest, AValidAddressShowsNothing) {
    EXPECT_TRUE(IsValidAddress(session, u"ab@x.test"_s, false));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(AddressRulesTest, ADuplicateIsNamedAsItWasGiven) {
    lists.Box(kChronological).Model().SetEntries(test::Words("a@x.test B@X.test"));
    EXPECT_FALSE(IsNewAddress(session, u"b@x.TEST"_s, lists.lstEmailList(kChronological)));
    EXPECT_EQ(TakeStatus(), QStringList(u"Duplicate address [b@x.TEST] ignored"_s));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(AddressRulesTest, ANewAddressSaysNothing) {
    lists.Box(kChronological).Model().SetEntries(test::Words("a@x.test"));
    EXPECT_TRUE(IsNewAddress(session, u"a@x.tes"_s, lists.lstEmailList(kChronological)));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(AddressRulesTest, PendingEntriesAreComparedWithTheirSign) {
    AddPending(test::Words("+a@x.test"));
    EXPECT_TRUE(IsNewAddress(session, u"a@x.test"_s, lists.lstEmailList(kPending)));
    EXPECT_TRUE(IsNewAddress(session, u"-a@x.test"_s, lists.lstEmailList(kPending)));
    EXPECT_FALSE(IsNewAddress(session, u"+A@x.test"_s, lists.lstEmailList(kPending)));
}

TEST_F(AddressRulesTest, TypedTextLosesBlanksThenTheLinkPrefix) {
    EXPECT_EQ(CleanTypedAddress(u"  a@b.com "_s), u"a@b.com"_s);
    EXPECT_EQ(CleanTypedAddress(u" mailto:a@b.com"_s), u"a@b.com"_s);
    EXPECT_EQ(CleanTypedAddress(u"a b@c.com"_s), u"a b@c.com"_s);
    EXPECT_EQ(CleanTypedAddress(u"mailto:"_s), QString());
    EXPECT_EQ(CleanTypedAddress(u"   "_s), QString());
}

TEST_F(AddressRulesTest, TheLinkPrefixIsToldFromOtherLetterCase) {
    EXPECT_EQ(CleanTypedAddress(u"MAILTO:a@b.com"_s), u"MAILTO:a@b.com"_s);
    EXPECT_EQ(CleanTypedAddress(u"mailto a@b.com"_s), u"mailto a@b.com"_s);
}

} // namespace
} // namespace varlo
