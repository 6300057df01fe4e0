#include "lists/SimilarEntries.h"

#include "core/Literals.h"
#include "lists/ListsFixture.h"

namespace varlo::test {
namespace {

TEST(SimilarEntriesTest, ADomainStandsBehindTheLastSign) {
    EXPECT_EQ(DomainOf(u"Anna@X.Test"_s), u"x.test"_s);
    EXPECT_EQ(DomainOf(u"a@b@c.test"_s), u"c.test"_s);
    EXPECT_EQ(DomainOf(u"none"_s), QString());
}

TEST(SimilarEntriesTest, ADomainHasThoseBelowIt) {
    EXPECT_TRUE(IsOfDomain(u"a@X.test"_s, u"x.TEST"_s));
    EXPECT_TRUE(IsOfDomain(u"a@mail.x.test"_s, u"x.test"_s));
    EXPECT_FALSE(IsOfDomain(u"a@ax.test"_s, u"x.test"_s));
    EXPECT_FALSE(IsOfDomain(u"a@x.test.org"_s, u"x.test"_s));
    EXPECT_FALSE(IsOfDomain(u"none"_s, u"x.test"_s));
    EXPECT_FALSE(IsOfDomain(u"a@"_s, QString()));
}

TEST(SimilarEntriesTest, TheSamePersonElsewhereIsSimilar) {
    EXPECT_TRUE(AreSimilar(u"anna.b@x.test"_s, u"AnnaB+news@other.example"_s));
    EXPECT_FALSE(AreSimilar(u"anna@x.test"_s, u"bob@x.test"_s));
    EXPECT_FALSE(AreSimilar(u"@x.test"_s, u"@other.example"_s)) << "nobody is nobody's like";
    EXPECT_FALSE(AreSimilar(QString(), u"anna@x.test"_s));
}

TEST(SimilarEntriesTest, OneSlipOfTheHandIsSimilar) {
    for (const char *slip : {"anna@x.test", "ana@x.test", "annna@x.test", "amna@x.test", "nana@x.test",
                             "anna@x.tets", "anna@x.tes", "anna@x.test1", "Anna@X.test"})
        EXPECT_TRUE(AreSimilar(u"anna@x.test"_s, QString::fromLatin1(slip))) << slip;
    for (const char *other : {"annabel@x.test", "onno@x.test", "hanne@x.test"})
        EXPECT_FALSE(AreSimilar(u"anna@x.test"_s, QString::fromLatin1(other))) << other;
}

class SelectSimilarTest : public ListsFixture {
protected:
    SelectSimilarTest() {
        OpenList(u"news"_s, Words("ann@x.test bob@mail.x.test cy@ax.test an.n@other.test bo@mail.x.test"));
    }
};

TEST_F(SelectSimilarTest, SelectsThoseOfADomain) {
    profile.Boxes.Inputs = {u" someone@X.test "_s};
    editing.SelectDomain();
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("ann@x.test bo@mail.x.test bob@mail.x.test"));
    EXPECT_EQ(lists.Selection(kAlphabetical).currentIndex().row(), 1);
    EXPECT_EQ(TakeStatus(), QStringList(u"Selected 3 addresses"_s));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(SelectSimilarTest, OffersTheDomainOfTheCurrentRow) {
    lists.Selection(kAlphabetical)
        .setCurrentIndex(lists.lstEmailList(kAlphabetical).index(4), QItemSelectionModel::NoUpdate);
    profile.Boxes.Inputs = {QString()};
    lists.SelectRows(kAlphabetical, {0});
    editing.SelectDomain();
    EXPECT_EQ(profile.Boxes.Asked.at(0).Default, u"ax.test"_s);
    EXPECT_EQ(lists.SelectedRows(kAlphabetical), QList<int>{0}) << "a cancelled box selects nothing";
}

TEST_F(SelectSimilarTest, SelectsWhatIsSimilarToASelectedEntry) {
    lists.SelectRows(kAlphabetical, {1});
    editing.SelectSimilar(kAlphabetical);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("an.n@other.test ann@x.test"));
    lists.SelectRows(kAlphabetical, {2});
    editing.SelectSimilar(kAlphabetical);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("bo@mail.x.test bob@mail.x.test"));
}

TEST_F(SelectSimilarTest, TheSignOfARequestDoesNotCount) {
    AddPending(Words("+ann@x.test -an.n@x.test +bob@x.test"));
    lists.SelectRows(kPending, {0});
    editing.SelectSimilar(kPending);
    EXPECT_EQ(lists.SelectedRows(kPending), (QList<int>{0, 1}));
}

} // namespace
} // namespace varlo::test
