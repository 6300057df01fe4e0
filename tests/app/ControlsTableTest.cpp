// Which controls of the main window are enabled when, row by row, on the real window.
#include "app/frmMain.h"
#include "core/Literals.h"
#include "support/FakeMailer.h"
#include "support/TestProfile.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPushButton>
#include <QtTest>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

// The rows of the table: what they ask for, and the controls that they enable.
enum Row { kLists, kOpenList, kTypedText, kCurrent, kCurrentSelection, kPendingEntries, kPendingSelection };

const std::map<Row, std::vector<const char *>> kTable{
    {kLists, {"cmbMList"}},
    {kOpenList,
     {"cmdFileRename", "txtAddEmail", "cmdAutoAdd", "cmdCapture", "chkInstantAdd", "mnuListsImport",
      "mnuListsCompare"}},
    {kTypedText, {"cmdEmailAdd_0", "cmdEmailAdd_1", "cmdEmailValidate"}},
    {kCurrent,
     {"mnuSort", "cmdListSort", "cmdListFind", "lstEmailList_0", "lstEmailList_1", "mnuListsCurrent"}},
    {kCurrentSelection,
     {"cmdListEdit_0", "cmdListDelete_0", "mnuListsCurrentCopy_0", "mnuListsCurrentCopy_1",
      "mnuListsCurrentDeSelAll"}},
    {kPendingEntries, {"lstEmailList_2", "cmdCapturesAdd", "mnuListsPending"}},
    {kPendingSelection,
     {"cmdListEdit_1", "cmdListDelete_1", "cmdListSwap", "mnuListsPendingCopy_0", "mnuListsPendingCopy_1",
      "mnuListsPendingDeSelAll"}}};

class ControlsTableTest : public testing::Test {
protected:
    ~ControlsTableTest() override { profile.session.AppExiting = true; }

    void Load() { window.Form_Load(); }
    template<typename Control> Control *Find(const char *name) const {
        auto *control = window.findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    bool IsEnabled(const char *name) const {
        if (const auto *entry = window.findChild<QAction *>(QString::fromLatin1(name)))
            return entry->isEnabled();
        return Find<QWidget>(name)->isEnabled();
    }
    // The event turn in which the controls follow the lists.
    static void Turn() { QCoreApplication::sendPostedEvents(); }
    void Click(const char *button) const {
        Turn();
        QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton);
    }
    void Choose(const char *entry) const {
        Turn();
        Find<QAction>(entry)->trigger();
    }
    void TypeAndAdd(const char *address) const {
        QTest::keyClicks(Find<QLineEdit>("txtAddEmail"), QString::fromLatin1(address));
        Click("cmdEmailAdd_0");
    }
    void ExpectRows(const std::set<Row> &holding) const {
        Turn();
        for (const auto &[row, controls] : kTable)
            for (const char *control : controls)
                EXPECT_EQ(IsEnabled(control), holding.contains(row)) << control;
        for (const char *always : {"cmdFileNew", "cmdFileDelete", "cmdFileSave"})
            EXPECT_TRUE(IsEnabled(always)) << always;
    }
    QString Text(const char *label) const {
        Turn();
        return Find<QLabel>(label)->text();
    }

    TestProfile profile;
    FakeMailers mailers;
    frmMain window{profile.session, mailers.Maker()};
};

TEST_F(ControlsTableTest, WithoutListsNothingIsEnabled) {
    Load();
    ExpectRows({});
    EXPECT_EQ(Text("lblStatusCurrent"), u"0 Current"_s);
    EXPECT_EQ(Text("lblStatusPending"), u"0 Pending"_s);
}

TEST_F(ControlsTableTest, AnOpenListWithoutEntries) {
    profile.Write(u"lists/news.vlo"_s, "");
    Load();
    ExpectRows({kLists, kOpenList});
}

TEST_F(ControlsTableTest, TypedText) {
    profile.Write(u"lists/news.vlo"_s, "");
    Load();
    QTest::keyClicks(Find<QLineEdit>("txtAddEmail"), u"a"_s);
    ExpectRows({kLists, kOpenList, kTypedText});
    Find<QLineEdit>("txtAddEmail")->clear();
    ExpectRows({kLists, kOpenList});
}

TEST_F(ControlsTableTest, CurrentEntriesThenTheirSelection) {
    profile.Write(u"lists/news.vlo"_s, "a@x.test\r\nb@x.test\r\n");
    Load();
    ExpectRows({kLists, kOpenList, kCurrent});
    EXPECT_EQ(Text("lblStatusCurrent"), u"2 Current"_s);
    Choose("mnuListsCurrentSelAll");
    ExpectRows({kLists, kOpenList, kCurrent, kCurrentSelection});
    Choose("mnuListsCurrentDeSelAll");
    ExpectRows({kLists, kOpenList, kCurrent});
}

TEST_F(ControlsTableTest, AClickSelects) {
    profile.Write(u"lists/news.vlo"_s, "a@x.test\r\n");
    Load();
    auto *view = Find<QListView>("lstEmailList_1");
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier,
                      view->visualRect(view->model()->index(0, 0)).center());
    ExpectRows({kLists, kOpenList, kCurrent, kCurrentSelection});
}

TEST_F(ControlsTableTest, PendingEntriesThenTheirSelection) {
    profile.Write(u"lists/news.vlo"_s, "");
    Load();
    TypeAndAdd("aa@x.test");
    ExpectRows({kLists, kOpenList, kPendingEntries});
    EXPECT_EQ(Text("lblStatusPending"), u"1 Pending"_s);
    Choose("mnuListsPendingSelAll");
    ExpectRows({kLists, kOpenList, kPendingEntries, kPendingSelection});
    Click("cmdListDelete_1");
    ExpectRows({kLists, kOpenList});
}

TEST_F(ControlsTableTest, ProcessingMovesTheRequestsToTheCurrentList) {
    profile.Write(u"lists/news.vlo"_s, "");
    Load();
    TypeAndAdd("aa@x.test");
    Click("cmdCapturesAdd");
    ExpectRows({kLists, kOpenList, kCurrent});
    EXPECT_EQ(Text("lblStatusCurrent"), u"1 Current"_s);
    EXPECT_EQ(Text("lblStatusPending"), u"0 Pending"_s);
}

TEST_F(ControlsTableTest, DeletingTheLastListDisablesAllButThePendingList) {
    profile.Write(u"lists/news.vlo"_s, "a@x.test\r\n");
    Load();
    TypeAndAdd("aa@x.test");
    Choose("mnuListsCurrentSelAll");
    profile.Boxes.Answers = {BoxAnswer::Yes};
    Click("cmdFileDelete");
    // The alphabetical box keeps its entry and its selection; it can be seen and not be touched.
    ExpectRows({kPendingEntries, kCurrentSelection});
    EXPECT_EQ(Text("lblStatusCurrent"), u"0 Current"_s);
}

TEST_F(ControlsTableTest, AnotherOrderLooksAtTheSelectionOfTheOtherBox) {
    profile.Write(u"lists/news.vlo"_s, "a@x.test\r\n");
    Load();
    Choose("mnuListsCurrentSelAll");
    Choose("mnuSortOrder_0");
    ExpectRows({kLists, kOpenList, kCurrent, kCurrentSelection});
    Choose("mnuListsCurrentDeSelAll");
    Choose("mnuSortOrder_1");
    ExpectRows({kLists, kOpenList, kCurrent});
}

} // namespace
} // namespace varlo::test
