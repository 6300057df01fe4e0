#include "lists/PendingList.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "lists/ListsFixture.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;
using Answer = PendingList::Answer;

class PendingListTest : public test::ListsFixture {
protected:
    Answer Offer(const QString &address, RequestOrigin origin, RequestKind kind = RequestKind::Subscribe) {
        return lists.Pending.Offer({kind, address, origin});
    }
    int CurrentRow() { return lists.Selection(kPending).currentIndex().row(); }
};

TEST_F(PendingListTest, AMailedRequestIsAddedWithoutALineOrAnotherCurrentItem) {
    EXPECT_EQ(Offer(u"a@x.test"_s, RequestOrigin::Mailbox), Answer::Added);
    EXPECT_EQ(Offer(u"a@x.test"_s, RequestOrigin::Mailbox, RequestKind::Unsubscribe), Answer::Added);
    EXPECT_EQ(Pending(), Words("+a@x.test -a@x.test"));
    EXPECT_EQ(TakeStatus(), QStringList());
    EXPECT_EQ(CurrentRow(), -1);
}

TEST_F(PendingListTest, AMailedRequestIsComparedWithItsSign) {
    Offer(u"a@x.test"_s, RequestOrigin::Mailbox);
    EXPECT_EQ(Offer(u"A@x.test"_s, RequestOrigin::Mailbox), Answer::Duplicate);
    EXPECT_EQ(TakeStatus(), QStringList(u"Duplicate address [+A@x.test] ignored"_s));
}

TEST_F(PendingListTest, AMailedDuplicateIsToldThoughItIsInvalid) {
    AddPending(Words("+nobody"));
    EXPECT_EQ(Offer(u"nobody"_s, RequestOrigin::Mailbox), Answer::Invalid);
    EXPECT_EQ(TakeStatus(), QStringList(u"Duplicate address [+nobody] ignored"_s));
    EXPECT_EQ(Offer(u"somebody"_s, RequestOrigin::Mailbox), Answer::Invalid);
    EXPECT_EQ(TakeStatus() + profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(Pending(), Words("+nobody"));
}

TEST_F(PendingListTest, AFailedDeliveryIsAddedAsItComesAndBecomesTheCurrentItem) {
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(Offer(u"no address"_s, RequestOrigin::FailedDelivery, RequestKind::Unsubscribe),
                  Answer::Added);
    EXPECT_EQ(Pending(), (QStringList{u"-no address"_s, u"-no address"_s}));
    EXPECT_EQ(CurrentRow(), 1);
    EXPECT_EQ(TakeStatus(), QStringList());
}

TEST_F(PendingListTest, CopiesOfACopyAreTaken) {
    lists.Pending.AddAll(RequestKind::Unsubscribe, Words("a@x.test a@x.test nobody"));
    EXPECT_EQ(Pending(), Words("-a@x.test -a@x.test -nobody"));
}

TEST_F(PendingListTest, AFullListRefusesAMailedRequest) {
    lists.Pending.AddAll(RequestKind::Subscribe, test::Addresses(EntryListModel::kMostEntries));
    try {
        Offer(u"more@x.test"_s, RequestOrigin::Mailbox);
        FAIL() << "nothing thrown";
    } catch (const RuntimeError &error) {
        EXPECT_EQ(error.Number(), Overflow);
    }
}

TEST_F(PendingListTest, ManyChangesOfOneTurnAreToldOnce) {
    const QSignalSpy changes(&lists.Pending, &PendingList::Changed);
    for (int i = 0; i < 100; ++i)
        Offer(u"a"_s + QString::number(i) + u"@x.test"_s, RequestOrigin::Mailbox);
    lists.SelectRows(kPending, {0});
    lists.Pending.RemoveFirst(50);
    EXPECT_EQ(changes.count(), 0);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(changes.count(), 1);
    lists.Pending.RemoveFirst(1);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(lists.Pending.Count(), 49);
}

TEST_F(PendingListTest, ASaveIsToldWithItsName) {
    OpenList(u"news"_s, Words("a@x.test"));
    const QSignalSpy saved(&lists.Open, &OpenList::Saved);
    lists.Open.Add(u"b@x.test"_s);
    profile.Boxes.Answers = {BoxAnswer::Yes};
    EXPECT_TRUE(lists.Open.PromptSaveList());
    ASSERT_EQ(saved.count(), 1);
    EXPECT_EQ(saved[0][0].toString(), u"news"_s);
}

} // namespace
} // namespace varlo
