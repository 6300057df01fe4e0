#include "lists/ListStore.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/RuntimeError.h"
#include "lists/ListLibrary.h"
#include "lists/ListsFixture.h"

#include <QSignalSpy>
#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::FileBytes;
using test::Words;

const QString kNews = u"news"_s;
const QString kOther = u"other"_s;

class ListStoreTest : public test::ListsFixture {
protected:
    // A list "news" with a change that is not in its file yet, and a list "other".
    void OpenUnsaved() {
        OpenList(kNews, Words("b@x.test a@x.test"));
        WriteListFile(kOther, FileBytes(Words("o@x.test")));
        lists.Open.Add(u"new@x.test"_s);
    }
};

TEST_F(ListStoreTest, IsEmptyAndSavedAtFirst) {
    EXPECT_EQ(Current() + Sorted() + Pending(), QStringList());
    EXPECT_EQ(lists.Open.Name(), QString());
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListStoreTest, LoadsAListInBothOrders) {
    WriteListFile(kNews, "b@x.test\r\nC@x.test\r\na@x.test\r\n");
    EXPECT_TRUE(lists.Open.Load(kNews));
    EXPECT_EQ(Current(), Words("b@x.test C@x.test a@x.test"));
    EXPECT_EQ(Sorted(), Words("a@x.test b@x.test C@x.test"));
    EXPECT_EQ(lists.Open.Name(), kNews);
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListStoreTest, TellsWhatItLoads) {
    const QString name = u"<b>Über uns"_s;
    WriteListFile(name, "a@x.test\r\n");
    std::vector<bool> hourglass;
    QObject::connect(&session.Status, &StatusFeed::StatusText, &lists.Open,
                     [&] { hourglass.push_back(profile.Boxes.Hourglass); });
    const QSignalSpy updates(&lists.Open, &OpenList::Changed);
    lists.Open.Load(name);
    EXPECT_EQ(TakeStatus(), (QStringList{u"Loading [<b>Über uns]..."_s, u"Loaded [<b>Über uns]"_s}));
    EXPECT_EQ(hourglass, (std::vector<bool>{true, true}));
    EXPECT_FALSE(profile.Boxes.Hourglass);
    EXPECT_GE(updates.count(), 1);
}

TEST_F(ListStoreTest, LoadingReplacesTheOldListAndLeavesThePendingListAlone) {
    OpenList(kNews, Words("a@x.test b@x.test"));
    AddPending(Words("+p@x.test -q@x.test"));
    lists.SelectRows(kPending, {1});
    lists.SelectRows(kAlphabetical, {0, 1});
    OpenList(kOther, Words("o@x.test"));
    EXPECT_EQ(Sorted(), Words("o@x.test"));
    EXPECT_EQ(Pending(), Words("+p@x.test -q@x.test"));
    EXPECT_EQ(lists.SelectedEntries(kPending), Words("-q@x.test"));
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 0);
}

TEST_F(ListStoreTest, BadAndRepeatedLinesAreLoadedAsTheyStand) {
    const QStringList lines{u"not an address"_s, QString(), u"a@x.test"_s, u"A@X.test"_s, u"a@x.test"_s};
    OpenList(kNews, lines);
    EXPECT_EQ(Current(), lines);
    EXPECT_EQ(lists.lstEmailList(kAlphabetical).Count(), 5);
}

TEST_F(ListStoreTest, AnEmptyLineIsWrittenBack) {
    OpenList(kNews, {u"a@x.test"_s, QString(), u"b@x.test"_s});
    EXPECT_TRUE(lists.Open.WriteList(kNews));
    EXPECT_EQ(ReadListFile(kNews), QByteArray("a@x.test\r\n\r\nb@x.test\r\n"));
}

TEST_F(ListStoreTest, SavesTheChronologicalOrderWhateverIsShown) {
    const QStringList entries = Words("b@x.test A@x.test c@x.test a@x.test");
    OpenList(kNews, entries);
    for (int order : {1, 0}) {
        session.Prefs.ListSortBy = order;
        EXPECT_TRUE(lists.Open.WriteList(kNews));
        EXPECT_TRUE(lists.Open.Load(kNews));
        EXPECT_EQ(Current(), entries);
    }
}

TEST_F(ListStoreTest, AListOfForeignEncodingIsSavedInTheSystemsOwn) {
    WriteListFile(kNews, "j\xF6rg@x.test\n\x80uro@x.test");
    lists.Open.Load(kNews);
    lists.Open.WriteList(kNews);
    EXPECT_EQ(ReadListFile(kNews), u"jörg@x.test\r\n€uro@x.test\r\n"_s.toUtf8());
}

TEST_F(ListStoreTest, WriteListNeitherChangesTheFlagNorTellsAnything) {
    OpenUnsaved();
    EXPECT_TRUE(lists.Open.WriteList(kNews));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListStoreTest, WriteListCreatesAMissingFile) {
    OpenList(kNews, Words("a@x.test"));
    EXPECT_TRUE(lists.Open.WriteList(kOther));
    EXPECT_EQ(ReadListFile(kOther), QByteArray("a@x.test\r\n"));
}

TEST_F(ListStoreTest, ASavedListIsNotAskedAbout) {
    OpenList(kNews, Words("a@x.test"));
    EXPECT_TRUE(lists.Open.PromptSaveList());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(ListStoreTest, YesSavesTheListThatIsLeft) {
    OpenUnsaved();
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(lists.Open.Load(kOther));
    const std::vector<test::ShownBox> expected{
        {u"Varlo Pro"_s, u"The changes to list [news] have not been saved, save now?"_s, BoxButtons::YesNo,
         BoxIcon::Question}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("b@x.test a@x.test new@x.test")));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Saved [news]"_s, u"Loading [other]..."_s, u"Loaded [other]"_s}));
    EXPECT_EQ(Current(), Words("o@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListStoreTest, NoDiscardsTheChangesOfTheListThatIsLeft) {
    OpenUnsaved();
    profile.Boxes.Answers = {BoxAnswer::No};
    EXPECT_TRUE(lists.Open.Load(kOther));
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("b@x.test a@x.test")));
    EXPECT_EQ(Current(), Words("o@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListStoreTest, NoLeavesTheFlagSoThatTheQuestionComesAgain) {
    OpenUnsaved();
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::No};
    EXPECT_TRUE(lists.Open.PromptSaveList());
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_TRUE(lists.Open.PromptSaveList());
    EXPECT_EQ(profile.Boxes.Shown.size(), 2U);
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListStoreTest, MarkupInAListNameIsAskedAboutAsItStands) {
    OpenList(u"<h1>big"_s, {});
    lists.Open.Add(u"a@x.test"_s);
    profile.Boxes.Answers = {BoxAnswer::No};
    lists.Open.PromptSaveList();
    EXPECT_EQ(profile.Boxes.Texts(),
              QStringList(u"The changes to list [<h1>big] have not been saved, save now?"_s));
}

// The entries of a list that was deleted can still be seen and changed; there is no file for them.
TEST_F(ListStoreTest, WithoutAnOpenListThereIsNothingToSave) {
    lists.Open.Add(u"a@x.test"_s);
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_TRUE(lists.Open.PromptSaveList());
    EXPECT_EQ(ListFolder(), QStringList());
}

TEST_F(ListStoreTest, ARequestIsAddedAtTheEndAndBecomesTheCurrentItem) {
    lists.Pending.Offer(PendingRequest::FromEntry(u"+a@x.test"_s, RequestOrigin::FailedDelivery));
    lists.Pending.Offer(PendingRequest::FromEntry(u"-a@x.test"_s, RequestOrigin::FailedDelivery));
    EXPECT_EQ(Pending(), Words("+a@x.test -a@x.test"));
    EXPECT_EQ(lists.Selection(kPending).currentIndex().row(), 1);
    EXPECT_EQ(lists.SelectedCount(kPending), 0);
}

TEST_F(ListStoreTest, AFullPendingListRefusesOneMore) {
    AddPending(test::Addresses(EntryListModel::kMostEntries, u"+a"_s));
    try {
        lists.Pending.Offer(PendingRequest::FromEntry(u"+more@x.test"_s, RequestOrigin::FailedDelivery));
        FAIL() << "nothing thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), Overflow);
    }
    EXPECT_EQ(lists.lstEmailList(kPending).Count(), EntryListModel::kMostEntries);
}

TEST_F(ListStoreTest, TheAlphabeticalBoxIsShownOnlyForOrderOne) {
    for (int order : {0, 1, 2, -1}) {
        session.Prefs.ListSortBy = order;
        EXPECT_EQ(lists.VisibleBox(), order == 1 ? kAlphabetical : kChronological);
    }
}

TEST_F(ListStoreTest, SelectionsAreToldInTheOrderOfTheRows) {
    OpenList(kNews, Words("d c b a"));
    lists.SelectRows(kChronological, {0, 2, 3});
    lists.SelectRows(kAlphabetical, {3});
    EXPECT_EQ(lists.SelectedRows(kChronological), (QList<int>{0, 2, 3}));
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("d b a"));
    EXPECT_EQ(lists.SelectedCount(kChronological), 3);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("d"));
    lists.SelectRows(kChronological, {1});
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("c"));
    lists.SelectRows(kChronological, {});
    EXPECT_EQ(lists.SelectedCount(kChronological), 0);
}

TEST_F(ListStoreTest, SelectionsMadeOneByOneAreToldInTheOrderOfTheRows) {
    OpenList(kNews, Words("a b c d e"));
    for (int row : {4, 1, 3, 0})
        lists.Selection(kChronological)
            .select(lists.lstEmailList(kChronological).index(row), QItemSelectionModel::Toggle);
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("a b d e"));
}

TEST_F(ListStoreTest, TheControlsFollowEveryChangeOfASelection) {
    OpenList(kNews, Words("a b"));
    const QSignalSpy updates(&lists.Open, &OpenList::Changed);
    QCoreApplication::sendPostedEvents();
    ASSERT_EQ(updates.count(), 1); // of the load
    lists.SelectRows(kChronological, {0});
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(updates.count(), 2);
    lists.SelectRows(kChronological, {0});
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(updates.count(), 2);
    lists.Selection(kChronological).clearSelection();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(updates.count(), 3);
}

TEST_F(ListStoreTest, IsLoadingWhileEventsRun) {
    WriteListFile(kNews, "a@x.test\r\n");
    int ticks = 0;
    QTimer::singleShot(0, &lists.Open, [&] {
        ++ticks;
        EXPECT_TRUE(lists.Open.IsLoading());
    });
    EXPECT_FALSE(lists.Open.IsLoading());
    lists.Open.Load(kNews);
    EXPECT_FALSE(lists.Open.IsLoading());
    EXPECT_EQ(ticks, 1);
}

TEST_F(ListStoreTest, WindowsHaveTheirEventsBeforeTheListIsFilled) {
    OpenList(u"news"_s, Words("aa@x.test"));
    WriteListFile(u"other"_s, FileBytes(Words("oo@x.test")));
    bool ran = false;
    QTimer::singleShot(0, &lists.Open, [&] {
        ran = true;
        EXPECT_EQ(TakeStatus(), QStringList(u"Loading [other]..."_s));
        EXPECT_EQ(Current(), Words("aa@x.test"));
        EXPECT_EQ(lists.Open.Name(), u"news"_s);
    });
    EXPECT_TRUE(lists.Open.Load(u"other"_s));
    EXPECT_TRUE(ran);
}

} // namespace
} // namespace varlo
