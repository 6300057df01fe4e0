// The list boxes of the Current List frame, and the keys that work on them.
#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/CurrentListFrame.h"
#include "lists/FramesFixture.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::FileBytes;
using test::Words;

const QString kNews = u"news"_s;

class CurrentListBoxTest : public test::FramesFixture {
protected:
    void Input(const QString &text) { profile.Boxes.Inputs.push_back(text); }
};

TEST_F(CurrentListBoxTest, OnlyTheOrderInForceIsShown) {
    OpenLists({{kNews, Words("aa@x.test")}});
    for (int order : {0, 1, 0}) {
        session.Prefs.ListSortBy = order;
        current.ShowSortOrder();
        EXPECT_EQ(View(0)->isVisible(), order == 0);
        EXPECT_EQ(View(1)->isVisible(), order == 1);
    }
}

TEST_F(CurrentListBoxTest, TheSortButtonOnlyAsksForItsMenuBelowIt) {
    OpenLists({{kNews, Words("aa@x.test")}});
    const QSignalSpy wanted(&current, &CurrentListFrame::SortMenuWanted);
    Click("cmdListSort");
    const auto *button = Find<QWidget>("cmdListSort");
    ASSERT_EQ(wanted.count(), 1);
    EXPECT_EQ(wanted[0][0].toPoint(), button->mapToGlobal(QPoint(0, button->height())));
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(CurrentListBoxTest, EditSearchAndDeleteWorkOnTheVisibleBox) {
    OpenLists({{kNews, Words("bb@x.test aa@x.test")}});
    session.Prefs.ListSortBy = 1;
    current.ShowSortOrder();
    Input(u"aa@"_s);
    Click("cmdListFind");
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("aa@x.test"));
    Input(u"zz@x.test"_s);
    Click("cmdListEdit_0");
    EXPECT_EQ(Current(), Words("bb@x.test zz@x.test"));
    Click("cmdListDelete_0");
    EXPECT_EQ(Current(), Words("bb@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Deleted [zz@x.test]"_s);
}

TEST_F(CurrentListBoxTest, AClickInTheListTellsTheSelection) {
    OpenLists({{kNews, Words("bb@x.test aa@x.test cc@x.test")}});
    ClickRow(kAlphabetical, 0);
    ClickRow(kAlphabetical, 2, Qt::ShiftModifier);
    EXPECT_EQ(TakeStatus(), (QStringList{u"Selected 1 address"_s, u"Selected 3 addresses"_s}));
    EXPECT_TRUE(IsEnabled("cmdListDelete_0"));
}

TEST_F(CurrentListBoxTest, KeysEditDeleteSaveAndSearch) {
    OpenLists({{kNews, Words("bb@x.test aa@x.test")}});
    ClickRow(kAlphabetical, 0);
    Input(u"zz@x.test"_s);
    QTest::keyClick(View(kAlphabetical), Qt::Key_F2);
    QTest::keyClick(View(kAlphabetical), Qt::Key_Delete);
    EXPECT_EQ(Current(), Words("bb@x.test"));
    QApplication::setActiveWindow(&host);
    QTest::keySequence(&host, QKeySequence::Save);
    EXPECT_EQ(ReadListFile(kNews), FileBytes(Words("bb@x.test")));
    Input(u"bb"_s);
    QTest::keySequence(&host, QKeySequence::Find);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("bb@x.test"));
}

TEST_F(CurrentListBoxTest, TheRightButtonAsksForTheMenuOfTheVisibleBox) {
    OpenLists({{kNews, Words("bb@x.test")}});
    const QSignalSpy wanted(&current, &CurrentListFrame::ContextMenuWanted);
    for (int box : {kChronological, kAlphabetical}) {
        session.Prefs.ListSortBy = box;
        current.ShowSortOrder();
        QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(3, 3), QPoint(70, 80));
        QApplication::sendEvent(View(box)->viewport(), &press);
        EXPECT_EQ(wanted.last()[0].toPoint(), QPoint(70, 80));
    }
    EXPECT_EQ(wanted.count(), 2);
}

TEST_F(CurrentListBoxTest, F3ShowsTheNextMatchAndWithShiftThePreviousOne) {
    OpenLists({{kNews, Words("aa@x.test bb@x.test cc@x.test")}});
    QApplication::setActiveWindow(&host);
    Input(u"@x"_s);
    Click("cmdListFind");
    EXPECT_EQ(View(kAlphabetical)->currentIndex().row(), 0);
    QTest::keyClick(&host, Qt::Key_F3);
    EXPECT_EQ(View(kAlphabetical)->currentIndex().row(), 1);
    QTest::keyClick(&host, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(View(kAlphabetical)->currentIndex().row(), 0);
}

} // namespace
} // namespace varlo
