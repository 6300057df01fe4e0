// What the compose window leaves of a message that was not sent, and what the next one makes of it.

#include "compose/ComposeFixture.h"
#include "compose/Unsent.h"
#include "core/NoticeBar.h"
#include "support/WaitUntil.h"

#include <QDir>
#include <QPushButton>

namespace varlo {
namespace {

class frmComposeUnsentTest : public test::ComposeFixture {
protected:
    void Reopen() {
        window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ASSERT_TRUE(window.isNull());
        Open();
        QCoreApplication::processEvents();
    }
    NoticeBar *Bar() const { return Find<NoticeBar>("barUnsent"); }
    void Click(const char *button) const { Find<QPushButton>(button)->click(); }
    bool IsKept() const { return QFile::exists(profile.Path("unsent.ini")); }
    void TenSecondsPass() const {
        auto *timer = Find<QTimer>("tmrUnsent");
        EXPECT_TRUE(timer->isActive());
        EXPECT_EQ(timer->interval(), 10000);
        timer->stop();
        QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection);
    }
    void TwoLists() {
        List("a", "one@x.test\r\n");
        List("b", "two@x.test\r\nthree@x.test\r\n");
    }
    // What the later window shows that the earlier one held.
    void WriteFor(const QString &to) {
        ChooseTo(to);
        Body()->SetText("Hello.");
    }
};

TEST_F(frmComposeUnsentTest, AWindowThatHoldsNothingLeavesNothing) {
    Ini("[Signature]\r\nText=Jo\\nHill\r\n");
    Open();
    EXPECT_TRUE(Bar()->isHidden());
    Find<QLineEdit>("txtTo")->setText("Friends");
    Reopen();
    EXPECT_FALSE(IsKept());
    EXPECT_TRUE(Bar()->isHidden());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(frmComposeUnsentTest, TheNextWindowBringsEverythingBack) {
    TwoLists();
    profile.Write("file.txt", QByteArray(1024, 'x'));
    host.Attachments = QStringList{profile.Path("file.txt")};
    Open();
    Subject()->setText("Grüße");
    Find<QLineEdit>("txtTo")->setText("Friends");
    Body()->SetText("Dear \\n all,\r\n\r\n漢字");
    ChooseTo("b");
    window->close();
    EXPECT_EQ(profile.Boxes.Texts(), QStringList()) << "closing asks nothing";
    host.Attachments = QStringList{QString()}; // the program ended meanwhile
    Reopen();
    EXPECT_EQ(Body()->Text(), "") << "it is only offered";
    EXPECT_TRUE(Bar()->isVisible());
    EXPECT_EQ(Bar()->Sentence(), "The message [Grüße] was not sent.");
    Click("cmdUnsentRestore");
    EXPECT_EQ(Subject()->text(), "Grüße");
    EXPECT_EQ(Find<QLineEdit>("txtTo")->text(), "Friends");
    EXPECT_EQ(Body()->Text(), "Dear \\n all,\r\n\r\n漢字");
    EXPECT_EQ(To()->currentText(), "b");
    EXPECT_EQ(Recipients(), "2 Recipients");
    EXPECT_EQ(host.Attachments, QStringList{profile.Path("file.txt")});
    EXPECT_EQ(Indicator()->toolTip(), "1 Files (1 KB)");
    EXPECT_TRUE(Bar()->isHidden());
    EXPECT_FALSE(IsKept());
    EXPECT_EQ(Label("lblStatus"), "Unsent message restored");
}

TEST_F(frmComposeUnsentTest, WhatWasTakenUpIsKeptAgain) {
    Open();
    Body()->SetText("Hello.");
    Reopen();
    Click("cmdUnsentRestore");
    TenSecondsPass();
    EXPECT_TRUE(IsKept());
    Reopen();
    EXPECT_TRUE(Bar()->isVisible());
    Click("cmdUnsentRestore");
    EXPECT_EQ(Body()->Text(), "Hello.");
}

TEST_F(frmComposeUnsentTest, WhatIsRefusedIsGone) {
    Open();
    Body()->SetText("Hello.");
    Reopen();
    EXPECT_EQ(Bar()->Sentence(), "A message without a subject was not sent.");
    Click("cmdUnsentDiscard");
    EXPECT_TRUE(Bar()->isHidden());
    EXPECT_FALSE(IsKept());
    EXPECT_EQ(Body()->Text(), "");
    Reopen();
    EXPECT_TRUE(Bar()->isHidden());
}

TEST_F(frmComposeUnsentTest, AnOfferThatIsLeftIsMadeAgainBesideANewMessage) {
    Open();
    Body()->SetText("first");
    Reopen();
    Body()->SetText("second");
    Reopen();
    Click("cmdUnsentRestore");
    EXPECT_EQ(Body()->Text(), "second");
    EXPECT_TRUE(Bar()->isVisible());
    Click("cmdUnsentRestore");
    EXPECT_EQ(Body()->Text(), "first");
    EXPECT_TRUE(Bar()->isVisible()) << "the second was in the window and is not lost";
    Click("cmdUnsentRestore");
    EXPECT_EQ(Body()->Text(), "second");
}

TEST_F(frmComposeUnsentTest, KeepsEveryTenSecondsWhileSomebodyTypes) {
    Open();
    Type("a");
    EXPECT_FALSE(IsKept());
    TenSecondsPass();
    EXPECT_TRUE(profile.Read("unsent.ini").contains("Text=a\r\n"));
    EXPECT_FALSE(Find<QTimer>("tmrUnsent")->isActive());
    Type("b");
    TenSecondsPass();
    EXPECT_TRUE(profile.Read("unsent.ini").contains("Text=ab\r\n"));
    ASSERT_TRUE(QFile::remove(profile.Path("unsent.ini")));
    Type("c");
    Press(Qt::Key_Backspace, Qt::NoModifier);
    TenSecondsPass();
    EXPECT_FALSE(IsKept()) << "nothing has changed";
    Choose("mnuMessageClearAll");
    TenSecondsPass();
    EXPECT_FALSE(IsKept());
}

TEST_F(frmComposeUnsentTest, EveryFieldCountsAsAChange) {
    TwoLists();
    Open();
    Body()->SetText("Hello.");
    TenSecondsPass();
    Subject()->setText("News");
    TenSecondsPass();
    Find<QLineEdit>("txtTo")->setText("Friends");
    TenSecondsPass();
    ChooseTo("a");
    TenSecondsPass();
    EXPECT_EQ(profile.Read("unsent.ini"),
              "[Message]\r\nSubject=News\r\nTo=Friends\r\nRecipients=list\r\nList=a\r\nText=Hello.\r\n");
}

TEST_F(frmComposeUnsentTest, AWindowThatIsDestroyedKeepsToo) {
    Open();
    Body()->SetText("Hello.");
    delete window;
    EXPECT_TRUE(profile.Read("unsent.ini").contains("Text=Hello.\r\n"));
}

TEST_F(frmComposeUnsentTest, SeveralListsComeBackWithoutTheDialog) {
    TwoLists();
    List("c", "four@x.test\r\n");
    profile.Write("unsent.ini", "[Message]\r\nSubject=News\r\nRecipients=lists\r\nList=a\r\nList=c\r\n");
    Open();
    Click("cmdUnsentRestore");
    EXPECT_EQ(To()->currentText(), "Select Lists...");
    EXPECT_EQ(Recipients(), "2 Recipients");
    EXPECT_EQ(To()->toolTip(), "a, c");
    Reopen();
    Click("cmdUnsentRestore");
    EXPECT_EQ(To()->toolTip(), "a, c");
}

TEST_F(frmComposeUnsentTest, AllListsComeBackAsTheyAreNow) {
    TwoLists();
    Open();
    WriteFor("All Mailing Lists");
    Reopen();
    Click("cmdUnsentRestore");
    EXPECT_EQ(To()->currentText(), "All Mailing Lists");
    EXPECT_EQ(Recipients(), "3 Recipients");
}

TEST_F(frmComposeUnsentTest, AListThatIsGoneIsReplacedByNobody) {
    TwoLists();
    host.Current = "a";
    profile.Write("unsent.ini", "[Message]\r\nSubject=News\r\nRecipients=list\r\nList=gone\r\n");
    Open();
    Click("cmdUnsentRestore");
    EXPECT_EQ(To()->currentIndex(), -1);
    EXPECT_EQ(Recipients(), "0 Recipients");
    EXPECT_EQ(Label("lblStatus"), "List [gone] no longer exists: check the recipients");
    EXPECT_EQ(profile.Log("ErrorLog.txt"), QStringList());
}

TEST_F(frmComposeUnsentTest, OfSeveralListsTheOnesThatAreThereComeBack) {
    TwoLists();
    profile.Write("unsent.ini", "[Message]\r\nSubject=News\r\nRecipients=lists\r\nList=gone\r\nList=b\r\n");
    Open();
    Click("cmdUnsentRestore");
    EXPECT_EQ(Recipients(), "2 Recipients");
    EXPECT_EQ(Label("lblStatus"), "List [gone] no longer exists: check the recipients");
}

TEST_F(frmComposeUnsentTest, ASelectionOfAddressesBecomesNobody) {
    TwoLists();
    host.Current = "a";
    host.Selected = QStringList{"one@x.test"};
    Open();
    WriteFor("Current Selection");
    Reopen();
    Click("cmdUnsentRestore");
    EXPECT_EQ(To()->currentIndex(), -1);
    EXPECT_EQ(Recipients(), "0 Recipients");
    EXPECT_EQ(Label("lblStatus"), "Choose the recipients again: selected addresses are not kept");
}

TEST_F(frmComposeUnsentTest, AnAttachmentThatIsGoneIsToldOfByTheBar) {
    profile.Write("unsent.ini", "[Message]\r\nSubject=News\r\nAttachment=/nowhere/gone.txt\r\n");
    Open();
    Click("cmdUnsentRestore");
    EXPECT_EQ(host.Attachments, QStringList{"/nowhere/gone.txt"});
    EXPECT_TRUE(Indicator()->isVisible());
    EXPECT_EQ(Find<NoticeBar>("barAttachments")->Sentence(),
              "An attached file can no longer be read: [gone.txt]");
    EXPECT_TRUE(Find<NoticeBar>("barAttachments")->isVisible());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(frmComposeUnsentTest, AMessageThatWasSentIsNotKept) {
    Prepare("a@x.test\r\n");
    TenSecondsPass();
    EXPECT_TRUE(IsKept());
    bool wasKeptUnderTheSummary = true;
    profile.Boxes.OnBox = [&](const QString &) { wasKeptUnderTheSummary = IsKept(); };
    Choose("mnuMessageSend");
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.isNull(); }));
    EXPECT_FALSE(wasKeptUnderTheSummary);
    EXPECT_FALSE(IsKept());
}

TEST_F(frmComposeUnsentTest, ASendThatIsCutShortIsKeptAndNotRestoredIntoMeanwhile) {
    profile.Write("unsent.ini", "[Message]\r\nSubject=Older\r\n");
    Prepare("a@x.test\r\nb@x.test\r\n");
    bool isEnabled = true;
    mailers.OnSend = [&] {
        isEnabled = Bar()->isEnabled();
        window->close();
        return Outcome();
    };
    Choose("mnuMessageSend");
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.isNull(); }));
    EXPECT_FALSE(isEnabled);
    const QByteArray kept = profile.Read("unsent.ini");
    EXPECT_TRUE(kept.contains("Subject=Older\r\n"));
    EXPECT_TRUE(kept.contains("Text=Hello.\r\n"));
}

TEST_F(frmComposeUnsentTest, ADiskThatTakesNothingIsToldOnceWhileTypingAndAtTheEnd) {
    Open();
    ASSERT_TRUE(QDir().mkpath(profile.Path("unsent.ini/taken")));
    Type("a");
    TenSecondsPass();
    Type("b");
    TenSecondsPass();
    EXPECT_TRUE(Label("lblStatus").startsWith("The message cannot be kept until it is sent: "));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(profile.Log("ErrorLog.txt").size(), 1);
    window->close();
    EXPECT_EQ(profile.Boxes.Texts().size(), 1);
    EXPECT_TRUE(profile.Log("ErrorLog.txt").value(1).contains(" in Compose.KeepUnsent - "));
}

TEST_F(frmComposeUnsentTest, NobodyIsAskedWhileTheProgramEnds) {
    Open();
    ASSERT_TRUE(QDir().mkpath(profile.Path("unsent.ini/taken")));
    Type("a");
    profile.session.AppExiting = true;
    delete window;
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(profile.Log("ErrorLog.txt").size(), 1);
}

// ---- Size and place

TEST_F(frmComposeUnsentTest, WithBothBarsFitsASmallScreenAtTwiceTheSize) {
    profile.Write("unsent.ini", "[Message]\r\nSubject=" + QByteArray(500, 'w') + "\r\n");
    host.Attachments = QStringList{profile.Path(QString(200, u'w'))};
    Open();
    EXPECT_TRUE(Bar()->isVisible());
    EXPECT_TRUE(Find<NoticeBar>("barAttachments")->isVisible());
    const QSize least = window->minimumSizeHint();
    EXPECT_LE(least.width(), 1024 / 2);
    EXPECT_LE(least.height(), 600 / 2 - 24); // the frame's caption
}

TEST_F(frmComposeUnsentTest, SizeAndPlaceAreKept) {
    Open();
    window->setGeometry(40, 60, 530, 410);
    QCoreApplication::processEvents();
    Reopen();
    EXPECT_EQ(window->size(), QSize(530, 410));
    EXPECT_TRUE(profile.Read("prefs.ini").contains("ComposeGeometry="));
}

} // namespace
} // namespace varlo
