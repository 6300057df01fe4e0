// What the page joins: requests of a mailbox check that nobody waits for meet questions, loads and runs.
#include "lists/ListsPage.h"

#include "core/Literals.h"
#include "lists/FramesFixture.h"

#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Words;

class ListsPageTest : public test::FramesFixture {
protected:
    ListsPageTest() { OpenLists({{u"news"_s, Words("aa@x.test")}, {u"other"_s, Words("oo@x.test")}}); }
    void Change() {
        lists.Open.Add(u"bb@x.test"_s);
        ASSERT_FALSE(lists.Open.IsSaved());
    }
    // A mailbox check ends, with "Bypass" ticked.
    void EndCheck() {
        lists.Pending.Offer({RequestKind::Subscribe, u"late@x.test"_s, RequestOrigin::Mailbox});
        owner.page.ProcessWhenFree();
    }
    void EndCheckInBox() {
        profile.Boxes.OnBox = [this](const QString &) {
            EndCheck();
            QCoreApplication::processEvents();
        };
    }
    void EndCheckAtStatus(const QString &text) {
        QObject::connect(&session.Status, &StatusFeed::StatusText, &host, [this, text](const QString &told) {
            if (told == text)
                EndCheck();
        });
    }
    void ExpectApplied(const QString &name, const QStringList &entries) {
        QCoreApplication::processEvents();
        EXPECT_EQ(lists.Open.Name(), name);
        EXPECT_EQ(Current(), entries);
        EXPECT_EQ(Pending(), QStringList());
        EXPECT_FALSE(lists.Open.IsSaved());
    }
};

TEST_F(ListsPageTest, ProcessingThatNothingHindersHappensAtOnce) {
    EndCheck();
    EXPECT_EQ(Current(), Words("aa@x.test late@x.test"));
}

TEST_F(ListsPageTest, RequestsDuringTheQuestionOfASwitchReachTheNextList) {
    Change();
    EndCheckInBox();
    profile.Boxes.Answers = {BoxAnswer::No};
    current.ChooseList(1);
    ExpectApplied(u"other"_s, Words("oo@x.test late@x.test"));
    EXPECT_EQ(ReadListFile(u"news"_s), test::FileBytes(Words("aa@x.test")));
}

TEST_F(ListsPageTest, RequestsDuringTheQuestionOfADeletionReachTheNextList) {
    EndCheckInBox();
    profile.Boxes.Answers = {BoxAnswer::Yes};
    Click("cmdFileDelete");
    ExpectApplied(u"other"_s, Words("oo@x.test late@x.test"));
}

TEST_F(ListsPageTest, RequestsDuringARenameReachTheRenamedList) {
    Change();
    EndCheckInBox();
    profile.Boxes.Answers = {BoxAnswer::Yes};
    profile.Boxes.Inputs = {u"zz"_s};
    Click("cmdFileRename");
    ExpectApplied(u"zz"_s, Words("aa@x.test bb@x.test late@x.test"));
}

TEST_F(ListsPageTest, RequestsDuringTheQuestionsOfClosingStayPending) {
    Change();
    profile.Boxes.OnBox = [this](const QString &text) {
        if (text.startsWith(u"The changes"))
            EndCheck();
        QCoreApplication::processEvents();
    };
    profile.Boxes.Answers = {BoxAnswer::No, BoxAnswer::Yes};
    EXPECT_TRUE(owner.page.MayClose());
    session.AppExiting = true;
    QCoreApplication::processEvents();
    EXPECT_EQ(Pending(), Words("+late@x.test"));
    EXPECT_EQ(profile.Boxes.Shown.size(), 2U) << "the second question knows of the request";
}

TEST_F(ListsPageTest, RequestsDuringTheQuestionOfClosingAreAppliedAfterCancel) {
    Change();
    EndCheckInBox();
    profile.Boxes.Answers = {BoxAnswer::Cancel};
    EXPECT_FALSE(owner.page.MayClose());
    ExpectApplied(u"news"_s, Words("aa@x.test bb@x.test late@x.test"));
}

TEST_F(ListsPageTest, RequestsDuringALoadAreAppliedAfterIt) {
    EndCheckAtStatus(u"Loading [other]..."_s);
    current.ChooseList(1);
    ExpectApplied(u"other"_s, Words("oo@x.test late@x.test"));
}

TEST_F(ListsPageTest, RequestsDuringARunAreAppliedAfterIt) {
    EndCheckAtStatus(u"Processing pending list (1/1)"_s);
    AddPending(Words("-aa@x.test"));
    pending.ProcessPendingList();
    QCoreApplication::processEvents();
    EXPECT_EQ(Current(), Words("late@x.test"));
}

TEST_F(ListsPageTest, BothListsGrowWithTheWindow) {
    host.resize(1000, 500);
    QCoreApplication::processEvents();
    const int currentBefore = current.width();
    const int pendingBefore = pending.width();
    host.resize(1400, 500);
    QCoreApplication::processEvents();
    EXPECT_GT(current.width(), currentBefore + 100);
    EXPECT_GT(pending.width(), pendingBefore + 100);
}

} // namespace
} // namespace varlo
