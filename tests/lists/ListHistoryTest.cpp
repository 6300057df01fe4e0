// What saves, and other changes of list files, leave in the history, and the way back from there.
#include "history/Timeline.h"
#include "history/Versions.h"
#include "history/frmHistory.h"
#include "lists/FramesFixture.h"
#include "lists/ListLibrary.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QTimer>
#include <QTreeWidget>

namespace varlo::test {
namespace {

class ListHistoryTest : public FramesFixture {
protected:
    ListHistoryTest() {
        OpenLists({{u"news"_s, Words("aa@x.test bb@x.test")}, {u"other"_s, Words("oo@x.test")}});
    }

    // "cause: entries" of each version.
    QStringList Kept(const QString &name = u"news"_s) const {
        QStringList kept;
        for (const History::Version &version : History::Versions(session, name))
            kept.append(version.Row.Cause + u": "_s + History::ReadVersion(version).join(u' '));
        return kept;
    }
    void DeleteFirst() {
        lists.SelectRows(lists.VisibleBox(), {0});
        editing.DeleteSelected(lists.VisibleBox());
        Turn();
    }
    // Opens the window by its menu entry, and does something in it.
    template<typename Action> void InHistory(Action action) {
        bool isDone = false;
        QTimer::singleShot(0, &host, [&] {
            auto *window = qobject_cast<frmHistory *>(QApplication::activeModalWidget());
            ASSERT_TRUE(window);
            isDone = true;
            action(*window);
            window->reject();
        });
        Find<QAction>("mnuListsHistory")->trigger();
        EXPECT_TRUE(isDone);
        Turn();
    }
    static void BringBackRow(frmHistory &window, int row) {
        auto *table = window.findChild<QTreeWidget *>(u"tblHistory"_s);
        table->setCurrentItem(table->topLevelItem(row));
        window.findChild<QPushButton *>(u"cmdHistoryBringBack"_s)->click();
    }
};

TEST_F(ListHistoryTest, ASaveIsCalledByWhatWasDoneSinceTheLastOne) {
    DeleteFirst();
    Click("cmdFileSave");
    lists.Open.Add(u"cc@x.test"_s);
    Turn();
    Click("cmdFileSave");
    EXPECT_EQ(Kept(),
              (QStringList{u"Delete 1 Address: aa@x.test bb@x.test"_s, u"Change of the Lists: bb@x.test"_s}));
    EXPECT_EQ(ListFolder(), Words("news.vlo other.vlo"));
}

TEST_F(ListHistoryTest, ADeletionThatWasSavedIsBroughtBackAsAnUnsavedChange) {
    DeleteFirst();
    Click("cmdFileSave");
    TakeStatus();
    InHistory([](frmHistory &window) { BringBackRow(window, 1); });
    EXPECT_EQ(Current(), Words("aa@x.test bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
    EXPECT_EQ(ReadListFile(u"news"_s), FileBytes(Words("bb@x.test")));
    EXPECT_EQ(TakeStatus(), QStringList(u"Brought back a version of [news]"_s));
    EXPECT_EQ(lists.Undo.UndoText(), u"Bring Back Version"_s);
    lists.Undo.Undo();
    EXPECT_EQ(Current(), Words("bb@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(ListHistoryTest, AVersionOfAnotherListOpensIt) {
    DeleteFirst();
    Click("cmdFileSave");
    Choose(u"other"_s);
    InHistory([](frmHistory &window) {
        auto *chooser = window.findChild<QComboBox *>(u"cmbHistoryList"_s);
        EXPECT_EQ(chooser->currentText(), u"other"_s);
        chooser->setCurrentIndex(0);
        Q_EMIT chooser->activated(0);
        BringBackRow(window, 1);
    });
    EXPECT_EQ(lists.Open.Name(), u"news"_s);
    EXPECT_EQ(Chosen(), u"news"_s);
    EXPECT_EQ(Current(), Words("aa@x.test bb@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(ListHistoryTest, ADeletedListIsBroughtBackWithItsFile) {
    profile.Boxes.Answers = {BoxAnswer::Yes};
    Click("cmdFileDelete");
    EXPECT_EQ(Names(), Words("other"));
    EXPECT_EQ(Kept(), QStringList(u"Delete List: aa@x.test bb@x.test"_s));
    InHistory([](frmHistory &window) {
        auto *chooser = window.findChild<QComboBox *>(u"cmbHistoryList"_s);
        chooser->setCurrentIndex(1);
        Q_EMIT chooser->activated(1);
        BringBackRow(window, 0);
    });
    EXPECT_EQ(lists.Open.Name(), u"news"_s);
    EXPECT_EQ(Names(), Words("news other"));
    EXPECT_EQ(ReadListFile(u"news"_s), FileBytes(Words("aa@x.test bb@x.test")));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(Kept(), QStringList(u"Delete List: aa@x.test bb@x.test"_s)) << "its history goes on";
}

TEST_F(ListHistoryTest, AListThatIsMadeAnewKeepsWhatItHeld) {
    profile.Boxes.Inputs = {u"news"_s};
    Click("cmdFileNew");
    EXPECT_EQ(Kept(), QStringList(u"New List: aa@x.test bb@x.test"_s));
    InHistory([](frmHistory &window) { BringBackRow(window, 1); });
    EXPECT_EQ(Current(), Words("aa@x.test bb@x.test"));
}

TEST_F(ListHistoryTest, ARenamedListTakesItsVersionsAlong) {
    DeleteFirst();
    Click("cmdFileSave");
    profile.Boxes.Inputs = {u"..."_s};
    Click("cmdFileRename");
    EXPECT_EQ(lists.Open.Name(), u"..."_s);
    EXPECT_EQ(Kept(u"..."_s), QStringList(u"Delete 1 Address: aa@x.test bb@x.test"_s));
    EXPECT_EQ(Kept(), QStringList());
}

TEST_F(ListHistoryTest, WhatWasKeptUnsavedCanBeBroughtBackFromThereToo) {
    profile.Write(u"lists/news.vlo.unsaved"_s, "uu@x.test\r\n");
    InHistory([](frmHistory &window) { BringBackRow(window, 0); });
    EXPECT_EQ(Current(), Words("uu@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(ListHistoryTest, ABackupThatIsTooLongComesBackAsFarAsItFits) {
    const QStringList tooMany = Addresses(EntryListModel::kMostEntries + 5);
    profile.Write(u"lists/news.vlo.bak"_s, FileBytes(tooMany));
    InHistory([](frmHistory &window) { BringBackRow(window, 1); });
    EXPECT_EQ(Current().size(), EntryListModel::kMostEntries);
    EXPECT_EQ(profile.Read(u"lists/news.vlo.bak"_s), FileBytes(tooMany)) << "and stays where it is";
    EXPECT_TRUE(profile.Boxes.Shown.empty());
}

// The lists are not for editing meanwhile: what a mail check brings is processed when the window has closed.
TEST_F(ListHistoryTest, WhileTheWindowIsOpenNothingIsProcessed) {
    AddPending(Words("+pp@x.test"));
    InHistory([this](frmHistory &) {
        owner.page.ProcessWhenFree();
        EXPECT_EQ(Pending(), Words("+pp@x.test"));
    });
    Turn();
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(Current(), Words("aa@x.test bb@x.test pp@x.test"));
}

} // namespace
} // namespace varlo::test
