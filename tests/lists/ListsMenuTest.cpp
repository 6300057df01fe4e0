#include "lists/ListsMenu.h"

#include "lists/FramesFixture.h"

#include <QAction>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class ListsMenuTest : public test::FramesFixture {
protected:
    ListsMenuTest() { OpenLists({{QStringLiteral("news"), Words("bb@x.test aa@x.test")}}); }

    QAction *Entry(const char *name) { return Find<QAction>(name); }
    void Choose(const char *entry) {
        ASSERT_TRUE(Entry(entry)->isEnabled()) << entry;
        Entry(entry)->trigger();
    }
    // The captions of a menu, without mnemonics; a separator is "-".
    static QStringList Captions(const QMenu *menu) {
        QStringList captions;
        for (const QAction *entry : menu->actions())
            captions << (entry->isSeparator() ? QStringLiteral("-") : entry->text().remove(u'&'));
        return captions;
    }
    std::vector<bool> CheckedOrders() {
        return {Entry("mnuSortOrder_0")->isChecked(), Entry("mnuSortOrder_1")->isChecked()};
    }
};

TEST_F(ListsMenuTest, HasTheTwoListsWithTheirEntries) {
    EXPECT_EQ(menu.objectName(), QStringLiteral("mnuLists"));
    EXPECT_EQ(menu.title().remove(u'&'), QStringLiteral("Lists"));
    EXPECT_EQ(Captions(&menu), (QStringList{QStringLiteral("Current List"), QStringLiteral("Pending List")}));
    EXPECT_EQ(Captions(menu.CurrentMenu()),
              (QStringList{QStringLiteral("Copy to Pending List"), QStringLiteral("Move to Pending List"),
                           QStringLiteral("-"), QStringLiteral("Sort"), QStringLiteral("-"),
                           QStringLiteral("Select All"), QStringLiteral("Select None")}));
    EXPECT_EQ(Captions(menu.SortMenu()),
              (QStringList{QStringLiteral("Chronological"), QStringLiteral("Alphabetical")}));
    EXPECT_EQ(
        Captions(menu.PendingMenu()),
        (QStringList{QStringLiteral("Copy to Current List"), QStringLiteral("Move to Current List"),
                     QStringLiteral("-"), QStringLiteral("Select All"), QStringLiteral("Select None")}));
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
    EXPECT_EQ(TakeStatus(), (QStringList{QStringLiteral("Selected 2 addresses"),
                                         QStringLiteral("Cleared address selections")}));
}

TEST_F(ListsMenuTest, SelectsAllOrNoneOfThePendingList) {
    AddPending(Words("+pp@x.test"));
    lists.UpdateControls();
    Choose("mnuListsPendingSelAll");
    EXPECT_EQ(lists.SelectedCount(kPending), 1);
    Choose("mnuListsPendingDeSelAll");
    EXPECT_EQ(lists.SelectedCount(kPending), 0);
    EXPECT_EQ(TakeStatus(), (QStringList{QStringLiteral("Selected 1 address"),
                                         QStringLiteral("Cleared address selections")}));
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
    EXPECT_TRUE(lists.ListSaved);
}

TEST_F(ListsMenuTest, TheCheckMarkFollowsTheOrderThatIsChosen) {
    menu.ShowSortOrder();
    EXPECT_EQ(CheckedOrders(), (std::vector<bool>{false, true}));
    const QSignalSpy changed(&menu, &ListsMenu::SortOrderChanged);
    Choose("mnuSortOrder_0");
    EXPECT_EQ(CheckedOrders(), (std::vector<bool>{true, false}));
    EXPECT_EQ(session.Prefs.ListSortBy, 0);
    EXPECT_TRUE(View(kChronological)->isVisible());
    EXPECT_FALSE(View(kAlphabetical)->isVisible());
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ListsMenuTest, TheCheckMarkStaysWhenTheOperatorKeepsTheOrder) {
    menu.ShowSortOrder();
    OpenLists({{QStringLiteral("news"), test::Addresses(501)}});
    Choose("mnuListsCurrentSelAll");
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    Choose("mnuSortOrder_0");
    EXPECT_EQ(CheckedOrders(), (std::vector<bool>{false, true}));
    EXPECT_TRUE(View(kAlphabetical)->isVisible());
    EXPECT_EQ(lists.SelectedCount(kAlphabetical), 501);
}

TEST_F(ListsMenuTest, AStoredOrderThatCannotBeIsShownAsChronological) {
    session.Prefs.ListSortBy = 7;
    menu.ShowSortOrder();
    EXPECT_EQ(CheckedOrders(), (std::vector<bool>{true, false}));
}

} // namespace
} // namespace varlo
