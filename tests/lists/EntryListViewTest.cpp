#include "lists/EntryListView.h"

#include "core/Literals.h"
#include "lists/ListsFixture.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class EntryListViewTest : public test::ListsFixture {
protected:
    EntryListViewTest() {
        AddPending(Words("+aa@x.test -bb@x.test +cc@x.test"));
        view.resize(300, 200);
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
    }
    void Click(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::mouseClick(view.viewport(), Qt::LeftButton, modifiers,
                          view.visualRect(view.model()->index(row, 0)).center());
    }

    EntryListView view{lists, kPending, u"Pending list"_s};
    QSignalSpy touched{&view, &EntryListView::SelectionTouched};
    QSignalSpy deleteWanted{&view, &EntryListView::DeleteWanted};
    QSignalSpy editWanted{&view, &EntryListView::EditWanted};
    QSignalSpy menuWanted{&view, &EntryListView::MenuWanted};
};

TEST_F(EntryListViewTest, IsNamedAfterItsBox) {
    EXPECT_EQ(view.objectName(), u"lstEmailList_2"_s);
    EXPECT_EQ(view.accessibleName(), u"Pending list"_s);
}

TEST_F(EntryListViewTest, SharesTheSelectionOfTheStore) {
    Click(1);
    EXPECT_EQ(lists.SelectedEntries(kPending), Words("-bb@x.test"));
    lists.SelectRows(kPending, {0, 2});
    EXPECT_EQ(view.selectionModel()->selectedIndexes().size(), 2);
}

TEST_F(EntryListViewTest, ClicksSelectOneARangeOrSingleEntries) {
    Click(0);
    EXPECT_EQ(lists.SelectedRows(kPending), (QList<int>{0}));
    Click(2, Qt::ShiftModifier);
    EXPECT_EQ(lists.SelectedRows(kPending), (QList<int>{0, 1, 2}));
    Click(1, Qt::ControlModifier);
    EXPECT_EQ(lists.SelectedRows(kPending), (QList<int>{0, 2}));
    EXPECT_EQ(touched.count(), 3);
}

TEST_F(EntryListViewTest, KeysThatSelectAreTold) {
    Click(0);
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(lists.SelectedCount(kPending), 3);
    EXPECT_EQ(touched.count(), 3);
    QTest::keyClick(&view, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(touched.count(), 3) << "nothing changed";
}

TEST_F(EntryListViewTest, DeleteAndF2AskAndChangeNothingThemselves) {
    Click(0);
    QTest::keyClick(&view, Qt::Key_Delete);
    QTest::keyClick(&view, Qt::Key_F2);
    EXPECT_EQ(deleteWanted.count(), 1);
    EXPECT_EQ(editWanted.count(), 1);
    QTest::keyClick(&view, Qt::Key_F2, Qt::ShiftModifier);
    EXPECT_EQ(editWanted.count(), 1);
    EXPECT_EQ(Pending(), Words("+aa@x.test -bb@x.test +cc@x.test"));
}

TEST_F(EntryListViewTest, ADoubleClickOpensNoEditor) {
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                       view.visualRect(view.model()->index(0, 0)).center());
    EXPECT_EQ(view.findChild<QLineEdit *>(), nullptr);
}

TEST_F(EntryListViewTest, OnlyTheRightButtonAsksForTheMenu) {
    for (Qt::MouseButton button : {Qt::LeftButton, Qt::MiddleButton})
        QTest::mouseClick(view.viewport(), button, Qt::NoModifier, QPoint(5, 5));
    EXPECT_EQ(menuWanted.count(), 0);
    QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(50, 60));
    QApplication::sendEvent(view.viewport(), &press);
    ASSERT_EQ(menuWanted.count(), 1);
    EXPECT_EQ(menuWanted[0][0].toPoint(), QPoint(50, 60));
}

TEST_F(EntryListViewTest, TheRightButtonOnASelectionKeepsIt) {
    lists.SelectRows(kPending, {0, 2});
    QTest::mouseClick(view.viewport(), Qt::RightButton, Qt::NoModifier,
                      view.visualRect(view.model()->index(2, 0)).center());
    EXPECT_EQ(lists.SelectedRows(kPending), (QList<int>{0, 2}));
    EXPECT_EQ(touched.count(), 0);
}

TEST_F(EntryListViewTest, TheRightButtonOnAnEmptyListIsHarmless) {
    lists.Box(kPending).Model().SetEntries({});
    QTest::mouseClick(view.viewport(), Qt::RightButton, Qt::NoModifier, QPoint(5, 5));
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(50, 60));
    QApplication::sendEvent(&view, &key);
    EXPECT_EQ(menuWanted.count(), 1);
    EXPECT_EQ(lists.SelectedCount(kPending), 0);
}

TEST_F(EntryListViewTest, MarkupIsShownAsItStands) {
    lists.Box(kPending).Model().SetEntries({u"aa"_s, u"<b>aa</b>"_s});
    view.setUniformItemSizes(false);
    EXPECT_EQ(view.model()->index(1, 0).data().toString(), u"<b>aa</b>"_s);
    const auto width = [this](int row) { return view.sizeHintForIndex(view.model()->index(row, 0)).width(); };
    const auto advance = [this](const char *text) {
        return view.fontMetrics().horizontalAdvance(QString::fromLatin1(text));
    };
    EXPECT_NEAR(width(1) - width(0), advance("<b>aa</b>") - advance("aa"), 2);
    EXPECT_EQ(view.model()->index(1, 0).data(Qt::ToolTipRole), QVariant());
}

TEST_F(EntryListViewTest, ShowsTheEndOfTheMostEntries) {
    lists.Box(kPending).Model().SetEntries(test::Addresses(EntryListModel::kMostEntries));
    view.scrollToBottom();
    const QModelIndex last = view.indexAt(QPoint(5, view.viewport()->height() - 25));
    EXPECT_GE(last.row(), EntryListModel::kMostEntries - 3);
}

TEST_F(EntryListViewTest, CopyTakesTheWholeSelectionOneALine) {
    QGuiApplication::clipboard()->setText(u"before"_s);
    QTest::keySequence(&view, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_s) << "nothing is selected";
    lists.SelectRows(kPending, {0, 2});
    QTest::keySequence(&view, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"+aa@x.test\n+cc@x.test"_s);
}

TEST_F(EntryListViewTest, ARightClickBesideASelectionOfManyKeepsIt) {
    lists.SelectRows(kPending, {0, 1});
    const QPoint third = view.visualRect(view.model()->index(2, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::RightButton, {}, third);
    EXPECT_EQ(lists.SelectedRows(kPending), (QList<int>{0, 1}));
}

// The menu of the keyboard belongs to the row that it works on, also when it is out of sight.
TEST_F(EntryListViewTest, TheKeysForTheMenuOpenItAtTheCurrentRow) {
    AddPending(test::Addresses(200, u"+more"_s));
    view.setCurrentIndex(view.model()->index(150, 0));
    view.verticalScrollBar()->setValue(0);
    const auto place = [this] {
        return view.viewport()->mapToGlobal(view.visualRect(view.currentIndex()).bottomLeft());
    };
    QTest::keyClick(&view, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_EQ(menuWanted.count(), 1);
    EXPECT_EQ(menuWanted[0][0].toPoint(), place());
    EXPECT_TRUE(view.viewport()->rect().contains(view.visualRect(view.currentIndex())));
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(50, 60));
    QApplication::sendEvent(&view, &key);
    ASSERT_EQ(menuWanted.count(), 2);
    EXPECT_EQ(menuWanted[1][0].toPoint(), place());
    QTest::keyClick(&view, Qt::Key_F10);
    EXPECT_EQ(menuWanted.count(), 2) << "F10 alone is the menu bar's";
}

TEST_F(EntryListViewTest, AnEmptyBoxShowsItsHintAndSaysIt) {
    const auto picture = [this] { return view.grab().toImage(); };
    view.SetHint(u"nothing here"_s);
    EXPECT_EQ(view.accessibleDescription(), QString());
    lists.Box(kPending).Model().SetEntries({});
    EXPECT_EQ(view.accessibleDescription(), u"nothing here"_s);
    const QImage hinted = picture();
    view.SetHint(QString());
    EXPECT_NE(picture(), hinted);
    view.SetHint(u"nothing here"_s);
    lists.Box(kPending).Model().Add(u"+aa@x.test"_s);
    EXPECT_EQ(view.accessibleDescription(), QString());
    lists.Box(kPending).Model().Remove(0);
    EXPECT_EQ(view.accessibleDescription(), u"nothing here"_s);
    EXPECT_EQ(view.model()->rowCount(), 0) << "a hint is no entry";
}

} // namespace
} // namespace varlo
