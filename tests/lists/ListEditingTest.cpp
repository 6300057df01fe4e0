#include "lists/ListEditing.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/ListsFixture.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Addresses;
using test::Words;
using Transfer = ListEditing::Transfer;

constexpr int kMost = EntryListModel::kMostEntries;

class ListEditingTest : public test::ListsFixture {
protected:
    void Open(const QStringList &entries) { OpenList(u"news"_s, entries); }
    void ShowOrder(int order) { session.Prefs.ListSortBy = order; }
    // Selects the entries of the visible Current box that stand in `entries`.
    void Select(int box, const QStringList &entries) {
        QList<int> rows;
        for (int row = 0; row < lists.lstEmailList(box).Count(); ++row)
            if (entries.contains(lists.lstEmailList(box).Entry(row)))
                rows.append(row);
        lists.SelectRows(box, rows);
    }
    void Edit(int box, std::initializer_list<const char *> answers) {
        for (const char *answer : answers)
            profile.Boxes.Inputs.push_back(QString::fromUtf8(answer));
        editing.EditSelected(box);
    }
    QStringList AskedAbout() const {
        QStringList asked;
        for (const auto &box : profile.Boxes.Asked)
            asked << box.Default;
        return asked;
    }
    void ExpectBoth(const QStringList &chronological, const QStringList &alphabetical) const {
        EXPECT_EQ(Current(), chronological);
        EXPECT_EQ(Sorted(), alphabetical);
    }
};

TEST_F(ListEditingTest, EditAsksWithTheEntryAsDefault) {
    Open(Words("aa@x.test"));
    lists.SelectRows(kChronological, {0});
    Edit(kChronological, {"bb@x.test"});
    EXPECT_EQ(profile.Boxes.Asked,
              (std::vector<test::ScriptedDialogs::Input>{{u"Please enter the amended e-mail address:"_s,
                                                          u"Edit e-mail address"_s, u"aa@x.test"_s}}));
}

TEST_F(ListEditingTest, EditReplacesTheEntryInBothViews) {
    Open(Words("cc@x.test aa@x.test bb@x.test"));
    ShowOrder(0);
    lists.SelectRows(kChronological, {1});
    Edit(kChronological, {"zz@x.test"});
    ExpectBoth(Words("cc@x.test zz@x.test bb@x.test"), Words("bb@x.test cc@x.test zz@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("zz@x.test"));
    ShowOrder(1);
    lists.SelectRows(kAlphabetical, {2});
    Edit(kAlphabetical, {"aa@x.test"});
    ExpectBoth(Words("cc@x.test aa@x.test bb@x.test"), Words("aa@x.test bb@x.test cc@x.test"));
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("aa@x.test"));
}

TEST_F(ListEditingTest, EditAsksOnceForEachEntryThoughTheyMove) {
    Open(Words("aa@x.test bb@x.test cc@x.test dd@x.test"));
    lists.SelectRows(kAlphabetical, {0, 1, 2});
    Edit(kAlphabetical, {"zz@x.test", "yy@x.test", "xx@x.test"});
    EXPECT_EQ(AskedAbout(), Words("aa@x.test bb@x.test cc@x.test"));
    ExpectBoth(Words("zz@x.test yy@x.test xx@x.test dd@x.test"),
               Words("dd@x.test xx@x.test yy@x.test zz@x.test"));
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("xx@x.test yy@x.test zz@x.test"));
}

TEST_F(ListEditingTest, AnInvalidAnswerChangesNothingAndTheRoundGoesOn) {
    Open(Words("aa@x.test bb@x.test"));
    lists.SelectRows(kChronological, {0, 1});
    Edit(kChronological, {"nobody", "cc@x.test"});
    ExpectBoth(Words("aa@x.test cc@x.test"), Words("aa@x.test cc@x.test"));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(u"The e-mail address [nobody] is invalid"_s));
}

TEST_F(ListEditingTest, AnAnswerThatIsOnTheListAlreadyChangesNothing) {
    Open(Words("aa@x.test bb@x.test"));
    lists.SelectRows(kChronological, {0, 1});
    Edit(kChronological, {"BB@x.test", "bb@x.test"});
    ExpectBoth(Words("aa@x.test bb@x.test"), Words("aa@x.test bb@x.test"));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Duplicate address [BB@x.test] ignored"_s,
                                         u"Duplicate address [bb@x.test] ignored"_s}));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, CancelInTheMiddleOfFiftyEndsTheRound) {
    const QStringList entries = Addresses(50, u"old"_s);
    Open(entries);
    editing.SelectAll(kChronological);
    QStringList expected = entries;
    for (int i = 0; i < 20; ++i) {
        expected[i] = u"new%1@x.test"_s.arg(i);
        profile.Boxes.Inputs.push_back(expected[i]);
    }
    profile.Boxes.Inputs.push_back(QString());
    editing.EditSelected(kChronological);
    EXPECT_EQ(AskedAbout(), entries.first(21));
    EXPECT_EQ(Current(), expected);
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(Sorted(), expected);
}

TEST_F(ListEditingTest, OfEqualEntriesTheFirstOfTheOtherViewIsReplaced) {
    Open(Words("dd@x.test mm@x.test DD@x.test dd@x.test"));
    ShowOrder(1);
    lists.SelectRows(kAlphabetical, {2});
    ASSERT_EQ(lists.SelectedEntries(kAlphabetical), Words("dd@x.test"));
    Edit(kAlphabetical, {"new@x.test"});
    ExpectBoth(Words("new@x.test mm@x.test DD@x.test dd@x.test"),
               Words("DD@x.test dd@x.test mm@x.test new@x.test"));
    ShowOrder(0);
    lists.SelectRows(kChronological, {3});
    Edit(kChronological, {"end@x.test"});
    ExpectBoth(Words("new@x.test mm@x.test DD@x.test end@x.test"),
               Words("DD@x.test end@x.test mm@x.test new@x.test"));
}

TEST_F(ListEditingTest, AnEntryOfOneViewOnlyIsEditedThereOnly) {
    Open(Words("aa@x.test"));
    lists.Box(kAlphabetical).Model().Add(u"try@x.test"_s);
    lists.SelectRows(kAlphabetical, {1});
    Edit(kAlphabetical, {"tried@x.test"});
    ExpectBoth(Words("aa@x.test"), Words("aa@x.test tried@x.test"));
}

TEST_F(ListEditingTest, APendingEntryKeepsItsSign) {
    AddPending(Words("+aa@x.test -bb@x.test"));
    editing.SelectAll(kPending);
    Edit(kPending, {"cc@x.test", "dd@x.test"});
    EXPECT_EQ(AskedAbout(), Words("aa@x.test bb@x.test"));
    EXPECT_EQ(Pending(), Words("+cc@x.test -dd@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, APendingEntryMayBecomeEqualToAnother) {
    AddPending(Words("+aa@x.test +bb@x.test"));
    lists.SelectRows(kPending, {1});
    Edit(kPending, {"aa@x.test"});
    EXPECT_EQ(Pending(), Words("+aa@x.test +aa@x.test"));
}

TEST_F(ListEditingTest, EditWithoutASelectionAsksNothing) {
    Open(Words("aa@x.test"));
    Edit(kChronological, {});
    EXPECT_EQ(AskedAbout(), QStringList());
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, DeleteTakesTheEntriesFromBothViewsAndNamesEach) {
    Open(Words("cc@x.test aa@x.test bb@x.test dd@x.test"));
    lists.SelectRows(kAlphabetical, {0, 2, 3});
    editing.DeleteSelected(kAlphabetical);
    ExpectBoth(Words("bb@x.test"), Words("bb@x.test"));
    EXPECT_EQ(TakeStatus(),
              (QStringList{u"Deleted [aa@x.test]"_s, u"Deleted [cc@x.test]"_s, u"Deleted [dd@x.test]"_s}));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 0);
}

TEST_F(ListEditingTest, DeleteTakesAsManyEqualEntriesFromTheOtherView) {
    Open(Words("dd@x.test DD@x.test dd@x.test aa@x.test dd@x.test"));
    ShowOrder(0);
    lists.SelectRows(kChronological, {2, 4});
    editing.DeleteSelected(kChronological);
    ExpectBoth(Words("dd@x.test DD@x.test aa@x.test"), Words("aa@x.test DD@x.test dd@x.test"));
}

TEST_F(ListEditingTest, DeleteOfAnEntryOfOneViewOnlyLeavesTheOther) {
    Open(Words("aa@x.test"));
    lists.Box(kAlphabetical).Model().Add(u"try@x.test"_s);
    lists.SelectRows(kAlphabetical, {1});
    editing.DeleteSelected(kAlphabetical);
    ExpectBoth(Words("aa@x.test"), Words("aa@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, DeleteWithoutASelectionDoesNothing) {
    Open(Words("aa@x.test"));
    editing.DeleteSelected(kChronological);
    EXPECT_EQ(Current(), Words("aa@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList());
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, DeleteOfPendingEntriesLeavesTheListSaved) {
    Open(Words("aa@x.test"));
    AddPending(Words("+aa@x.test -bb@x.test +cc@x.test"));
    lists.SelectRows(kPending, {0, 2});
    editing.DeleteSelected(kPending);
    EXPECT_EQ(Pending(), Words("-bb@x.test"));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Deleted [+aa@x.test]"_s, u"Deleted [+cc@x.test]"_s}));
    EXPECT_EQ(Current(), Words("aa@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, TheMostEntriesAreDeletedAndNamedOneByOne) {
    const QStringList entries = Addresses(kMost);
    Open(entries);
    ShowOrder(0);
    editing.SelectAll(kChronological);
    TakeStatus();
    editing.DeleteSelected(kChronological);
    ExpectBoth({}, {});
    QStringList expected;
    for (const QString &entry : entries)
        expected << u"Deleted ["_s + entry + u']';
    EXPECT_EQ(TakeStatus(), expected);
    EXPECT_EQ(profile.Log(u"StatusLog.txt"_s).size(), kMost + 3); // loading, loaded, selected
}

TEST_F(ListEditingTest, AStatusLogThatCannotBeWrittenIsReportedOnceAndAllIsDeleted) {
    Open(Words("aa@x.test bb@x.test"));
    editing.SelectAll(kChronological);
    BlockLog(u"StatusLog.txt"_s);
    editing.DeleteSelected(kChronological);
    ExpectBoth({}, {});
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.cmdListDelete - Permission denied"_s));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, SwapReversesTheSignsOfTheSelectedOnly) {
    AddPending(Words("+aa@x.test -bb@x.test +cc@x.test unsigned@x.test"));
    lists.SelectRows(kPending, {0, 1, 3});
    editing.SwapSigns();
    EXPECT_EQ(Pending(), Words("-aa@x.test +bb@x.test +cc@x.test unsigned@x.test"));
    EXPECT_EQ(lists.SelectedRows(kPending), (QList<int>{0, 1, 3}));
}

TEST_F(ListEditingTest, SwappingTwiceRestoresTheEntries) {
    QStringList entries;
    for (int i = 0; i < kMost; ++i)
        entries << (i % 3 == 0 ? u'-' : u'+') + u"a%1@x.test"_s.arg(i / 2);
    AddPending(entries);
    editing.SelectAll(kPending);
    editing.SwapSigns();
    EXPECT_EQ(Pending().first(), u"+a0@x.test"_s);
    EXPECT_NE(Pending(), entries);
    editing.SwapSigns();
    EXPECT_EQ(Pending(), entries);
}

TEST_F(ListEditingTest, CopyToPendingQueuesSubscriptionsWithoutATest) {
    Open({u"bb@x.test"_s, u"nobody"_s, QString(), u"aa@x.test"_s});
    AddPending(Words("+aa@x.test"));
    editing.SelectAll(kAlphabetical);
    TakeStatus();
    editing.CurrentToPending(Transfer::Copy);
    EXPECT_EQ(Pending(), Words("+aa@x.test + +aa@x.test +bb@x.test +nobody"));
    EXPECT_EQ(lists.lstEmailList(kChronological).Count(), 4);
    EXPECT_EQ(TakeStatus(), QStringList(u"Copied 4 addresses to the pending list"_s));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, MoveToPendingDeletesFromBothViews) {
    Open(Words("cc@x.test aa@x.test bb@x.test"));
    ShowOrder(0);
    lists.SelectRows(kChronological, {0, 1});
    editing.CurrentToPending(Transfer::Move);
    EXPECT_EQ(Pending(), Words("+cc@x.test +aa@x.test"));
    ExpectBoth(Words("bb@x.test"), Words("bb@x.test"));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Deleted [cc@x.test]"_s, u"Deleted [aa@x.test]"_s,
                                         u"Moved 2 addresses to the pending list"_s}));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, CopyToCurrentAddsToTheVisibleViewOnlyWhateverTheSign) {
    Open(Words("mm@x.test"));
    AddPending(Words("-aa@x.test +zz@x.test +mm@x.test"));
    editing.SelectAll(kPending);
    ShowOrder(0);
    editing.PendingToCurrent(Transfer::Copy);
    ExpectBoth(Words("mm@x.test aa@x.test zz@x.test mm@x.test"), Words("mm@x.test"));
    ShowOrder(1);
    editing.PendingToCurrent(Transfer::Copy);
    EXPECT_EQ(Sorted(), Words("aa@x.test mm@x.test mm@x.test zz@x.test"));
    EXPECT_EQ(Pending(), Words("-aa@x.test +zz@x.test +mm@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

// Wanted: in alphabetical order such an entry is a trial that no save writes.
TEST_F(ListEditingTest, WhatWasCopiedToTheAlphabeticalViewIsNotSaved) {
    Open(Words("mm@x.test"));
    AddPending(Words("+aa@x.test"));
    editing.SelectAll(kPending);
    ShowOrder(1);
    editing.PendingToCurrent(Transfer::Copy);
    EXPECT_TRUE(lists.Open.WriteList(u"news"_s));
    EXPECT_EQ(ReadListFile(u"news"_s), QByteArray("mm@x.test\r\n"));
}

TEST_F(ListEditingTest, MoveToCurrentDeletesThePendingEntriesAndLeavesTheListSaved) {
    Open(Words("mm@x.test"));
    ShowOrder(0);
    AddPending(Words("-aa@x.test +bb@x.test"));
    lists.SelectRows(kPending, {0});
    TakeStatus();
    editing.PendingToCurrent(Transfer::Move);
    EXPECT_EQ(Current(), Words("mm@x.test aa@x.test"));
    EXPECT_EQ(Pending(), Words("+bb@x.test"));
    EXPECT_EQ(TakeStatus(),
              (QStringList{u"Deleted [-aa@x.test]"_s, u"Moved 1 address to the current list"_s}));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, AMoveThatDoesNotFitOnThePendingListDeletesNothing) {
    Open(Words("aa@x.test bb@x.test cc@x.test"));
    AddPending(Addresses(kMost - 2, u"+p"_s));
    editing.SelectAll(kChronological);
    ShowOrder(0);
    editing.CurrentToPending(Transfer::Move);
    EXPECT_EQ(Errors(), QStringList(u"6 in Main.mnuListsCurrentCopy - Overflow"_s));
    EXPECT_EQ(Current(), Words("aa@x.test bb@x.test cc@x.test"));
    EXPECT_EQ(Pending().last(2), Words("+aa@x.test +bb@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListEditingTest, AMoveThatDoesNotFitOnTheCurrentListDeletesNothing) {
    for (int order : {0, 1}) {
        Open(Addresses(kMost - 1));
        ShowOrder(order);
        lists.Box(kPending).Model().SetEntries(Words("+~1@x.test -~2@x.test"));
        editing.SelectAll(kPending);
        editing.PendingToCurrent(Transfer::Move);
        EXPECT_EQ(Errors().last(), u"6 in Main.mnuListsPendingCopy - Overflow"_s);
        EXPECT_EQ(Pending(), Words("+~1@x.test -~2@x.test"));
        EXPECT_EQ(lists.lstEmailList(lists.VisibleBox()).Entries().last(), u"~1@x.test"_s);
    }
}

TEST_F(ListEditingTest, TheEditedEntryIsTheCurrentRowWhereItCameToStand) {
    Open(Words("aa@x.test bb@x.test cc@x.test"));
    ShowOrder(1);
    lists.SelectRows(kAlphabetical, {0});
    Edit(kAlphabetical, {"zz@x.test"});
    EXPECT_EQ(lists.Selection(kAlphabetical).currentIndex().row(), 2);
    AddPending(Words("+pp@x.test +qq@x.test"));
    lists.SelectRows(kPending, {1});
    Edit(kPending, {"rr@x.test"});
    EXPECT_EQ(lists.Selection(kPending).currentIndex().row(), 1);
}

TEST_F(ListEditingTest, AfterADeleteTheRowThatTookThePlaceIsCurrent) {
    const auto currentAfter = [this](int current, const QList<int> &rows) {
        lists.Box(kPending).Model().SetEntries(Words("+a +b +c +d +e +f"));
        QItemSelectionModel &selection = lists.Selection(kPending);
        selection.setCurrentIndex(lists.lstEmailList(kPending).index(current), QItemSelectionModel::NoUpdate);
        lists.SelectRows(kPending, rows);
        editing.DeleteSelected(kPending);
        return lists.Box(kPending).Model().data(selection.currentIndex()).toString();
    };
    EXPECT_EQ(currentAfter(2, {2}), u"+d"_s);
    EXPECT_EQ(currentAfter(4, {1, 3, 4}), u"+f"_s);
    EXPECT_EQ(currentAfter(3, {0, 5}), u"+d"_s) << "it was not deleted";
    EXPECT_EQ(currentAfter(5, {4, 5}), u"+d"_s) << "the last one";
    EXPECT_EQ(currentAfter(-1, {1, 2}), u"+d"_s);
    EXPECT_EQ(currentAfter(1, {0, 1, 2, 3, 4, 5}), QString());
}

// More separate ranges than are taken out one by one.
TEST_F(ListEditingTest, AfterADeleteOfManyScatteredEntriesTheRowIsStillTheOperators) {
    Open(Addresses(1000));
    ShowOrder(0);
    QList<int> odd;
    for (int row = 1; row < 1000; row += 2)
        odd << row;
    lists.SelectRows(kChronological, odd);
    lists.Selection(kChronological)
        .setCurrentIndex(lists.lstEmailList(kChronological).index(501), QItemSelectionModel::NoUpdate);
    editing.DeleteSelected(kChronological);
    const QModelIndex current = lists.Selection(kChronological).currentIndex();
    EXPECT_EQ(lists.lstEmailList(kChronological).data(current).toString(), u"a502@x.test"_s);
}

} // namespace
} // namespace varlo
