// The box above the open list, which narrows what is shown of it.
#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/EntryListView.h"
#include "lists/FramesFixture.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QTest>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class FindAsYouTypeTest : public test::FramesFixture {
protected:
    FindAsYouTypeTest() {
        host.resize(700, 500);
        owner.page.resize(700, 500);
        host.show();
        lists.Open.SetSortOrder(0);
        OpenLists({{u"news"_s, Words("ann@x.test bob@x.test joann@x.test cy@x.test")},
                   {u"other"_s, Words("oo@x.test")}});
    }
    QStringList Shown() {
        QStringList texts;
        const QAbstractItemModel *model = View(lists.VisibleBox())->model();
        for (int row = 0; row < model->rowCount(); ++row)
            texts << model->index(row, 0).data().toString();
        return texts;
    }
    QLineEdit *FindBox() { return Find<QLineEdit>("txtFind"); }
    void Look(const char *text) { QTest::keyClicks(FindBox(), QString::fromLatin1(text)); }
    void PressEsc() {
        QApplication::setActiveWindow(&host);
        FindBox()->setFocus();
        QTest::keyClick(FindBox(), Qt::Key_Escape);
    }
    QString CountText() { return Find<QLabel>("lblFound")->text(); }
};

TEST_F(FindAsYouTypeTest, EachKeyNarrowsTheList) {
    EXPECT_TRUE(Find<QLabel>("lblFound")->isHidden());
    Look("nn");
    EXPECT_EQ(Shown(), Words("ann@x.test joann@x.test"));
    EXPECT_EQ(CountText(), u"2 of 4"_s);
    EXPECT_FALSE(Find<QLabel>("lblFound")->isHidden());
    Look("q");
    EXPECT_EQ(Shown(), QStringList());
    EXPECT_EQ(CountText(), u"0 of 4"_s);
    EXPECT_EQ(View(kChronological)->accessibleDescription(),
              u"No address on this list contains that text."_s);
    EXPECT_EQ(Current().size(), 4);
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_TRUE(TakeStatus().isEmpty());
}

TEST_F(FindAsYouTypeTest, EscShowsEverythingAgain) {
    Look("ann");
    PressEsc();
    EXPECT_EQ(FindBox()->text(), QString());
    EXPECT_EQ(Shown(), Current());
    EXPECT_TRUE(Find<QLabel>("lblFound")->isHidden());
    EXPECT_EQ(View(kChronological)->accessibleDescription(), QString());
}

TEST_F(FindAsYouTypeTest, WhatIsSelectedStaysSelected) {
    lists.SelectRows(kChronological, {1, 2});
    Look("ann");
    EXPECT_EQ(lists.SelectedRows(kChronological), (QList<int>{1, 2}));
    EXPECT_EQ(CountText(), u"2 of 4, 1 selected not shown"_s);
    EXPECT_EQ(View(kChronological)->selectionModel()->selectedIndexes().size(), 1);
    PressEsc();
    EXPECT_EQ(lists.SelectedRows(kChronological), (QList<int>{1, 2}));
    EXPECT_EQ(View(kChronological)->selectionModel(), &lists.Selection(kChronological));
}

TEST_F(FindAsYouTypeTest, WhatIsSelectedAmongTheFoundIsTheSelection) {
    lists.SelectRows(kChronological, {1});
    Look("ann");
    ClickRow(kChronological, 1);
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("joann@x.test")) << "and nothing out of sight";
    Turn();
    EXPECT_EQ(CountText(), u"2 of 4"_s);
    ClickRow(kChronological, 0, Qt::ControlModifier);
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("ann@x.test joann@x.test"));
    QTest::keyClick(View(kChronological), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"ann@x.test\njoann@x.test"_s);
}

TEST_F(FindAsYouTypeTest, ASelectionMadeElsewhereIsShownAmongTheFound) {
    Look("ann");
    lists.SelectRows(kChronological, {0, 3});
    EXPECT_EQ(View(kChronological)->selectionModel()->selectedIndexes().size(), 1);
    Turn();
    EXPECT_EQ(CountText(), u"2 of 4, 1 selected not shown"_s);
}

TEST_F(FindAsYouTypeTest, DeletingAmongTheFoundDeletesFromTheList) {
    Look("ann");
    ClickRow(kChronological, 0);
    QTest::keyClick(View(kChronological), Qt::Key_Delete);
    EXPECT_EQ(Current(), Words("bob@x.test joann@x.test cy@x.test"));
    Turn();
    EXPECT_EQ(Shown(), Words("joann@x.test"));
    EXPECT_EQ(CountText(), u"1 of 3"_s);
}

TEST_F(FindAsYouTypeTest, RequestsThatAreProcessedMeanwhileAreFoundToo) {
    Look("ann");
    AddPending(Words("+hanna@x.test +dan@x.test -ann@x.test"));
    processing.Run();
    Turn();
    EXPECT_EQ(Shown(), Words("joann@x.test hanna@x.test"));
}

TEST_F(FindAsYouTypeTest, TheOtherOrderIsNarrowedToo) {
    Look("ann");
    editing.ChangeSortOrder(1);
    Turn();
    EXPECT_EQ(Shown(), Words("ann@x.test joann@x.test"));
    ClickRow(kAlphabetical, 1);
    EXPECT_EQ(lists.SelectedEntries(kAlphabetical), Words("joann@x.test"));
    PressEsc();
    EXPECT_EQ(Shown(), Sorted());
}

TEST_F(FindAsYouTypeTest, AnotherListIsShownWhole) {
    Look("ann");
    Choose(u"other"_s);
    EXPECT_EQ(FindBox()->text(), QString());
    EXPECT_EQ(Shown(), Words("oo@x.test"));
}

TEST_F(FindAsYouTypeTest, SearchLooksAmongAllAddresses) {
    Look("cy");
    profile.Boxes.Inputs.push_back(u"bob"_s);
    Click("cmdListFind");
    EXPECT_EQ(Shown(), Current());
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("bob@x.test"));
}

TEST_F(FindAsYouTypeTest, KeysLeadToTheBoxAndFromThereToTheFound) {
    QApplication::setActiveWindow(&host);
    View(kChronological)->setFocus();
    QTest::keyClick(View(kChronological), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(FindBox()->hasFocus());
    Look("ann");
    QTest::keyClick(FindBox(), Qt::Key_Down);
    EXPECT_TRUE(View(kChronological)->hasFocus());
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("ann@x.test"));
    QTest::keyClick(View(kChronological), Qt::Key_Down);
    EXPECT_EQ(lists.SelectedEntries(kChronological), Words("joann@x.test"));
}

TEST_F(FindAsYouTypeTest, AnEmptyListHasNothingToFind) {
    editing.SelectAll(kChronological);
    Click("cmdListDelete_0");
    Turn();
    EXPECT_FALSE(FindBox()->isEnabled());
}

TEST_F(FindAsYouTypeTest, TheTextThatWasLookedForIsBold) {
    const auto picture = [this] { return View(kChronological)->grab().toImage(); };
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&host));
    Look("test"); // all rows: what differs is how they are painted
    ASSERT_EQ(Shown(), Current());
    const QImage bold = picture();
    PressEsc();
    EXPECT_NE(bold, picture());
}

TEST_F(FindAsYouTypeTest, AKeyTouchesOnlyTheBoxThatIsShown) {
    Look("ann");
    EXPECT_EQ(View(kAlphabetical)->model(), &lists.lstEmailList(kAlphabetical));
}

} // namespace
} // namespace varlo
