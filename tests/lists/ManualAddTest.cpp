#include "lists/ManualAdd.h"

#include "lists/ListsFixture.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class ManualAddTest : public test::ListsFixture {
protected:
    bool Add(const char *text, Request request = Request::Subscribe) {
        return AddTypedAddress(session, lists, QString::fromUtf8(text), request, process);
    }

    int runs = 0;
    std::function<void()> process;
    const std::function<void()> bypass = [this] {
        ++runs;
        pendingAtRun = Pending();
    };
    QStringList pendingAtRun;
};

TEST_F(ManualAddTest, AddQueuesASubscription) {
    EXPECT_TRUE(Add("Ab@x.test"));
    EXPECT_EQ(Pending(), Words("+Ab@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Added [Ab@x.test] to the pending list")));
    EXPECT_EQ(lists.Selection(kPending).currentIndex().row(), 0);
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(ManualAddTest, RemoveQueuesARemovalInTheSameWords) {
    EXPECT_TRUE(Add("ab@x.test", Request::Unsubscribe));
    EXPECT_EQ(Pending(), Words("-ab@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Added [ab@x.test] to the pending list")));
}

TEST_F(ManualAddTest, AnInvalidAddressIsToldTwiceAndStaysForCorrection) {
    process = bypass;
    EXPECT_FALSE(Add("nobody"));
    const QString message = QStringLiteral("The e-mail address [nobody] is invalid");
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(message));
    EXPECT_EQ(TakeStatus(), QStringList(message));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(runs, 0);
}

TEST_F(ManualAddTest, TheSameAddressTwiceIsQueuedTwice) {
    Add("ab@x.test");
    Add("ab@x.test");
    Add("AB@x.test", Request::Unsubscribe);
    EXPECT_EQ(Pending(), Words("+ab@x.test +ab@x.test -AB@x.test"));
}

TEST_F(ManualAddTest, AnEntryWithoutASignIsADuplicateAndTheBoxIsEmptied) {
    AddPending(Words("AB@x.test"));
    process = bypass;
    EXPECT_TRUE(Add("ab@x.test"));
    EXPECT_EQ(Pending(), Words("AB@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList(QStringLiteral("Duplicate address [ab@x.test] ignored")));
    EXPECT_EQ(runs, 1);
}

TEST_F(ManualAddTest, BypassProcessesAfterTheAdd) {
    process = bypass;
    EXPECT_TRUE(Add("ab@x.test"));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(pendingAtRun, Words("+ab@x.test"));
}

TEST_F(ManualAddTest, AFullPendingListIsReportedAndLosesNothing) {
    const QStringList full = test::Addresses(EntryListModel::kMostEntries, QStringLiteral("+a"));
    AddPending(full);
    process = bypass;
    EXPECT_TRUE(Add("more@x.test"));
    EXPECT_EQ(Errors(), QStringList(QStringLiteral("6 in Main.cmdEmailAdd - Overflow")));
    EXPECT_EQ(Pending(), full);
    EXPECT_EQ(runs, 1);
}

TEST_F(ManualAddTest, AStatusLogThatCannotBeWrittenStopsNoAdd) {
    BlockLog(QStringLiteral("StatusLog.txt"));
    process = bypass;
    EXPECT_TRUE(Add("ab@x.test"));
    EXPECT_EQ(Errors(), QStringList(QStringLiteral("70 in Main.cmdEmailAdd - Permission denied")));
    EXPECT_EQ(pendingAtRun, Words("+ab@x.test"));
}

TEST_F(ManualAddTest, ValidateTellsAValidAddress) {
    ReportValidity(session, QStringLiteral("<i>ab@x.test"));
    ReportValidity(session, QStringLiteral("ab@x.test"));
    const std::vector<test::ShownBox> expected{
        {QStringLiteral("Varlo Pro Error"), QStringLiteral("The e-mail address [<i>ab@x.test] is invalid"),
         BoxButtons::Ok, BoxIcon::Critical},
        {QStringLiteral("Varlo Pro"), QStringLiteral("The e-mail address [ab@x.test] appears to be valid"),
         BoxButtons::Ok, BoxIcon::Information}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
    EXPECT_EQ(TakeStatus(), QStringList());
    EXPECT_EQ(Pending(), QStringList());
}

} // namespace
} // namespace varlo
