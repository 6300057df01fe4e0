#include "compose/frmCompRecip.h"

#include "compose/WindowHelpers.h"

#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo {
namespace {

class frmCompRecipTest : public testing::Test {
protected:
    QListWidget *List() const { return test::Find<QListWidget>(&dialog, "lstRecipients"); }
    void ClickRow(int row) const {
        QTest::mouseClick(List()->viewport(), Qt::LeftButton, {},
                          List()->visualItemRect(List()->item(row)).center());
    }

    frmCompRecip dialog{{"news", "alpha", "members"}};
};

TEST_F(frmCompRecipTest, ListsTheNamesInTheirOrderWithNoneSelected) {
    EXPECT_EQ(dialog.windowTitle(), "Select Recipient Lists");
    EXPECT_EQ(test::Find<QPushButton>(&dialog, "cmdOK")->text(), "OK");
    EXPECT_EQ(List()->count(), 3);
    EXPECT_EQ(List()->item(0)->text(), "news");
    EXPECT_EQ(dialog.SelectedLists(), QStringList());
}

TEST_F(frmCompRecipTest, AClickPicksAListAndASecondOneDropsIt) {
    dialog.show();
    ClickRow(2);
    ClickRow(0);
    EXPECT_EQ(dialog.SelectedLists(), QStringList({"news", "members"}));
    ClickRow(2);
    EXPECT_EQ(dialog.SelectedLists(), QStringList({"news"}));
}

TEST_F(frmCompRecipTest, TheButtonOpensThreeCommands) {
    QStringList captions;
    for (const QAction *entry : test::Find<QPushButton>(&dialog, "cmdListFunctions")->menu()->actions())
        captions << entry->text();
    EXPECT_EQ(captions, QStringList({"Select &no lists", "Select &all lists", "&Invert list selection"}));
}

TEST_F(frmCompRecipTest, TheCommandsSelectAllNoneAndTheOthers) {
    test::Find<QAction>(&dialog, "mnuSelectAll")->trigger();
    EXPECT_EQ(dialog.SelectedLists(), QStringList({"news", "alpha", "members"}));
    List()->item(1)->setSelected(false);
    test::Find<QAction>(&dialog, "mnuSelectInvert")->trigger();
    EXPECT_EQ(dialog.SelectedLists(), QStringList({"alpha"}));
    test::Find<QAction>(&dialog, "mnuSelectNone")->trigger();
    EXPECT_EQ(dialog.SelectedLists(), QStringList());
}

TEST_F(frmCompRecipTest, TheCommandsAreTheMenuOfTheListToo) {
    auto *menu = test::Find<QMenu>(&dialog, "mnuListFunctions");
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    List()->setFocus();
    QContextMenuEvent press(QContextMenuEvent::Mouse, QPoint(5, 5), List()->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(List()->viewport(), &press);
    EXPECT_TRUE(menu->isVisible());
    menu->hide();
    QTest::keyClick(List(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(menu->isVisible());
    menu->hide();
}

TEST_F(frmCompRecipTest, EachRowHasItsWholeNameAsATooltip) {
    EXPECT_EQ(List()->item(1)->toolTip(), "alpha");
    EXPECT_EQ(List()->textElideMode(), Qt::ElideRight);
    const frmCompRecip marked({"<b>R&D"});
    EXPECT_EQ(test::Find<QListWidget>(&marked, "lstRecipients")->item(0)->toolTip(),
              "<html>&lt;b&gt;R&amp;D");
}

TEST_F(frmCompRecipTest, OkAccepts) {
    test::Find<QPushButton>(&dialog, "cmdOK")->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST_F(frmCompRecipTest, EnterOnTheSelectButtonIsOkay) {
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto *select = test::Find<QPushButton>(&dialog, "cmdListFunctions");
    select->setFocus();
    QTimer::singleShot(1000, &dialog, [] { // a menu that opens instead would wait for ever
        if (QWidget *menu = QApplication::activePopupWidget())
            menu->close();
    });
    QTest::keyClick(select, Qt::Key_Return);
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_FALSE(dialog.isVisible());
}

} // namespace
} // namespace varlo
