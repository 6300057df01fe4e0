#include "lists/ListsMenu.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/FramesFixture.h"

#include <QAction>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class ListsMenuTest : public test::FramesFixture {
protected:
    ListsMenuTest() { OpenLists({{u"news"_s, Words("bb@x.test aa@x.test")}}); }

    QAction *Entry(const char *name) {
        Turn();
        return Find<QAction>(name);
    }
    void Choose(const char *entry) {
        Turn();
        ASSERT_TRUE(Entry(entry)->isEnabled()) << entry;
        Entry(entry)->trigger();
    }
    // The captions of a menu, without mnemonics; a separator is "-".
    static QStringList Captions(const QMenu *menu) {
        QStringList captions;
        for (const QAction *entry : menu->actions())
            captions << (entry->isSeparator() ? u"-"_s : entry->text().remove(u'&'));
        return captions;
    }
    std::vector<bool> CheckedOrders() {
        return {Entry("mnuSortOrder_0")->isChecked(), Entry("mnuSortOrder_1")->isChecked()};
    }
};

TEST_F(ListsMenuTest, HasTheTwoListsWithTheirEntries) {
    EXPECT_EQ(menu.objectName(), u"mnuLists"_s);
    EXPECT_EQ(menu.title().remove(u'&'), u"Lists"_s);
    EXPECT_EQ(Captions(&menu).mid(0, 2), (QStringList{u"Current List"_s, u"Pending List"_s}));
    EXPECT_EQ(Captions(menu.CurrentMenu()).mid(0, 7),
              (QStringList{u"Copy to Pending List"_s, u"Move to Pending List"_s, u"-"_s, u"Sort"_s, u"-"_s,
                           u"Select All"_s, u"Select None"_s}));
    EXPECT_EQ(Captions(menu.SortMenu()), (QStringList{u"Chronological"_s, u"Alphabetical"_s}));
    EXPECT_EQ(Captions(menu.PendingMenu()).mid(0, 5),
              (QStringList{u"Copy to Current List"_s, u"Move to Current List"_s, u"-"_s, u"Select All"_s,
                           u"Select None"_s}));
}

TEST_F(ListsMenuTest, EveryEntryHasItsName) {
    for (const char *name :
         {"mnuListsCurrentCopy_0", "mnuListsCurrentCopy_1", "mnuSortOrder_0", "mnuSortOrder_1",
          "mnuListsCurrentSelAll", "mnuListsCurrentDeSelAll", "mnuListsPendingCopy_0",
          "mnuListsPendingCopy_1", "mnuListsPendingSelAll", "mnuListsPendingDeSelAll"})
        EXPECT_NE(Entry(name), nullptr);
    for (const char *name : {"mnuListsCurrent", "mnuListsPending", "mnuSort"})
        EXPECT_NE(Find<QMenu>(name), nullptr);
}

TEST_F(ListsMenuTest, SelectsAllOrNoneOfTheVisibleBox) {
    Choose("mnuListsCurrentSelAll");
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 2);
    EXPECT_EQ(lists.SelectedCount(kChronological), 0);
    Choose("mnuListsCurrentDeSelAll");
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 0);
    EXPECT_FALSE(Entry("mnuListsCurrentDeSelAll")->isEnabled());
    EXPECT_EQ(TakeStatus(), (QStringList{u"Selected 2 addresses"_s, u"Cleared address selections"_s}));
}

TEST_F(ListsMenuTest, SelectsAllOrNoneOfThePendingList) {
    AddPending(Words("+pp@x.test"));
    Choose("mnuListsPendingSelAll");
    EXPECT_EQ(lists.SelectedCount(kPending), 1);
    Choose("mnuListsPendingDeSelAll");
    EXPECT_EQ(lists.SelectedCount(kPending), 0);
    EXPECT_EQ(TakeStatus(), (QStringList{u"Selected 1 address"_s, u"Cleared address selections"_s}));
}

TEST_F(ListsMenuTest, CopiesAndMovesToThePendingList) {
    lists.SelectRows(kAlphabetical, {0});
    Choose("mnuListsCurrentCopy_0");
    EXPECT_EQ(Pending(), Words("+aa@x.test"));
    Choose("mnuListsCurrentCopy_1");
    EXPECT_EQ(Pending(), Words("+aa@x.test +aa@x.test"));
    EXPECT_EQ(Current(), Words("bb@x.test"));
}

TEST_F(ListsMenuTest, CopiesAndMovesToTheCurrentList) {
    session.Prefs.ListSortBy = 0;
    AddPending(Words("-pp@x.test"));
    lists.SelectRows(kPending, {0});
    Choose("mnuListsPendingCopy_0");
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test pp@x.test"));
    Choose("mnuListsPendingCopy_1");
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test pp@x.test pp@x.test"));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListsMenuTest, TheCheckMarkFollowsTheOrderThatIsChosen) {
    menu.ShowSortOrder();
    EXPECT_EQ(CheckedOrders(), (std::vector<bool>{false, true}));
    const QSignalSpy changed(&lists.Open, &OpenList::SortOrderChanged);
    Choose("mnuSortOrder_0");
    EXPECT_EQ(CheckedOrders(), (std::vector<bool>{true, false}));
    EXPECT_EQ(session.Prefs.ListSortBy, 0);
    EXPECT_TRUE(View(kChronological)->isVisible());
    EXPECT_FALSE(View(kAlphabetical)->isVisible());
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ListsMenuTest, TheCheckMarkStaysWhenTheOperatorKeepsTheOrder) {
    menu.ShowSortOrder();
    OpenLists({{u"news"_s, test::Addresses(501)}});
    Choose("mnuListsCurrentSelAll");
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    Choose("mnuSortOrder_0");
    EXPECT_EQ(CheckedOrders(), (std::vector<bool>{false, true}));
    EXPECT_TRUE(View(kAlphabetical)->isVisible());
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 501);
}

TEST_F(ListsMenuTest, UndoAndRedoSayWhatTheyAreAbout) {
    EXPECT_EQ(Entry("mnuListsUndo")->text(), u"&Undo"_s);
    EXPECT_FALSE(Entry("mnuListsUndo")->isEnabled());
    EXPECT_FALSE(Entry("mnuListsRedo")->isEnabled());
    lists.SelectRows(kAlphabetical, {0});
    editing.DeleteSelected(kAlphabetical);
    TakeStatus();
    EXPECT_EQ(Entry("mnuListsUndo")->text(), u"&Undo Delete 1 Address"_s);
    Choose("mnuListsUndo");
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test"));
    EXPECT_EQ(Entry("mnuListsRedo")->text(), u"&Redo Delete 1 Address"_s);
    EXPECT_FALSE(Entry("mnuListsUndo")->isEnabled());
    Choose("mnuListsRedo");
    EXPECT_EQ(Current(), Words("bb@x.test"));
    EXPECT_EQ(TakeStatus(), (QStringList{u"Undone: Delete 1 Address"_s, u"Redone: Delete 1 Address"_s}));
}

TEST_F(ListsMenuTest, AnAndInTheTextOfAStepIsNoMnemonic) {
    {
        const ListStep step(lists.Undo, u"Import Q&A.txt"_s);
        lists.Open.Add(u"cc@x.test"_s);
    }
    EXPECT_EQ(Entry("mnuListsUndo")->text(), u"&Undo Import Q&&A.txt"_s);
}

TEST_F(ListsMenuTest, TheKeysOfUndoBelongToATextBoxThatHasTheFocus) {
    host.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host));
    host.addAction(menu.menuAction()); // as the menu bar of the main window does
    lists.SelectRows(kAlphabetical, {0});
    editing.DeleteSelected(kAlphabetical);
    Turn();
    auto *typed = Find<QLineEdit>("txtAddEmail");
    typed->setFocus();
    QTest::keyClicks(typed, u"cc"_s);
    QTest::keyClick(typed, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(typed->text(), QString());
    EXPECT_EQ(Current(), Words("bb@x.test"));
    View(kAlphabetical)->setFocus();
    QTest::keyClick(View(kAlphabetical), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test"));
    Turn();
    QTest::keyClick(View(kAlphabetical), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(Current(), Words("bb@x.test"));
}

TEST_F(ListsMenuTest, AStoredOrderThatCannotBeIsShownAsChronological) {
    session.Prefs.ListSortBy = 7;
    menu.ShowSortOrder();
    EXPECT_EQ(CheckedOrders(), (std::vector<bool>{true, false}));
}

} // namespace
} // namespace varlo
