#include "lists/ListUndo.h"

#include "core/Preferences.h"
#include "core/RuntimeError.h"
#include "lists/ListsFixture.h"
#include "lists/ManualAdd.h"
#include "lists/PendingProcessing.h"
#include "support/ErrorOf.h"

#include <QCoreApplication>

namespace varlo::test {
namespace {

using Transfer = ListEditing::Transfer;

class ListUndoTest : public ListsFixture {
protected:
    ListUndoTest() { OpenList(u"news"_s, Words("cc@x.test aa@x.test bb@x.test aa@x.test")); }

    struct Contents {
        QStringList Current;
        QStringList Sorted;
        QStringList Pending;
        bool IsSaved;
        bool operator==(const Contents &) const = default;
    };
    Contents Now() const { return {Current(), Sorted(), Pending(), lists.Open.IsSaved()}; }
    // The event turn in which a change that nobody named becomes a step.
    static void Turn() { QCoreApplication::sendPostedEvents(); }
    // Goes back over one step of this name and forth again, and looks at what is there.
    void ExpectOneStep(const char *text, const Contents &before) {
        const Contents after = Now();
        EXPECT_EQ(lists.Undo.UndoText(), QString::fromLatin1(text));
        lists.Undo.Undo();
        EXPECT_TRUE(Now() == before) << text;
        EXPECT_EQ(lists.Undo.RedoText(), QString::fromLatin1(text));
        lists.Undo.Redo();
        EXPECT_TRUE(Now() == after) << text;
        EXPECT_EQ(lists.Undo.RedoText(), QString());
    }

    ListUndo &undo = lists.Undo;
};

TEST_F(ListUndoTest, WithoutAChangeThereIsNothingToUndo) {
    EXPECT_EQ(undo.UndoText(), QString());
    undo.Undo();
    undo.Redo();
    EXPECT_EQ(Current(), Words("cc@x.test aa@x.test bb@x.test aa@x.test"));
}

TEST_F(ListUndoTest, DeletedRowsComeBackWhereTheyStood) {
    const Contents before = Now();
    lists.SelectRows(kAlphabetical, {0, 2});
    editing.DeleteSelected(kAlphabetical);
    EXPECT_EQ(Current(), Words("cc@x.test aa@x.test"));
    ExpectOneStep("Delete 2 Addresses", before);
}

TEST_F(ListUndoTest, EveryOperationOnAListIsAStep) {
    AddPending(Words("+pp@x.test -qq@x.test"));
    Turn();
    Contents before = Now();
    session.Prefs.ListSortBy = 0;
    lists.SelectRows(kChronological, {1});
    profile.Boxes.Inputs = {u"zz@x.test"_s};
    editing.EditSelected(kChronological);
    ExpectOneStep("Edit", before);

    lists.SelectRows(kPending, {0, 1});
    before = Now();
    editing.SwapSigns();
    ExpectOneStep("Reverse 2 Addresses", before);

    before = Now();
    lists.SelectRows(kChronological, {0, 2});
    editing.CurrentToPending(Transfer::Move);
    ExpectOneStep("Move 2 Addresses to Pending List", before);

    before = Now();
    editing.PendingToCurrent(Transfer::Copy);
    lists.SelectRows(kPending, {0});
    before = Now();
    editing.PendingToCurrent(Transfer::Copy);
    ExpectOneStep("Copy 1 Address to Current List", before);

    before = Now();
    AddTypedAddress(lists, u"new@x.test"_s, RequestKind::Subscribe, nullptr);
    ExpectOneStep("Add Request", before);

    before = Now();
    PendingProcessing(session, lists, nullptr).Run();
    EXPECT_EQ(Pending(), QStringList());
    ExpectOneStep("Process Pending List", before);
}

TEST_F(ListUndoTest, ANamedStepHoldsAllThatIsDoneMeanwhile) {
    const Contents before = Now();
    {
        const ListStep step(undo, u"Import"_s);
        lists.Open.Add(u"dd@x.test"_s);
        lists.Pending.AddAll(RequestKind::Subscribe, Words("ee@x.test ff@x.test"));
        lists.SelectRows(kAlphabetical, {0});
        editing.DeleteSelected(kAlphabetical); // a step of its own otherwise
        EXPECT_EQ(undo.UndoText(), QString()) << "not while it is under way";
        undo.Undo();
    }
    ExpectOneStep("Import", before);
}

TEST_F(ListUndoTest, AStepWithoutEffectIsNone) {
    {
        const ListStep step(undo, u"Nothing"_s);
        lists.Open.Add(u"dd@x.test"_s);
        EXPECT_TRUE(lists.Open.Remove(u"dd@x.test"_s));
    }
    EXPECT_EQ(undo.UndoText(), QString());
}

TEST_F(ListUndoTest, AnAddressThatCameAndWentInOneRunLeavesTheListUnsaved) {
    AddPending(Words("+dd@x.test -dd@x.test"));
    Turn();
    const Contents before = Now();
    PendingProcessing(session, lists, nullptr).Run();
    EXPECT_FALSE(lists.Open.IsSaved());
    ExpectOneStep("Process Pending List", before);
}

TEST_F(ListUndoTest, WhatNobodyNamedIsAStepForEachTurn) {
    const Contents before = Now();
    lists.Open.Add(u"dd@x.test"_s);
    EXPECT_TRUE(lists.Open.Remove(u"cc@x.test"_s));
    Turn();
    ExpectOneStep("Change of the Lists", before);
}

TEST_F(ListUndoTest, RequestsThatArriveInManyTurnsAreOneStep) {
    for (const char *address : {"dd@x.test", "ee@x.test", "ff@x.test"}) {
        lists.Pending.Offer({RequestKind::Subscribe, QString::fromLatin1(address), RequestOrigin::Mailbox});
        Turn();
    }
    EXPECT_EQ(undo.UndoText(), u"Add Requests"_s);
    undo.Undo();
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(undo.UndoText(), QString());
}

TEST_F(ListUndoTest, ANewChangeLeavesNothingToRedo) {
    lists.Open.Add(u"dd@x.test"_s);
    undo.Undo();
    lists.Open.Add(u"ee@x.test"_s);
    Turn();
    EXPECT_EQ(undo.RedoText(), QString());
}

TEST_F(ListUndoTest, BackAtTheSavedContentsTheListIsSaved) {
    lists.Open.Add(u"dd@x.test"_s);
    Turn();
    ASSERT_TRUE(lists.Open.Save(u"news"_s, QString()));
    lists.Open.Add(u"ee@x.test"_s);
    EXPECT_FALSE(lists.Open.IsSaved());
    undo.Undo();
    EXPECT_TRUE(lists.Open.IsSaved());
    undo.Undo();
    EXPECT_FALSE(lists.Open.IsSaved()) << "the file has one address more";
    undo.Redo();
    EXPECT_TRUE(lists.Open.IsSaved());
}

// The list stays saved when an entry is added to the box that is shown alone; its file may have it by then.
TEST_F(ListUndoTest, UndoOfACopyThatWasSavedMeanwhileIsNotSaved) {
    session.Prefs.ListSortBy = 0;
    lists.Open.AddToVisibleOnly(Words("dd@x.test"));
    Turn();
    EXPECT_TRUE(lists.Open.IsSaved());
    undo.Undo();
    EXPECT_TRUE(lists.Open.IsSaved());
    undo.Redo();
    ASSERT_TRUE(lists.Open.Save(u"news"_s, QString()));
    undo.Undo();
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(ListUndoTest, AHundredStepsAreKept) {
    for (int i = 0; i <= 100; ++i) {
        lists.Open.Add(u"n"_s + QString::number(i) + u"@x.test"_s);
        Turn();
    }
    for (int i = 0; i < 100; ++i) {
        ASSERT_NE(undo.UndoText(), QString());
        undo.Undo();
    }
    EXPECT_EQ(undo.UndoText(), QString());
    EXPECT_EQ(Current().size(), 5);
}

TEST_F(ListUndoTest, AnotherListTakesItsStepsAlong) {
    WriteListFile(u"other"_s, FileBytes(Words("oo@x.test")));
    lists.Pending.AddAll(RequestKind::Subscribe, Words("before@x.test"));
    Turn();
    PendingProcessing(session, lists, nullptr).Run();
    AddTypedAddress(lists, u"dd@x.test"_s, RequestKind::Subscribe, nullptr);
    lists.Open.Add(u"ee@x.test"_s);
    Turn();
    lists.Open.DropChanges();
    ASSERT_TRUE(lists.Open.Load(u"other"_s));
    EXPECT_EQ(undo.UndoText(), u"Add Request"_s);
    undo.Undo();
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(Current(), Words("oo@x.test"));
    EXPECT_TRUE(lists.Open.IsSaved());
    EXPECT_EQ(undo.UndoText(), QString()) << "processing changed a list that is not open any more";
}

TEST_F(ListUndoTest, AClosedListTakesItsStepsAlong) {
    lists.Open.Add(u"ee@x.test"_s);
    Turn();
    lists.Open.Close();
    EXPECT_EQ(undo.UndoText(), QString());
}

TEST_F(ListUndoTest, ProcessingWithMailsSaysThatTheyAreGone) {
    session.Prefs.Notify = 1;
    session.Prefs.SMTPServer = u"mail.test"_s;
    session.Prefs.SMTPEmail = u"list@x.test"_s;
    lists.Pending.AddAll(RequestKind::Subscribe, Words("dd@x.test"));
    Turn();
    const Contents before = Now();
    PendingProcessing processing(session, lists, mailers.Maker());
    processing.Run();
    lists.Pending.Offer({RequestKind::Subscribe, u"late@x.test"_s, RequestOrigin::Mailbox});
    for (int i = 0; i < 100 && processing.IsRunning(); ++i)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    ASSERT_FALSE(processing.IsRunning());
    EXPECT_EQ(undo.UndoText(), u"Process Pending List (Sent Mails Cannot Be Called Back)"_s);
    undo.Undo();
    EXPECT_EQ(Current(), before.Current);
    EXPECT_EQ(Pending(), Words("+dd@x.test +late@x.test")) << "what arrived meanwhile stays";
}

TEST_F(ListUndoTest, AStepThatWouldMakeAListTooLongChangesNothing) {
    lists.Pending.AddAll(RequestKind::Subscribe, Addresses(EntryListModel::kMostEntries));
    Turn();
    lists.SelectRows(kPending, {3});
    editing.DeleteSelected(kPending);
    lists.Box(kPending).Model().RecordTo(nullptr); // as if it had come from nowhere
    lists.Pending.AddAll(RequestKind::Subscribe, Words("one@x.test"));
    EXPECT_EQ(ErrorOf([&] { undo.Undo(); }), Overflow);
    EXPECT_EQ(Pending().last(), u"+one@x.test"_s);
    EXPECT_EQ(undo.UndoText(), u"Delete 1 Address"_s);
}

TEST_F(ListUndoTest, TheLongestListComesBackWhole) {
    const QStringList all = Addresses(EntryListModel::kMostEntries);
    lists.Open.DropChanges();
    OpenList(u"long"_s, all);
    lists.SelectRows(kAlphabetical, {5});
    const Contents before = Now();
    editing.SelectAll(kAlphabetical);
    editing.DeleteSelected(kAlphabetical);
    ASSERT_EQ(Current(), QStringList());
    ExpectOneStep("Delete 32767 Addresses", before);
    undo.Undo();
    EXPECT_EQ(lists.Open.Box(kChronological).Model().FindFirst(all.last()), all.size() - 1);
}

// Many single rows are put back in one go, few one by one: both where they belong.
TEST_F(ListUndoTest, ScatteredRowsComeBackWhereTheyStood) {
    lists.Open.DropChanges();
    OpenList(u"long"_s, Addresses(500));
    const Contents before = Now();
    for (const int every : {3, 100}) {
        QList<int> rows;
        for (int row = 0; row < 500; row += every)
            rows.append(row);
        lists.SelectRows(kAlphabetical, rows);
        editing.DeleteSelected(kAlphabetical);
        undo.Undo();
        EXPECT_TRUE(Now() == before) << every;
    }
}

TEST_F(ListUndoTest, TellsWhatIsNotSavedYet) {
    EXPECT_EQ(undo.TextsSinceSaved(), QStringList());
    lists.SelectRows(kAlphabetical, {0});
    editing.DeleteSelected(kAlphabetical);
    AddTypedAddress(lists, u"dd@x.test"_s, RequestKind::Subscribe, nullptr);
    PendingProcessing(session, lists, nullptr).Run();
    EXPECT_EQ(undo.TextsSinceSaved(), (QStringList{u"Delete 1 Address"_s, u"Process Pending List"_s}));
    ASSERT_TRUE(lists.Open.Save(u"news"_s, QString()));
    EXPECT_EQ(undo.TextsSinceSaved(), QStringList());
}

} // namespace
} // namespace varlo::test
