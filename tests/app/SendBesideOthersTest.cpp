// A send goes on whatever else the operator opens, and whatever else waits for a server.

#include "app/frmMain.h"
#include "core/Literals.h"
#include "core/WidgetDialogs.h"
#include "support/FakeMailer.h"
#include "support/FakePop3Server.h"
#include "support/TestProfile.h"
#include "support/WaitUntil.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <gtest/gtest.h>

namespace varlo::test {
namespace {

constexpr int kRecipients = 3000;

// The whole program with its real boxes, and a send of its compose window that gets an answer every
// millisecond.
class SendBesideOthersTest : public testing::Test {
protected:
    SendBesideOthersTest() {
        QByteArray list;
        for (int i = 0; i < kRecipients; ++i)
            list += "a" + QByteArray::number(i) + "@x.test\r\n";
        profile.Write(u"lists/news.vlo"_s, list);
        profile.Write(u"prefs.ini"_s,
                      "[General]\r\nNotify=1\r\n[SMTP]\r\nSMTPServer=mail.x.test\r\nSMTPFrom=Ann\r\n"
                      "SMTPEmail=ann@x.test\r\n[POP3]\r\nPOPServer=127.0.0.1\r\nPOPUsername=joe\r\n"
                      "POPPassword=secret\r\n[Main]\r\nLogStatus=0\r\n");
        session.ProfilePath = profile.session.ProfilePath;
        window.Form_Load();
        QObject::connect(&pace, &QTimer::timeout, &pace, [this] {
            if (mailers.IsBusy())
                mailers.Finish();
        });
    }
    ~SendBesideOthersTest() override { session.AppExiting = true; }

    template<typename Control> static Control *Find(const QWidget *in, const char *name) {
        auto *control = in->findChild<Control *>(QString::fromLatin1(name));
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    // A click, once the controls have followed the lists.
    void Click(const char *button) const {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
        Find<QPushButton>(&window, button)->click();
    }
    void Choose(const char *entry) const { Find<QAction>(&window, entry)->trigger(); }
    void Type(const QString &address) const { Find<QLineEdit>(&window, "txtAddEmail")->setText(address); }

    // Begins to send; returns when the first message is on its way.
    void Send() {
        mailers.OnSend = [] { return std::nullopt; };
        Choose("mnuCompose");
        for (QWidget *top : QApplication::topLevelWidgets())
            if (top->objectName() == u"frmCompose"_s)
                compose = top;
        Find<QLineEdit>(compose, "txtSubject")->setText(u"News"_s);
        Find<QPlainTextEdit>(compose, "txtMessage")->setPlainText(u"Hello."_s);
        const auto *count = Find<QLabel>(compose, "lblStatusRecipients");
        ASSERT_TRUE(WaitUntil([&] { return count->text() == u"%1 Recipients"_s.arg(kRecipients); }));
        Find<QAction>(compose, "mnuMessageSend")->trigger();
        ASSERT_TRUE(WaitUntil([this] { return mailers.IsBusy(); }));
    }

    bool GoesOn() {
        return WaitUntil([this, enough = mailers.Sent.size() + 10] { return mailers.Sent.size() >= enough; },
                         5000);
    }

    // Opens a box, and closes it when ten more messages have gone out. False when they do not, or no box comes.
    bool GoesOnUnder(const std::function<void()> &open) {
        QPointer<QWidget> box;
        size_t enough = 0;
        bool goesOn = false;
        QElapsedTimer limit;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, &look, [&] {
            if (!box) {
                box = QApplication::activeModalWidget();
                enough = mailers.Sent.size() + 10;
            }
            goesOn = box && mailers.Sent.size() >= enough;
            if (!goesOn && !limit.hasExpired(5000))
                return;
            look.stop();
            if (box)
                box->close();
        });
        limit.start();
        look.start(1);
        open();
        return WaitUntil([&] { return !look.isActive() && !QApplication::activeModalWidget(); }) && goesOn;
    }

    void AddRequests(int count) {
        for (int i = 0; i < count; ++i) {
            Type(u"new%1@x.test"_s.arg(i));
            Click("cmdEmailAdd_0");
        }
    }
    int Pending() const { return Find<QListView>(&window, "lstEmailList_2")->model()->rowCount(); }

    TestProfile profile;
    WidgetDialogs boxes;
    Session session{profile.Folder.path(), boxes};
    FakeMailers mailers;
    frmMain window{session, mailers.Maker()};
    QPointer<QWidget> compose;
    QTimer pace;
};

bool IsForCompose(const SentMail &mail) {
    return mail.Recipient.startsWith(u'"');
}

TEST_F(SendBesideOthersTest, NoBoxAndNoWindowHoldsItUp) {
    Send();
    pace.start(1);
    const QModelIndex row = Find<QListView>(&window, "lstEmailList_1")->model()->index(3, 0);
    const std::vector<std::pair<const char *, std::function<void()>>> boxesToOpen{
        {"edit",
         [&] {
             Find<QListView>(&window, "lstEmailList_1")
                 ->selectionModel()
                 ->select(row, QItemSelectionModel::Select);
             Click("cmdListEdit_0");
         }},
        {"search", [&] { Click("cmdListFind"); }},
        {"new list", [&] { Click("cmdFileNew"); }},
        {"rename", [&] { Click("cmdFileRename"); }},
        {"validity",
         [&] {
             Type(u"no address"_s);
             Click("cmdEmailValidate");
         }},
        {"preferences", [&] { Choose("mnuMainPreferences"); }},
        {"about", [&] { Choose("mnuHelpAbout"); }},
        {"attachments", [&] { Find<QAction>(compose, "mnuMessageAttach")->trigger(); }},
        {"no draft", [&] { Find<QAction>(compose, "mnuMessageOpen")->trigger(); }},
        {"mail check that fails", [&] { Click("cmdAutoAdd"); }},
    };
    for (const auto &[name, open] : boxesToOpen)
        EXPECT_TRUE(GoesOnUnder(open)) << name;
    Choose("mnuMainConsole");
    EXPECT_TRUE(GoesOn()) << "console";
    EXPECT_TRUE(compose->isVisible());
    compose->close();
    EXPECT_EQ(mailers.Alive, 0);
}

TEST_F(SendBesideOthersTest, ASilentServerOfOneHoldsUpNoNotification) {
    Send();
    mailers.OnSend = [] { return Outcome(); };
    AddRequests(12);
    Click("cmdCapturesAdd");
    EXPECT_TRUE(WaitUntil([this] { return Pending() == 0; }));
    EXPECT_EQ(mailers.Sent.size(), 13U) << "one message that waits, twelve notifications";
    mailers.Finish();
    EXPECT_TRUE(GoesOn());
}

TEST_F(SendBesideOthersTest, ASilentServerOfANotificationHoldsUpNoMessage) {
    Send();
    mailers.OnSend = [this]() -> std::optional<Outcome> {
        return IsForCompose(mailers.Current) ? std::optional(Outcome()) : std::nullopt;
    };
    AddRequests(1);
    Click("cmdCapturesAdd");
    mailers.Finish(); // the message that waited
    EXPECT_TRUE(WaitUntil([this] { return mailers.IsBusy(); })) << "the notification waits now";
    EXPECT_TRUE(GoesOn());
    EXPECT_EQ(Pending(), 1);
    mailers.Finish();
    EXPECT_TRUE(WaitUntil([this] { return Pending() == 0; }));
    EXPECT_TRUE(GoesOn());
}

TEST_F(SendBesideOthersTest, TwelveNotificationsAndASendTakeTurns) {
    Send();
    AddRequests(12);
    mailers.OnSend = [] { return Outcome(); };
    Click("cmdCapturesAdd");
    mailers.Finish();
    ASSERT_TRUE(WaitUntil([this] { return Pending() == 0; }));
    const auto notified = [](const SentMail &mail) { return !IsForCompose(mail); };
    const auto first = std::find_if(mailers.Sent.begin(), mailers.Sent.end(), notified);
    const auto last = std::find_if(mailers.Sent.rbegin(), mailers.Sent.rend(), notified).base();
    EXPECT_EQ(std::count_if(first, last, notified), 12);
    EXPECT_GE(std::count_if(first, last, IsForCompose), 11) << "a message between two notifications";
    EXPECT_TRUE(GoesOn());
}

} // namespace
} // namespace varlo::test
