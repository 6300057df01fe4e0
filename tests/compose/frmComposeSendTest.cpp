// Sending from the compose window: what the engine is given, what the window shows meanwhile, how it ends.

#include "compose/ComposeFixture.h"
#include "support/WaitUntil.h"

#include <QMenu>
#include <QProgressBar>

namespace varlo {
namespace {

using test::Failure;
using test::SentMail;

class frmComposeSendTest : public test::ComposeFixture {
protected:
    void Send() const {
        Choose("mnuMessageSend");
        WaitForTheEnd();
    }
    void WaitForTheEnd() const {
        EXPECT_TRUE(test::WaitUntil([this] {
            return !window || !window->isVisible() || Find<QProgressBar>("prgSending")->isHidden();
        }));
    }
    bool IsGone() const {
        return QTest::qWaitFor([this] { return window.isNull(); });
    }
};

TEST_F(frmComposeSendTest, AnUntouchedSignatureIsNoMessage) {
    Ini("[Signature]\r\nText=Jo\r\n");
    Prepare("a@x.test\r\n");
    Choose("mnuMessageClearAll");
    Subject()->setText("News");
    Send();
    EXPECT_EQ(profile.Boxes.Texts(),
              QStringList("You must enter a subject and a message before you can send an e-mail."));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(frmComposeSendTest, WithoutRecipientsNothingIsSent) {
    Prepare("");
    Send();
    EXPECT_EQ(profile.Boxes.Texts(),
              QStringList("You must select some recipients before you can send an e-mail."));
    EXPECT_EQ(mailers.Recipients(), QStringList());
}

TEST_F(frmComposeSendTest, TheMessageReachesEveryRecipientAsItStandsInTheWindow) {
    Prepare("a@x.test\r\nb@x.test\r\nA@x.test\r\n");
    Find<QLineEdit>("txtTo")->setText("Friends");
    Body()->SetText("Hello,\r\n\r\nbye");
    profile.Write("file.txt", "x");
    host.Attachments = QStringList{profile.Path("file.txt")};
    Indicator()->show();
    std::vector<SentMail> sent;
    profile.Boxes.OnBox = [&](const QString &) { sent = mailers.Sent; };
    Send();
    SentMail message{"mail.example.org",
                     25,
                     "\"Ann Editor\" <ann@example.org>",
                     "News",
                     "Hello,\r\n\r\nbye",
                     "\"Friends\" <a@x.test>",
                     {profile.Path("file.txt")}};
    SentMail second = message;
    second.Recipient = "\"Friends\" <b@x.test>";
    EXPECT_EQ(sent, (std::vector<SentMail>{message, second}));
}

TEST_F(frmComposeSendTest, AttachmentsStayBehindWhileTheIndicatorIsHidden) {
    Prepare("a@x.test\r\n");
    profile.Write("file.txt", "x");
    host.Attachments = QStringList{profile.Path("file.txt")};
    Indicator()->hide();
    QStringList attached{"none sent"};
    profile.Boxes.OnBox = [&](const QString &) { attached = mailers.Sent.at(0).Attachments; };
    Send();
    EXPECT_EQ(attached, QStringList());
}

TEST_F(frmComposeSendTest, TheWindowClosesOnceTheSummaryIsRead) {
    Prepare("a@x.test\r\n");
    QString caption;
    bool isVisible = false;
    profile.Boxes.OnBox = [&](const QString &) {
        caption = window->windowTitle();
        isVisible = window->isVisible();
    };
    Send();
    EXPECT_EQ(caption, "Send Complete");
    EXPECT_TRUE(isVisible);
    EXPECT_EQ(profile.Boxes.Texts(), QStringList("Message sending complete.\r\n\r\n- The sending process "
                                                 "lasted 0 secs\r\n- The message was sent to "
                                                 "1 recipients"));
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(IsGone());
}

TEST_F(frmComposeSendTest, FailedAddressesReachThePendingList) {
    Prepare("a@x.test\r\nb@x.test\r\n");
    mailers.OnSend = [] { return Failure(550, "no such user"); };
    Send();
    EXPECT_EQ(host.Pending, QStringList({"-a@x.test", "-b@x.test"}));
}

TEST_F(frmComposeSendTest, MenusAndInputsAreDisabledMeanwhile) {
    Prepare("a@x.test\r\nb@x.test\r\n");
    const QList<QWidget *> inputs{Find<QMenu>("mnuMessage"),
                                  Find<QMenu>("mnuEdit"),
                                  Find<QMenu>("mnuInsert"),
                                  To(),
                                  Find<QLineEdit>("txtTo"),
                                  Subject(),
                                  Body(),
                                  Indicator()};
    int disabled = 0;
    QStringList titles;
    bool isProgressShown = false;
    mailers.OnSend = [&] {
        disabled = static_cast<int>(std::count_if(inputs.begin(), inputs.end(),
                                                  [](const QWidget *input) { return !input->isEnabled(); }));
        titles << window->windowTitle();
        isProgressShown = Find<QProgressBar>("prgSending")->isVisible();
        return Outcome();
    };
    Send();
    EXPECT_EQ(disabled, inputs.size());
    EXPECT_EQ(titles, QStringList({"Sending: 0% Complete", "Sending: 0% Complete"}));
    EXPECT_TRUE(isProgressShown);
}

TEST_F(frmComposeSendTest, TheKeysOfTheMenusDoNothingMeanwhile) {
    Prepare("a@x.test\r\n");
    mailers.OnSend = [this] {
        QTest::keyClick(window, Qt::Key_S, Qt::ControlModifier);
        QTest::keyClick(window, Qt::Key_Return, Qt::ControlModifier);
        return Outcome();
    };
    Send();
    EXPECT_FALSE(QFile::exists(profile.Path("draft.txt")));
    EXPECT_EQ(profile.Boxes.Texts().size(), 1);
}

TEST_F(frmComposeSendTest, ClosingMeanwhileAsksNothingAndStops) {
    Prepare("a@x.test\r\nb@x.test\r\nc@x.test\r\n");
    bool isVisible = true;
    mailers.OnSend = [&] {
        window->close();
        isVisible = window->isVisible();
        return Outcome();
    };
    Send();
    EXPECT_FALSE(isVisible);
    EXPECT_EQ(mailers.Recipients(), QStringList("\"Mailing List\" <a@x.test>"));
    EXPECT_EQ(mailers.Alive, 0);
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(host.Pending, QStringList());
    EXPECT_TRUE(IsGone());
}

// A key that closes boxes is pressed once too often; half a list without its message cannot be told apart.
TEST_F(frmComposeSendTest, EscMeanwhileStopsNothing) {
    Prepare("a@x.test\r\nb@x.test\r\n");
    mailers.OnSend = [this] {
        QTest::keyClick(window, Qt::Key_Escape);
        return Outcome();
    };
    Send();
    EXPECT_EQ(mailers.Recipients().size(), 2);
    EXPECT_EQ(profile.Boxes.Texts().size(), 1) << "the summary";
}

TEST_F(frmComposeSendTest, EscAtAnyOtherTimeKeepsTheMessage) {
    Prepare("a@x.test\r\n");
    QTest::keyClick(window, Qt::Key_Escape);
    Press(Qt::Key_Escape, Qt::NoModifier);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(Body()->Text(), "Hello.");
}

TEST_F(frmComposeSendTest, AWindowThatIsClosedMeanwhileIsGoneAtOnce) {
    Prepare("a@x.test\r\nb@x.test\r\n");
    bool isAlive = true;
    mailers.OnSend = [&] {
        window->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        isAlive = !window.isNull();
        return Outcome();
    };
    Send();
    EXPECT_FALSE(isAlive);
    EXPECT_EQ(mailers.Alive, 0);
    EXPECT_EQ(mailers.Recipients().size(), 1);
}

TEST_F(frmComposeSendTest, DestroyingTheWindowMeanwhileIsSafe) {
    Prepare("a@x.test\r\nb@x.test\r\n");
    int sent = 0;
    mailers.OnSend = [&] {
        ++sent;
        delete window;
        return Failure(550, "no such user");
    };
    Send();
    EXPECT_EQ(sent, 1);
    EXPECT_EQ(host.Pending, QStringList());
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
}

TEST_F(frmComposeSendTest, ASendThatFailsAsAWholeLeavesTheWindowReady) {
    Prepare("a@x.test\r\n");
    host.Attachments = QStringList{profile.Path("gone")};
    Indicator()->show();
    Send();
    EXPECT_EQ(mailers.Recipients(), QStringList());
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->windowTitle(), "Compose");
    EXPECT_TRUE(Body()->isEnabled());
    EXPECT_EQ(Body()->Text(), "Hello.");
}

TEST_F(frmComposeSendTest, CtrlReturnSends) {
    Prepare("a@x.test\r\n");
    QStringList recipients;
    profile.Boxes.OnBox = [&](const QString &) { recipients = mailers.Recipients(); };
    Body()->setFocus();
    Press(Qt::Key_Return);
    WaitForTheEnd();
    EXPECT_EQ(recipients, QStringList("\"Mailing List\" <a@x.test>"));
}

} // namespace
} // namespace varlo
