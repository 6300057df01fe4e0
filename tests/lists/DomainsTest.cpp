#include "lists/Domains.h"

#include "core/Literals.h"
#include "lists/ListsFixture.h"
#include "lists/ListsMenu.h"

#include <gtest/gtest.h>

namespace varlo {

void PrintTo(const DomainCount &count, std::ostream *out) {
    *out << count.Domain.toStdString() << ' ' << count.Count;
}

namespace {

using test::Words;

TEST(DomainsTest, TheDomainStandsBehindTheLastAt) {
    EXPECT_EQ(DomainOf(u"Ann@X.Test"_s), u"x.test"_s);
    EXPECT_EQ(DomainOf(u"\"a@b\"@c.test"_s), u"c.test"_s);
    EXPECT_EQ(DomainOf(u"nobody"_s), QString());
    EXPECT_EQ(DomainOf(u"a@"_s), QString());
    EXPECT_EQ(DomainOf({}), QString());
}

TEST(DomainsTest, AreCountedTheMostFrequentFirst) {
    EXPECT_EQ(CountDomains(Words("a@y.test b@X.test c@x.test d@z.test e")),
              (QList<DomainCount>{{u"x.test"_s, 2}, {{}, 1}, {u"y.test"_s, 1}, {u"z.test"_s, 1}}));
    EXPECT_EQ(CountDomains({}), QList<DomainCount>());
}

TEST(DomainsTest, RowsAscendAndAreOfTheseDomainsOnly) {
    const QStringList entries = Words("a@y.test b@X.test c@x.test.org d@z.test e@x.test f");
    EXPECT_EQ(RowsOfDomains(entries, {u"x.test"_s, u"z.test"_s}), (QList<int>{1, 3, 4}));
    EXPECT_EQ(RowsOfDomains(entries, {QString()}), (QList<int>{5}));
    EXPECT_EQ(RowsOfDomains(entries, {}), QList<int>());
}

using SelectDomainsTest = test::ListsFixture;

TEST_F(SelectDomainsTest, SelectsExactlyTheirAddressesAndSaysHowMany) {
    lists.Open.SetSortOrder(0);
    OpenList(u"news"_s, Words("a@x.test b@y.test c@X.test"));
    lists.SelectRows(kChronological, {1});
    editing.SelectDomains({u"x.test"_s});
    EXPECT_EQ(lists.SelectedRows(kChronological), (QList<int>{0, 2}));
    EXPECT_EQ(lists.Selection(kChronological).currentIndex().row(), 0);
    EXPECT_EQ(TakeStatus(), QStringList{u"Selected 2 addresses"_s});
    EXPECT_TRUE(lists.Open.IsSaved());
}

} // namespace
} // namespace varlo
