#include "lists/UnsavedList.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "lists/ListManagement.h"
#include "lists/ListStore.h"
#include "lists/UnsavedOffer.h"
#include "support/FullDisk.h"
#include "support/TestProfile.h"

#include <QCoreApplication>
#include <QDir>
#include <QPushButton>
#include <QToolButton>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

class UnsavedListTest : public testing::Test {
protected:
    UnsavedListTest() {
        profile.Write(u"lists/news.vlo"_s, "b@x.test\r\na@x.test\r\n");
        profile.Write(u"lists/other.vlo"_s, "");
    }
    // The open list as it was when the program had to end.
    void KeepOneMore() {
        lists.Open.Load(u"news"_s);
        lists.Open.Add(u"c@x.test"_s);
        ASSERT_TRUE(UnsavedList::Keep(profile.session, lists.Open));
        lists.Open.DropChanges();
    }
    QStringList Entries(int box) const { return lists.lstEmailList(box).Entries(); }
    bool IsKept() const { return QFile::exists(profile.Path(u"lists/news.vlo.unsaved"_s)); }
    QPushButton *Button(const char *name) const {
        return offer.findChild<QPushButton *>(QString::fromLatin1(name));
    }

    TestProfile profile;
    ListStore lists{profile.session};
    UnsavedOffer offer{profile.session, lists.Open};
};

TEST_F(UnsavedListTest, KeepsTheEntriesInTheirOrder) {
    KeepOneMore();
    EXPECT_EQ(profile.Read(u"lists/news.vlo.unsaved"_s), QByteArray("b@x.test\r\na@x.test\r\nc@x.test\r\n"));
    EXPECT_EQ(profile.Read(u"lists/news.vlo"_s), QByteArray("b@x.test\r\na@x.test\r\n"));
}

TEST_F(UnsavedListTest, KeepsNothingOfASavedList) {
    lists.Open.Load(u"news"_s);
    EXPECT_FALSE(UnsavedList::Keep(profile.session, lists.Open));
    EXPECT_FALSE(IsKept());
}

TEST_F(UnsavedListTest, ADiskThatIsFullIsLoggedAndAsksNobody) {
    lists.Open.Load(u"news"_s);
    lists.Open.Add(u"c@x.test"_s);
    profile.Write(u"logs/ErrorLog.txt"_s, "");
    {
        const FullDisk disk(3);
        EXPECT_FALSE(UnsavedList::Keep(profile.session, lists.Open));
    }
    EXPECT_FALSE(IsKept());
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

TEST_F(UnsavedListTest, IsOfferedWhenTheListIsOpened) {
    KeepOneMore();
    lists.Open.Load(u"other"_s);
    EXPECT_TRUE(offer.isHidden());
    lists.Open.Load(u"news"_s);
    EXPECT_FALSE(offer.isHidden());
    EXPECT_EQ(offer.Sentence(), u"Changes to list [news] were not saved when the program had to end."_s);
    lists.Open.Load(u"other"_s);
    EXPECT_TRUE(offer.isHidden()) << "it belongs to the list";
}

TEST_F(UnsavedListTest, RestoreMakesThemUnsavedChangesOfTheOpenList) {
    KeepOneMore();
    lists.Open.Load(u"other"_s);
    lists.Open.Load(u"news"_s);
    Button("cmdUnsavedRestore")->click();
    EXPECT_EQ(Entries(kChronological), QStringList({u"b@x.test"_s, u"a@x.test"_s, u"c@x.test"_s}));
    EXPECT_EQ(Entries(kAlphabetical), QStringList({u"a@x.test"_s, u"b@x.test"_s, u"c@x.test"_s}));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_FALSE(IsKept());
    EXPECT_TRUE(offer.isHidden());
    EXPECT_EQ(profile.StatusTexts.last(), u"Restored unsaved changes of [news]"_s);
}

TEST_F(UnsavedListTest, ForgetDeletesThem) {
    KeepOneMore();
    lists.Open.Load(u"other"_s);
    lists.Open.Load(u"news"_s);
    Button("cmdUnsavedDiscard")->click();
    EXPECT_EQ(Entries(kChronological), QStringList({u"b@x.test"_s, u"a@x.test"_s}));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_FALSE(IsKept());
    EXPECT_TRUE(offer.isHidden());
}

TEST_F(UnsavedListTest, AClosedOfferIsThereAgainAtTheNextLoad) {
    KeepOneMore();
    lists.Open.Load(u"other"_s);
    lists.Open.Load(u"news"_s);
    offer.findChild<QToolButton *>()->click();
    EXPECT_TRUE(offer.isHidden());
    lists.Open.SetSortOrder(0);
    QCoreApplication::sendPostedEvents();
    EXPECT_TRUE(offer.isHidden());
    EXPECT_TRUE(IsKept());
    lists.Open.Load(u"other"_s);
    lists.Open.Load(u"news"_s);
    EXPECT_FALSE(offer.isHidden());
}

TEST_F(UnsavedListTest, AKeptFileThatIsGoneLeavesTheListAsItIs) {
    KeepOneMore();
    lists.Open.Load(u"other"_s);
    lists.Open.Load(u"news"_s);
    ASSERT_TRUE(QFile::remove(profile.Path(u"lists/news.vlo.unsaved"_s)));
    Button("cmdUnsavedRestore")->click();
    ASSERT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(profile.Boxes.Shown[0].Title, u"varlo-pro Error 53 in Main.cmdUnsavedRestore"_s);
    EXPECT_EQ(Entries(kChronological), QStringList({u"b@x.test"_s, u"a@x.test"_s}));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(UnsavedListTest, GoesWithItsListWhenThatIsRenamedOrDeleted) {
    KeepOneMore();
    profile.Boxes.Inputs = {u"weekly"_s};
    EXPECT_EQ(RenameList(profile.session, lists.Open, u"news"_s), u"weekly"_s);
    EXPECT_TRUE(QFile::exists(profile.Path(u"lists/weekly.vlo.unsaved"_s)));
    EXPECT_FALSE(IsKept());
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(DeleteList(profile.session, u"weekly"_s));
    EXPECT_EQ(QDir(profile.Path(u"lists"_s)).entryList(QDir::Files), QStringList(u"other.vlo"_s));
    EXPECT_EQ(profile.Boxes.Destroying.size(), 1) << "Enter alone deletes no list";
}

} // namespace
} // namespace varlo::test
