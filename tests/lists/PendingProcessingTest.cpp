#include "lists/PendingProcessing.h"

#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/ListsFixture.h"

#include <QSignalSpy>
#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Addresses;
using test::FileBytes;
using test::Words;

constexpr int kMost = EntryListModel::kMostEntries;

class PendingProcessingTest : public test::ListsFixture {
protected:
    void Open(const QStringList &entries) { OpenList(u"news"_s, entries); }
    void Process(const QStringList &entries) {
        AddPending(entries);
        processing.Run();
    }
    QStringList PendingLog() const { return profile.Log(u"PendingLog.txt"_s); }
    void ExpectBoth(const QStringList &chronological, const QStringList &alphabetical) const {
        EXPECT_EQ(Current(), chronological);
        EXPECT_EQ(Sorted(), alphabetical);
    }

    PendingProcessing processing{session, lists, mailers.Maker()};
};

TEST_F(PendingProcessingTest, AppliesTheRequestsInOrderAndClearsThePendingList) {
    Open(Words("mm@x.test bb@x.test"));
    Process(Words("+zz@x.test -BB@x.test +Aa@x.test"));
    ExpectBoth(Words("mm@x.test zz@x.test Aa@x.test"), Words("Aa@x.test mm@x.test zz@x.test"));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(PendingLog(), Words("+zz@x.test -BB@x.test +Aa@x.test"));
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(PendingProcessingTest, TellsEachStepAndASummary) {
    Open(Words("bb@x.test"));
    Process(Words("+aa@x.test +AA@x.test -bb@x.test +cc@x.test"));
    EXPECT_EQ(TakeStatus(),
              (QStringList{u"Processing pending list"_s, u"Processing pending list (1/4)"_s,
                           u"Processing pending list (2/4)"_s, u"Duplicate address [AA@x.test] ignored"_s,
                           u"Processing pending list (3/4)"_s, u"Processing pending list (4/4)"_s,
                           u"Pending list processing complete (+2, -1)"_s}));
}

TEST_F(PendingProcessingTest, ADuplicateInOtherLetterCaseIsIgnoredAndLogged) {
    Open({});
    Process(Words("+a@x.test +A@X.TEST"));
    ExpectBoth(Words("a@x.test"), Words("a@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (+1)"_s);
    EXPECT_EQ(PendingLog(), Words("+a@x.test +A@X.TEST"));
}

TEST_F(PendingProcessingTest, RemovalOfAnAbsentAddressIsNoActivityAndLogged) {
    Open(Words("aa@x.test"));
    Process(Words("-b@x.test"));
    ExpectBoth(Words("aa@x.test"), Words("aa@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (no activity)"_s);
    EXPECT_EQ(PendingLog(), Words("-b@x.test"));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(PendingProcessingTest, AnAddressThatComesAndGoesIsCountedTwice) {
    Open({});
    Process(Words("+c@x.test -c@x.test"));
    ExpectBoth({}, {});
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (+1, -1)"_s);
    EXPECT_FALSE(lists.Open.IsSaved());
}

TEST_F(PendingProcessingTest, OnlyRemovalsAreSummedUpAlone) {
    Open(Words("aa@x.test bb@x.test"));
    Process(Words("-aa@x.test -bb@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (-2)"_s);
}

TEST_F(PendingProcessingTest, TheCountersBeginAnewWithEachRun) {
    Open({});
    Process(Words("+aa@x.test +bb@x.test"));
    Process(Words("+cc@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (+1)"_s);
}

TEST_F(PendingProcessingTest, AnEmptyPendingListIsNoActivity) {
    Open({});
    processing.Run();
    EXPECT_EQ(TakeStatus(), (QStringList{u"Processing pending list"_s,
                                         u"Pending list processing complete (no activity)"_s}));
    EXPECT_EQ(PendingLog(), QStringList());
}

TEST_F(PendingProcessingTest, AnEntryWithoutASignChangesNothingAndIsLogged) {
    Open(Words("aa@x.test"));
    Process({u"aa@x.test"_s, u"=bb@x.test"_s, QString()});
    ExpectBoth(Words("aa@x.test"), Words("aa@x.test"));
    EXPECT_EQ(PendingLog(), (QStringList{u"aa@x.test"_s, u"=bb@x.test"_s, QString()}));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (no activity)"_s);
}

TEST_F(PendingProcessingTest, OfEqualEntriesTheFirstOfEachViewIsRemoved) {
    Open(Words("x@x.test mm@x.test X@x.test"));
    Process(Words("-x@X.test"));
    ExpectBoth(Words("mm@x.test X@x.test"), Words("mm@x.test x@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (-1)"_s);
}

TEST_F(PendingProcessingTest, AnEntryOfTheAlphabeticalViewOnlyIsRemovedWithoutBeingCounted) {
    Open(Words("aa@x.test"));
    lists.Box(kAlphabetical).Model().Add(u"try@x.test"_s);
    Process(Words("-try@x.test"));
    ExpectBoth(Words("aa@x.test"), Words("aa@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (no activity)"_s);
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(PendingProcessingTest, TheFileIsNotWritten) {
    Open(Words("aa@x.test"));
    Process(Words("+bb@x.test"));
    EXPECT_EQ(ReadListFile(u"news"_s), FileBytes(Words("aa@x.test")));
}

TEST_F(PendingProcessingTest, TheRequestsApplyToTheListThatIsOpenThen) {
    Open(Words("aa@x.test"));
    AddPending(Words("+new@x.test"));
    OpenList(u"other"_s, Words("oo@x.test"));
    processing.Run();
    EXPECT_EQ(Current(), Words("oo@x.test new@x.test"));
}

TEST_F(PendingProcessingTest, TellsThatItRunsAndLetsTheControlsFollow) {
    Open({});
    AddPending(Words("+aa@x.test"));
    std::vector<bool> running;
    QObject::connect(&processing, &PendingProcessing::RunningChanged, &lists.Open, [&](bool on) {
        EXPECT_EQ(processing.IsRunning(), on);
        running.push_back(on);
    });
    QStringList pendingAtUpdate{u"never told"_s};
    QObject::connect(&lists.Pending, &PendingList::Changed, &processing,
                     [&] { pendingAtUpdate = Pending(); });
    processing.Run();
    EXPECT_EQ(running, (std::vector<bool>{true, false}));
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(pendingAtUpdate, QStringList());
    EXPECT_FALSE(processing.IsRunning());
}

TEST_F(PendingProcessingTest, WithoutAnOpenListNothingIsProcessedOrLost) {
    Process(Words("+aa@x.test"));
    const std::vector<test::ShownBox> expected{{u"Varlo Pro"_s,
                                                u"Please create or choose a mailing list first."_s,
                                                BoxButtons::Ok, BoxIcon::Exclamation}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
    EXPECT_EQ(Pending(), Words("+aa@x.test"));
    EXPECT_EQ(Current() + PendingLog() + TakeStatus(), QStringList());
}

// A mail check can end in the moment in which a load lets events run.
TEST_F(PendingProcessingTest, WhileAListIsLoadedNothingIsProcessedOrLost) {
    Open(Words("aa@x.test"));
    WriteListFile(u"other"_s, FileBytes(Words("oo@x.test")));
    AddPending(Words("+new@x.test"));
    QTimer::singleShot(0, &processing, &PendingProcessing::Run);
    lists.Open.Load(u"other"_s);
    EXPECT_EQ(Current(), Words("oo@x.test"));
    EXPECT_EQ(Pending(), Words("+new@x.test"));
    EXPECT_EQ(PendingLog(), QStringList());
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(PendingProcessingTest, ALogThatCannotBeWrittenIsReportedAndAllRequestsStay) {
    Open(Words("bb@x.test"));
    BlockLog(u"PendingLog.txt"_s);
    const QSignalSpy running(&processing, &PendingProcessing::RunningChanged);
    Process(Words("+aa@x.test -bb@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.cmdCapturesAdd - Permission denied"_s));
    EXPECT_EQ(Pending(), Words("+aa@x.test -bb@x.test"));
    EXPECT_EQ(running.count(), 2);
    EXPECT_FALSE(processing.IsRunning());
}

TEST_F(PendingProcessingTest, ARunThatFailedIsMadeUpForByTheNext) {
    Open(Words("bb@x.test"));
    BlockLog(u"PendingLog.txt"_s);
    Process(Words("+aa@x.test -bb@x.test"));
    ASSERT_TRUE(QDir(profile.Path(u"logs"_s)).rmdir(u"PendingLog.txt"_s));
    processing.Run();
    ExpectBoth(Words("aa@x.test"), Words("aa@x.test"));
    EXPECT_EQ(PendingLog(), Words("+aa@x.test -bb@x.test"));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(PendingProcessingTest, AStatusLogThatCannotBeWrittenIsReportedAndAllRequestsStay) {
    Open({});
    BlockLog(u"StatusLog.txt"_s);
    Process(Words("+aa@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.cmdCapturesAdd - Permission denied"_s));
    EXPECT_EQ(Pending(), Words("+aa@x.test"));
}

TEST_F(PendingProcessingTest, AFullListIsReportedAndAllRequestsStay) {
    const QStringList full = Addresses(kMost);
    Open(full);
    Process(Words("+more@x.test -a0@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"6 in Main.cmdCapturesAdd - Overflow"_s));
    EXPECT_EQ(Pending(), Words("+more@x.test -a0@x.test"));
    EXPECT_EQ(Current(), full);
    EXPECT_EQ(lists.lstEmailList(kAlphabetical).Count(), kMost);
    EXPECT_TRUE(lists.Open.IsSaved());
}

TEST_F(PendingProcessingTest, AFullAlphabeticalViewLeavesBothViewsAlike) {
    Open(Addresses(kMost - 1));
    lists.Box(kAlphabetical).Model().Add(u"try@x.test"_s);
    Process(Words("+more@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"6 in Main.cmdCapturesAdd - Overflow"_s));
    EXPECT_EQ(lists.lstEmailList(kChronological).Count(), kMost - 1);
    EXPECT_EQ(Pending(), Words("+more@x.test"));
}

TEST_F(PendingProcessingTest, AFullListTakesOneForOneThatLeaves) {
    Open(Addresses(kMost));
    Process(Words("-a5@x.test +new@x.test"));
    EXPECT_EQ(Errors(), QStringList());
    EXPECT_EQ(Current().last(), u"new@x.test"_s);
    EXPECT_EQ(lists.lstEmailList(kChronological).Count(), kMost);
}

TEST_F(PendingProcessingTest, TheMostRequestsAreProcessed) {
    Open({});
    session.Prefs.LogStatus = 0;
    const QStringList requests = Addresses(kMost, u"+a"_s);
    Process(requests);
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (+32767)"_s);
    EXPECT_EQ(Current(), Addresses(kMost));
    EXPECT_EQ(PendingLog(), requests);
    QStringList removals;
    for (const QString &address : Addresses(kMost))
        removals << u'-' + address;
    Process(removals);
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (-32767)"_s);
    ExpectBoth({}, {});
}

} // namespace
} // namespace varlo
