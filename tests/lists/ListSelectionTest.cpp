// Searching, sort orders and selections: what the operator does to find entries.
#include "lists/ListEditing.h"
#include "lists/ListsFixture.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Addresses;
using test::Words;

class ListSelectionTest : public test::ListsFixture {
protected:
    void Open(const QStringList &entries) { OpenList(QStringLiteral("news"), entries); }
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
    Search(QStringLiteral("ann"));
    EXPECT_EQ(profile.Boxes.Asked,
              (std::vector<test::ScriptedDialogs::Input>{
                  {QStringLiteral(
                       "Please enter the text you want to search for:\r\n(Can be a full or partial address)"),
                   QStringLiteral("Find e-mail address"), QString()}}));
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("Ann@x.test joANNe@x.test"));
    EXPECT_EQ(TakeStatus(), (QStringList{QStringLiteral("Searching for [ann]..."),
                                         QStringLiteral("Search returned 2 matches for [ann]")}));
}

TEST_F(ListSelectionTest, SearchLooksInTheVisibleViewOnly) {
    Open(Words("bb@x.test aa@x.test"));
    ShowOrder(1);
    lists.SelectRows(kChronological, {0});
    Search(QStringLiteral("AA@"));
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("aa@x.test"));
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("bb@x.test"));
}

TEST_F(ListSelectionTest, ASearchWithoutMatchesLeavesNothingSelected) {
    Open(Words("aa@x.test bb@x.test"));
    editing.SelectAll(kAlphabetical);
    TakeStatus();
    Search(QStringLiteral("zz"));
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 0);
    EXPECT_EQ(TakeStatus().last(), QStringLiteral("Search returned 0 matches for [zz]"));
}

TEST_F(ListSelectionTest, AnEmptyOrCancelledSearchLeavesTheSelectionAlone) {
    Open(Words("aa@x.test bb@x.test"));
    lists.SelectRows(kAlphabetical, {1});
    Search(QString());
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("bb@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(ListSelectionTest, CharactersThatMeanMoreElsewhereMeanThemselves) {
    Open({QStringLiteral("a.b@x.test"), QStringLiteral("axb@x.test"), QStringLiteral("100%@x.test"),
          QStringLiteral("s*r@x.test"), QStringLiteral("[q?]@x.test"), QStringLiteral("b\\s@x.test"),
          QStringLiteral("%1@x.test"), QStringLiteral("<b>@x.test")});
    ShowOrder(0);
    const std::vector<std::pair<QString, QString>> cases{
        {QStringLiteral("a.b"), QStringLiteral("a.b@x.test")},
        {QStringLiteral("0%"), QStringLiteral("100%@x.test")},
        {QStringLiteral("s*r"), QStringLiteral("s*r@x.test")},
        {QStringLiteral("[q?"), QStringLiteral("[q?]@x.test")},
        {QStringLiteral("b\\s"), QStringLiteral("b\\s@x.test")},
        {QStringLiteral("%1@"), QStringLiteral("%1@x.test")},
        {QStringLiteral("<b>"), QStringLiteral("<b>@x.test")}};
    for (const auto &[text, entry] : cases) {
        Search(text);
        EXPECT_EQ(lists.SelectedEntries(kChronological), QStringList(entry));
        EXPECT_EQ(TakeStatus().last(), QStringLiteral("Search returned 1 matches for [") + text + u']');
    }
    Search(QStringLiteral(".*"));
    EXPECT_EQ(lists.SelectedCount(kChronological), 0);
}

TEST_F(ListSelectionTest, ABlankIsATextToSearchFor) {
    Open({QStringLiteral("a b"), QStringLiteral("ab")});
    ShowOrder(0);
    Search(QStringLiteral(" "));
    EXPECT_EQ(lists.SelectedEntries(kChronological), QStringList(QStringLiteral("a b")));
}

TEST_F(ListSelectionTest, SearchFindsLettersBeyondAsciiWhateverTheirCase) {
    Open({QStringLiteral("JÖRG@x.test")});
    Search(QStringLiteral("ö"));
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
    EXPECT_EQ(TakeStatus(), (QStringList{QStringLiteral("Sorting list..."),
                                         QStringLiteral("E-mail addresses sorted by alphabetical order")}));
    lists.SelectRows(kAlphabetical, {1});
    EXPECT_TRUE(editing.ChangeSortOrder(0));
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("bb@x.test"));
    EXPECT_EQ(TakeStatus().last(), QStringLiteral("E-mail addresses sorted by chronological order"));
    EXPECT_EQ(Current(), Words("cc@x.test aa@x.test bb@x.test"));
    EXPECT_TRUE(lists.ListSaved);
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
        {QStringLiteral("Confirm"),
         QStringLiteral(
             "Due to the amount of selections on the current list your selections will be lost when "
             "sorting. Continue?"),
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
    EXPECT_EQ(TakeStatus().last(), QStringLiteral("E-mail addresses sorted by alphabetical order"));
}

TEST_F(ListSelectionTest, TheHourglassIsShownWhileSorting) {
    Open(Words("aa@x.test"));
    std::vector<bool> hourglass;
    QObject::connect(&session.Status, &StatusFeed::StatusText, &lists,
                     [&] { hourglass.push_back(profile.Boxes.Hourglass); });
    editing.ChangeSortOrder(0);
    EXPECT_EQ(hourglass, (std::vector<bool>{true, true}));
    EXPECT_FALSE(profile.Boxes.Hourglass);
}

TEST_F(ListSelectionTest, EntriesOfOneViewOnlyAreNotCarriedOver) {
    Open(Words("aa@x.test"));
    ShowOrder(1);
    lists.lstEmailList(kAlphabetical).Add(QStringLiteral("try@x.test"));
    editing.SelectAll(kAlphabetical);
    editing.ChangeSortOrder(0);
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("aa@x.test"));
    EXPECT_EQ(Current(), Words("aa@x.test"));
}

TEST_F(ListSelectionTest, AStatusLogThatCannotBeWrittenIsReportedAsTheSortMenu) {
    Open(Words("aa@x.test"));
    ShowOrder(1);
    BlockLog(QStringLiteral("StatusLog.txt"));
    editing.ChangeSortOrder(0);
    EXPECT_EQ(Errors().first(), QStringLiteral("70 in Main.mnuSortOrder - Permission denied"));
    EXPECT_FALSE(profile.Boxes.Hourglass);
}

TEST_F(ListSelectionTest, SelectAllTellsHowManyAndSelectNoneClears) {
    Open(Words("aa@x.test bb@x.test"));
    AddPending(Words("+pp@x.test"));
    const QSignalSpy updates(&lists, &ListStore::ControlsOutdated);
    editing.SelectAll(kAlphabetical);
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 2);
    editing.SelectAll(kPending);
    editing.SelectNone(kAlphabetical);
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 0);
    EXPECT_EQ(lists.SelectedEntries(kPending), Words("+pp@x.test"));
    EXPECT_EQ(TakeStatus(),
              (QStringList{QStringLiteral("Selected 2 addresses"), QStringLiteral("Selected 1 address"),
                           QStringLiteral("Cleared address selections")}));
    EXPECT_GE(updates.count(), 3);
}

TEST_F(ListSelectionTest, SelectAllOfAnEmptyListSelectsNone) {
    editing.SelectAll(kPending);
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Selected 0 addresses")));
}

TEST_F(ListSelectionTest, AClickTellsTheSelectionOfItsBox) {
    Open(Words("aa@x.test bb@x.test"));
    lists.SelectRows(kAlphabetical, {1});
    editing.ReportSelection(kAlphabetical);
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Selected 1 address")));
}

} // namespace
} // namespace varlo
