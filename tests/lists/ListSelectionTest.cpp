// Searching, sort orders and selections: what the operator does to find entries.
#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/ListEditing.h"
#include "lists/ListsFixture.h"

#include <QSignalSpy>
#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Addresses;
using test::Words;

class ListSelectionTest : public test::ListsFixture {
protected:
    void Open(const QStringList &entries) { OpenList(u"news"_s, entries); }
    void ShowOrder(int order) { session.Prefs.ListSortBy = order; }
    void Search(const QString &text) {
        profile.Boxes.Inputs.push_back(text);
        editing.Search();
    }
    // Opens a list with so many of its 1,000 entries selected in the alphabetical view.
    void OpenWithSelection(int count) {
        Open(Addresses(1000));
        ShowOrder(1);
        QList<int> rows;
        for (int row = 0; row < count; ++row)
            rows.append(row);
        lists.SelectRows(kAlphabetical, rows);
    }
};

TEST_F(ListSelectionTest, SearchAsksAndSelectsWhatContainsTheText) {
    Open(Words("Ann@x.test bob@x.test joANNe@x.test"));
    ShowOrder(0);
    lists.SelectRows(kChronological, {1});
    Search(u"ann"_s);
    EXPECT_EQ(profile.Boxes.Asked,
              (std::vector<test::ScriptedDialogs::Input>{
                  {u"Please enter the text you want to search for:\r\n(Can be a full or partial address)"_s,
                   u"Find e-mail address"_s, QString()}}));
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("Ann@x.test joANNe@x.test"));
    EXPECT_EQ(TakeStatus(),
              (QStringList{u"Searching for [ann]..."_s, u"Search returned 2 matches for [ann]"_s}));
}

TEST_F(ListSelectionTest, SearchLooksInTheVisibleViewOnly) {
    Open(Words("bb@x.test aa@x.test"));
    ShowOrder(1);
    lists.SelectRows(kChronological, {0});
    Search(u"AA@"_s);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("aa@x.test"));
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("bb@x.test"));
}

TEST_F(ListSelectionTest, ASearchWithoutMatchesLeavesNothingSelected) {
    Open(Words("aa@x.test bb@x.test"));
    editing.SelectAll(kAlphabetical);
    TakeStatus();
    Search(u"zz"_s);
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 0);
    EXPECT_EQ(TakeStatus().last(), u"Search returned 0 matches for [zz]"_s);
}

TEST_F(ListSelectionTest, AnEmptyOrCancelledSearchLeavesTheSelectionAlone) {
    Open(Words("aa@x.test bb@x.test"));
    lists.SelectRows(kAlphabetical, {1});
    Search(QString());
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("bb@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListSelectionTest, CharactersThatMeanMoreElsewhereMeanThemselves) {
    Open({u"a.b@x.test"_s, u"axb@x.test"_s, u"100%@x.test"_s, u"s*r@x.test"_s, u"[q?]@x.test"_s,
          u"b\\s@x.test"_s, u"%1@x.test"_s, u"<b>@x.test"_s});
    ShowOrder(0);
    const std::vector<std::pair<QString, QString>> cases{
        {u"a.b"_s, u"a.b@x.test"_s},  {u"0%"_s, u"100%@x.test"_s},   {u"s*r"_s, u"s*r@x.test"_s},
        {u"[q?"_s, u"[q?]@x.test"_s}, {u"b\\s"_s, u"b\\s@x.test"_s}, {u"%1@"_s, u"%1@x.test"_s},
        {u"<b>"_s, u"<b>@x.test"_s}};
    for (const auto &[text, entry] : cases) {
        Search(text);
        EXPECT_EQ(lists.SelectedEntries(kChronological), QStringList(entry));
        EXPECT_EQ(TakeStatus().last(), u"Search returned 1 matches for ["_s + text + u']');
    }
    Search(u".*"_s);
    EXPECT_EQ(lists.SelectedCount(kChronological), 0);
}

TEST_F(ListSelectionTest, ABlankIsATextToSearchFor) {
    Open({u"a b"_s, u"ab"_s});
    ShowOrder(0);
    Search(u" "_s);
    EXPECT_EQ(lists.SelectedEntries(kChronological), QStringList(u"a b"_s));
}

TEST_F(ListSelectionTest, SearchFindsLettersBeyondAsciiWhateverTheirCase) {
    Open({u"JÖRG@x.test"_s});
    Search(u"ö"_s);
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 1);
}

TEST_F(ListSelectionTest, EveryOtherOfTheMostEntriesIsFoundAgainAndAgain) {
    QStringList entries;
    for (int i = 0; i < EntryListModel::kMostEntries; ++i)
        entries << QString(i % 2 == 0 ? u'e' : u'o') + QString::number(i);
    Open(entries);
    ShowOrder(0);
    for (const char *text : {"e", "o", "e"}) {
        Search(QString::fromLatin1(text));
        EXPECT_EQ(lists.SelectedCount(kChronological), *text == 'e' ? 16384 : 16383);
    }
}

TEST_F(ListSelectionTest, AnotherOrderCarriesTheSelectionOver) {
    Open(Words("cc@x.test aa@x.test bb@x.test"));
    ShowOrder(0);
    lists.SelectRows(kChronological, {0, 1});
    EXPECT_TRUE(editing.ChangeSortOrder(1));
    EXPECT_EQ(session.Prefs.ListSortBy, 1);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("aa@x.test cc@x.test"));
    EXPECT_EQ(TakeStatus(),
              (QStringList{u"Sorting list..."_s, u"E-mail addresses sorted by alphabetical order"_s}));
    lists.SelectRows(kAlphabetical, {1});
    EXPECT_TRUE(editing.ChangeSortOrder(0));
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("bb@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"E-mail addresses sorted by chronological order"_s);
    EXPECT_EQ(Current(), Words("cc@x.test aa@x.test bb@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListSelectionTest, OfEqualEntriesAsManyAreCarriedOver) {
    Open(Words("dd@x.test aa@x.test dd@x.test DD@x.test"));
    ShowOrder(0);
    lists.SelectRows(kChronological, {2, 3});
    editing.ChangeSortOrder(1);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("DD@x.test dd@x.test"));
}

TEST_F(ListSelectionTest, FiveHundredSelectionsAreCarriedOverWithoutAQuestion) {
    OpenWithSelection(500);
    QStringList selected = lists.SelectedEntries(kAlphabetical);
    EXPECT_TRUE(editing.ChangeSortOrder(0));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    QStringList carried = lists.SelectedEntries(kChronological);
    std::sort(selected.begin(), selected.end());
    std::sort(carried.begin(), carried.end());
    EXPECT_EQ(carried, selected);
}

TEST_F(ListSelectionTest, FiveHundredAndOneSelectionsAreAskedAboutAndDropped) {
    OpenWithSelection(501);
    profile.Boxes.Answers = {BoxAnswer::Ok};
    EXPECT_TRUE(editing.ChangeSortOrder(0));
    const std::vector<test::ShownBox> expected{
        {u"Confirm"_s,
         u"Due to the amount of selections on the current list your selections will be lost when "
         "sorting. Continue?"_s,
         BoxButtons::OkCancel, BoxIcon::Question}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
    EXPECT_EQ(lists.SelectedCount(kChronological), 0);
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 0);
    EXPECT_EQ(session.Prefs.ListSortBy, 0);
}

TEST_F(ListSelectionTest, CancelKeepsTheOrderAndTheSelection) {
    OpenWithSelection(501);
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    EXPECT_FALSE(editing.ChangeSortOrder(0));
    EXPECT_EQ(session.Prefs.ListSortBy, 1);
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 501);
    EXPECT_EQ(TakeStatus(), QStringList());
    EXPECT_FALSE(profile.Boxes.Hourglass);
}

TEST_F(ListSelectionTest, TheOrderInForceKeepsItsSelection) {
    OpenWithSelection(3);
    EXPECT_TRUE(editing.ChangeSortOrder(1));
    EXPECT_EQ(lists.SelectedRows(kAlphabetical), (QList<int>{0, 1, 2}));
    EXPECT_EQ(TakeStatus().last(), u"E-mail addresses sorted by alphabetical order"_s);
}

TEST_F(ListSelectionTest, TheHourglassIsShownWhileSorting) {
    Open(Words("aa@x.test"));
    std::vector<bool> hourglass;
    QObject::connect(&session.Status, &StatusFeed::StatusText, &lists.Open,
                     [&] { hourglass.push_back(profile.Boxes.Hourglass); });
    editing.ChangeSortOrder(0);
    EXPECT_EQ(hourglass, (std::vector<bool>{true, true}));
    EXPECT_FALSE(profile.Boxes.Hourglass);
}

TEST_F(ListSelectionTest, EntriesOfOneViewOnlyAreNotCarriedOver) {
    Open(Words("aa@x.test"));
    ShowOrder(1);
    lists.Box(kAlphabetical).Model().Add(u"try@x.test"_s);
    editing.SelectAll(kAlphabetical);
    editing.ChangeSortOrder(0);
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("aa@x.test"));
    EXPECT_EQ(Current(), Words("aa@x.test"));
}

TEST_F(ListSelectionTest, AStatusLogThatCannotBeWrittenIsReportedAsTheSortMenu) {
    Open(Words("aa@x.test"));
    ShowOrder(1);
    BlockLog(u"StatusLog.txt"_s);
    editing.ChangeSortOrder(0);
    EXPECT_EQ(Errors().first(), u"70 in Main.mnuSortOrder - Permission denied"_s);
    EXPECT_FALSE(profile.Boxes.Hourglass);
}

TEST_F(ListSelectionTest, SelectAllTellsHowManyAndSelectNoneClears) {
    Open(Words("aa@x.test bb@x.test"));
    AddPending(Words("+pp@x.test"));
    QCoreApplication::sendPostedEvents();
    const QSignalSpy updates(&lists.Open, &OpenList::Changed);
    const QSignalSpy pendingUpdates(&lists.Pending, &PendingList::Changed);
    editing.SelectAll(kAlphabetical);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 2);
    editing.SelectAll(kPending);
    editing.SelectNone(kAlphabetical);
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 0);
    EXPECT_EQ(lists.SelectedEntries(kPending), Words("+pp@x.test"));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Selected 2 addresses"_s, u"Selected 1 address"_s,
                                         u"Cleared address selections"_s}));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(updates.count(), 2);
    EXPECT_EQ(pendingUpdates.count(), 1);
}

TEST_F(ListSelectionTest, SelectAllOfAnEmptyListSelectsNone) {
    editing.SelectAll(kPending);
    EXPECT_EQ(TakeStatus(), QStringList(u"Selected 0 addresses"_s));
}

TEST_F(ListSelectionTest, AClickTellsTheSelectionOfItsBox) {
    Open(Words("aa@x.test bb@x.test"));
    lists.SelectRows(kAlphabetical, {1});
    editing.ReportSelection(kAlphabetical);
    EXPECT_EQ(TakeStatus(), QStringList(u"Selected 1 address"_s));
}

TEST_F(ListSelectionTest, ASearchShowsItsFirstMatchAndIsOfferedAgain) {
    Open(Words("aa@x.test bb@y.test cc@y.test"));
    profile.Boxes.Inputs = {u"@y"_s, QString()};
    editing.Search();
    EXPECT_EQ(lists.Selection(kAlphabetical).currentIndex().row(), 1);
    editing.Search();
    EXPECT_EQ(profile.Boxes.Asked.back().Default, u"@y"_s);
}

TEST_F(ListSelectionTest, TheSelectedEntriesAreShownRoundAndRound) {
    Open(Words("aa@x.test bb@y.test cc@x.test dd@y.test"));
    editing.ShowSelected(true);
    EXPECT_FALSE(lists.Selection(kAlphabetical).currentIndex().isValid());
    lists.SelectRows(kAlphabetical, {1, 3});
    QList<int> shown;
    for (const bool next : {true, true, true, false, false}) {
        editing.ShowSelected(next);
        shown << lists.Selection(kAlphabetical).currentIndex().row();
    }
    EXPECT_EQ(shown, (QList<int>{1, 3, 1, 3, 1}));
    EXPECT_EQ(lists.SelectedRows(kAlphabetical), (QList<int>{1, 3}));
}

TEST_F(ListSelectionTest, WhatHasNoLineOfItsOwnTellsWhatItDid) {
    Open(Words("aa@x.test bb@x.test"));
    editing.SelectAll(kAlphabetical);
    editing.CurrentToPending(ListEditing::Transfer::Copy);
    EXPECT_EQ(TakeStatus().last(), u"Copied 2 addresses to the pending list"_s);
    lists.SelectRows(kPending, {0});
    editing.SwapSigns();
    EXPECT_EQ(TakeStatus().last(), u"Reversed 1 address"_s);
    profile.Boxes.Inputs = {u"zz@x.test"_s};
    editing.EditSelected(kPending);
    EXPECT_EQ(TakeStatus().last(), u"Changed [-aa@x.test] to [-zz@x.test]"_s);
    editing.PendingToCurrent(ListEditing::Transfer::Move);
    EXPECT_EQ(TakeStatus().last(), u"Moved 1 address to the current list"_s);
}

// ---- What the windows see meanwhile

TEST_F(ListSelectionTest, WindowsHaveTheirEventsBeforeASearchLooks) {
    Open(Words("aa@x.test"));
    bool ran = false;
    QTimer::singleShot(0, &lists.Open, [&] {
        ran = true;
        EXPECT_EQ(TakeStatus().last(), u"Searching for [@x]..."_s);
        lists.Open.Add(u"late@x.test"_s);
    });
    Search(u"@x"_s);
    EXPECT_TRUE(ran);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("aa@x.test late@x.test"));
}

TEST_F(ListSelectionTest, WindowsHaveTheirEventsBeforeTheOrderChanges) {
    Open(Words("bb@x.test aa@x.test"));
    lists.SelectRows(kAlphabetical, {0});
    bool ran = false;
    QTimer::singleShot(0, &lists.Open, [&] {
        ran = true;
        EXPECT_EQ(TakeStatus().last(), u"Sorting list..."_s);
        EXPECT_EQ(lists.VisibleBox(), kAlphabetical);
        lists.SelectRows(kAlphabetical, {1});
    });
    editing.ChangeSortOrder(0);
    EXPECT_TRUE(ran);
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("bb@x.test"));
}

} // namespace
} // namespace varlo
