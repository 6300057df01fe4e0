#include "lists/ManualAdd.h"

#include "core/Literals.h"
#include "lists/ListsFixture.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class ManualAddTest : public test::ListsFixture {
protected:
    bool Add(const char *text, RequestKind request = RequestKind::Subscribe) {
        return AddTypedAddress(lists, QString::fromUtf8(text), request, process);
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
    EXPECT_EQ(TakeStatus(), QStringList(u"Added [Ab@x.test] to the pending list"_s));
    EXPECT_EQ(lists.Selection(kPending).currentIndex().row(), 0);
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(ManualAddTest, RemoveQueuesARemovalInTheSameWords) {
    EXPECT_TRUE(Add("ab@x.test", RequestKind::Unsubscribe));
    EXPECT_EQ(Pending(), Words("-ab@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList(u"Added [ab@x.test] to the pending list"_s));
}

TEST_F(ManualAddTest, AnInvalidAddressIsToldTwiceAndStaysForCorrection) {
    process = bypass;
    EXPECT_FALSE(Add("nobody"));
    const QString message = u"The e-mail address [nobody] is invalid"_s;
    EXPECT_EQ(profile.Boxes.Texts(), QStringList(message));
    EXPECT_EQ(TakeStatus(), QStringList(message));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(runs, 0);
}

TEST_F(ManualAddTest, TheSameAddressTwiceIsQueuedTwice) {
    Add("ab@x.test");
    Add("ab@x.test");
    Add("AB@x.test", RequestKind::Unsubscribe);
    EXPECT_EQ(Pending(), Words("+ab@x.test +ab@x.test -AB@x.test"));
}

TEST_F(ManualAddTest, AnEntryWithoutASignIsADuplicateAndTheBoxIsEmptied) {
    AddPending(Words("AB@x.test"));
    process = bypass;
    EXPECT_TRUE(Add("ab@x.test"));
    EXPECT_EQ(Pending(), Words("AB@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList(u"Duplicate address [ab@x.test] ignored"_s));
    EXPECT_EQ(runs, 1);
}

TEST_F(ManualAddTest, BypassProcessesAfterTheAdd) {
    process = bypass;
    EXPECT_TRUE(Add("ab@x.test"));
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(pendingAtRun, Words("+ab@x.test"));
}

TEST_F(ManualAddTest, AFullPendingListIsReportedAndLosesNothing) {
    const QStringList full = test::Addresses(EntryListModel::kMostEntries, u"+a"_s);
    AddPending(full);
    process = bypass;
    EXPECT_TRUE(Add("more@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"6 in Main.cmdEmailAdd - Overflow"_s));
    EXPECT_EQ(Pending(), full);
    EXPECT_EQ(runs, 1);
}

TEST_F(ManualAddTest, AStatusLogThatCannotBeWrittenStopsNoAdd) {
    BlockLog(u"StatusLog.txt"_s);
    process = bypass;
    EXPECT_TRUE(Add("ab@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.cmdEmailAdd - Permission denied"_s));
    EXPECT_EQ(pendingAtRun, Words("+ab@x.test"));
}

TEST_F(ManualAddTest, ValidateTellsAValidAddress) {
    ReportValidity(session, u"<i>ab@x.test"_s);
    ReportValidity(session, u"ab@x.test"_s);
    const std::vector<test::ShownBox> expected{
        {u"Varlo Pro Error"_s, u"The e-mail address [<i>ab@x.test] is invalid"_s, BoxButtons::Ok,
         BoxIcon::Critical},
        {u"Varlo Pro"_s, u"The e-mail address [ab@x.test] appears to be valid"_s, BoxButtons::Ok,
         BoxIcon::Information}};
    EXPECT_EQ(profile.Boxes.Shown, expected);
    EXPECT_EQ(TakeStatus(), QStringList());
    EXPECT_EQ(Pending(), QStringList());
}

} // namespace
} // namespace varlo
