// What the page joins: requests of a mailbox check that nobody waits for meet questions, loads and runs.
#include "lists/ListsPage.h"

#include "core/Literals.h"
#include "core/Preferences.h"
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

TEST_F(ListsPageTest, RequestsDuringAnEditAreAppliedAfterTheRound) {
    lists.Open.Add(u"bb@x.test"_s);
    AddPending(Words("-aa@x.test"));
    lists.SelectRows(kAlphabetical, {0, 1});
    profile.Boxes.OnInput = [this](const QString &) {
        if (profile.Boxes.Asked.size() == 1)
            EndCheck();
        QCoreApplication::processEvents();
        EXPECT_EQ(Pending(), Words("-aa@x.test +late@x.test"));
    };
    profile.Boxes.Inputs = {u"zz@x.test"_s, u"yy@x.test"_s};
    Click("cmdListEdit_0");
    ExpectApplied(u"news"_s, Words("zz@x.test yy@x.test late@x.test"));
}

TEST_F(ListsPageTest, RequestsDuringAnEditOfARequestAreAppliedAfterIt) {
    AddPending(Words("+pp@x.test"));
    lists.SelectRows(kPending, {0});
    profile.Boxes.OnInput = [this](const QString &) { EndCheck(); };
    profile.Boxes.Inputs = {u"qq@x.test"_s};
    Click("cmdListEdit_1");
    ExpectApplied(u"news"_s, Words("aa@x.test qq@x.test late@x.test"));
}

// ---- Where the focus goes

class FocusTest : public ListsPageTest {
protected:
    FocusTest() { QApplication::setActiveWindow(&host); }
    // Presses the button with the keyboard, and tells where the focus is afterwards.
    QString After(const char *button) {
        Turn();
        Find<QWidget>(button)->setFocus();
        QTest::keyClick(Find<QWidget>(button), Qt::Key_Space);
        QCoreApplication::processEvents();
        const QWidget *focus = QApplication::focusWidget();
        return focus ? focus->objectName() : QString();
    }
};

TEST_F(FocusTest, AfterNewItIsInTheAddressBox) {
    profile.Boxes.Inputs = {u"third"_s};
    EXPECT_EQ(After("cmdFileNew"), u"txtAddEmail"_s);
}

TEST_F(FocusTest, AfterTheFirstListOfAllItIsInTheAddressBox) {
    profile.Boxes.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    Click("cmdFileDelete");
    Click("cmdFileDelete");
    ASSERT_FALSE(IsEnabled("txtAddEmail"));
    profile.Boxes.Inputs = {u"first"_s};
    EXPECT_EQ(After("cmdFileNew"), u"txtAddEmail"_s);
}

TEST_F(FocusTest, ACancelledNewLeavesIt) {
    profile.Boxes.Inputs = {QString()};
    EXPECT_EQ(After("cmdFileNew"), u"cmdFileNew"_s);
}

TEST_F(FocusTest, AnAddButtonHandsItToTheAddressBox) {
    for (const char *button : {"cmdEmailAdd_0", "cmdEmailAdd_1"}) {
        Type("aa@x.test");
        EXPECT_EQ(After(button), u"txtAddEmail"_s) << button;
    }
}

TEST_F(FocusTest, AButtonOfAListHandsItToTheList) {
    AddPending(Words("+aa@x.test +bb@x.test"));
    lists.SelectRows(kPending, {0});
    EXPECT_EQ(After("cmdListDelete_1"), u"lstEmailList_2"_s);
    lists.Open.Add(u"bb@x.test"_s);
    lists.SelectRows(kAlphabetical, {0});
    EXPECT_EQ(After("cmdListDelete_0"), u"lstEmailList_1"_s);
}

TEST_F(FocusTest, WhatEmptiesAListHandsItToTheAddressBox) {
    AddPending(Words("+aa@x.test"));
    EXPECT_EQ(After("cmdCapturesAdd"), u"txtAddEmail"_s);
    AddPending(Words("+aa@x.test"));
    lists.SelectRows(kPending, {0});
    EXPECT_EQ(After("cmdListDelete_1"), u"txtAddEmail"_s);
    editing.SelectAll(kAlphabetical);
    EXPECT_EQ(After("cmdListDelete_0"), u"txtAddEmail"_s);
}

TEST_F(FocusTest, TheDeleteKeyInAListThatBecomesEmptyHandsItToTheAddressBox) {
    AddPending(Words("+aa@x.test"));
    View(kPending)->setFocus();
    lists.SelectRows(kPending, {0});
    Turn();
    QTest::keyClick(View(kPending), Qt::Key_Delete);
    Turn();
    EXPECT_EQ(QApplication::focusWidget(), AddressBox());
}

TEST_F(FocusTest, AfterNotificationsItIsInTheAddressBox) {
    session.Prefs.Notify = 1;
    session.Prefs.SMTPServer = u"mail.x.test"_s;
    session.Prefs.SMTPEmail = u"ann@x.test"_s;
    pending.SetBypass(true);
    for (const char *button : {"cmdCapturesAdd", "cmdEmailAdd_0"}) {
        AddPending({u'+' + QString::fromLatin1(button) + u"@x.test"_s});
        Type("aa@x.test");
        After(button);
        ASSERT_TRUE(QTest::qWaitFor([this] { return !processing.IsRunning(); }));
        QCoreApplication::processEvents();
        EXPECT_EQ(Pending(), QStringList());
        EXPECT_EQ(QApplication::focusWidget(), AddressBox()) << button;
        AddressBox()->clear();
    }
}

// ---- What it looks like

TEST_F(ListsPageTest, TheButtonsOfBothListsAreOnOneLine) {
    const auto line = [this](const char *button) {
        const auto *found = Find<QWidget>(button);
        return found->mapTo(&host, QPoint(0, found->height())).y();
    };
    for (const auto &size : {QSize(760, 520), QSize(1100, 800)}) {
        host.resize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(line("cmdListEdit_0"), line("cmdListEdit_1"));
        EXPECT_EQ(line("cmdFileNew"), line("cmdEmailAdd_0"));
    }
}

TEST_F(ListsPageTest, EveryEmptyStateSaysWhatToDo) {
    const auto hint = [this](int box) { return View(box)->accessibleDescription(); };
    EXPECT_TRUE(hint(kPending).contains(u"No requests"));
    EXPECT_EQ(hint(kAlphabetical), QString());
    editing.SelectAll(kAlphabetical);
    Click("cmdListDelete_0");
    EXPECT_TRUE(hint(kAlphabetical).contains(u"This list is empty"));
    EXPECT_TRUE(hint(kChronological).contains(u"This list is empty"));
    profile.Boxes.Answers = {BoxAnswer::Yes, BoxAnswer::Yes};
    Click("cmdFileDelete");
    EXPECT_EQ(hint(kChronological), QString());
    Click("cmdFileDelete");
    EXPECT_TRUE(hint(kChronological).contains(u"There is no list"));
    AddPending(Words("+aa@x.test"));
    EXPECT_EQ(hint(kPending), QString());
}

// ---- The menus that pop up

TEST_F(ListsPageTest, EachListOpensItsOwnMenu) {
    AddPending(Words("+pp@x.test"));
    const std::pair<int, QMenu *> menus[] = {{kAlphabetical, menu.CurrentMenu()},
                                             {kPending, menu.PendingMenu()}};
    for (const auto &[box, wanted] : menus) {
        QTest::keyClick(View(box), Qt::Key_F10, Qt::ShiftModifier);
        for (const auto &[other, each] : menus)
            EXPECT_EQ(each->isVisible(), each == wanted) << box;
        wanted->close();
    }
}

TEST_F(ListsPageTest, TheSortButtonOpensTheSortMenuBelowIt) {
    Click("cmdListSort");
    EXPECT_TRUE(menu.SortMenu()->isVisible());
    menu.SortMenu()->close();
}

TEST_F(ListsPageTest, TheListsAreLockedUntilTheNotificationsAreSent) {
    session.Prefs.Notify = 1;
    session.Prefs.SMTPServer = u"mail.x.test"_s;
    session.Prefs.SMTPEmail = u"ann@x.test"_s;
    std::vector<bool> told;
    QObject::connect(&owner.page, &ListsPage::LockedChanged, &host,
                     [&](bool locked) { told.push_back(locked); });
    AddPending(Words("+bb@x.test"));
    Click("cmdCapturesAdd");
    EXPECT_FALSE(IsEnabled("fraCurrent"));
    EXPECT_FALSE(IsEnabled("txtAddEmail"));
    EXPECT_FALSE(menu.isEnabled());
    ASSERT_TRUE(QTest::qWaitFor([this] { return !processing.IsRunning(); }));
    EXPECT_TRUE(IsEnabled("fraCurrent"));
    EXPECT_TRUE(IsEnabled("txtAddEmail"));
    EXPECT_TRUE(menu.isEnabled());
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
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
