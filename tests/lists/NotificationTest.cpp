// The mails that processing sends, and what happens while one is being sent.
#include "lists/ListsFixture.h"
#include "lists/PendingProcessing.h"
#include "support/FakeSmtp.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::FakeSmtp;
using test::Words;

class NotificationTest : public test::ListsFixture {
protected:
    NotificationTest() {
        session.Prefs.Notify = 1;
        session.Prefs.SMTPServer = QStringLiteral("mail.x.test");
        session.Prefs.SMTPPort = 2525;
        session.Prefs.SMTPFrom = QStringLiteral("Ann Editor");
        session.Prefs.SMTPEmail = QStringLiteral("ann@x.test");
        session.Prefs.SMTPWrap = 72;
        session.Prefs.SubSubject = QStringLiteral("Welcome");
        session.Prefs.SubBody = QStringLiteral("You are on the list.");
        session.Prefs.UnsubSubject = QStringLiteral("Goodbye");
        session.Prefs.UnsubBody = QStringLiteral("You are off the list.");
        FakeSmtp::OnCreated = [this](FakeSmtp &fake) {
            ++created;
            fake.OnSend = [this, &fake] {
                sent.push_back(fake.Sent.back());
                aborts = &fake.Aborts;
                return onSend(fake);
            };
        };
        OpenList(QStringLiteral("news"), Words("bb@x.test"));
    }
    ~NotificationTest() override {
        FakeSmtp::OnCreated = nullptr;
        EXPECT_EQ(FakeSmtp::Alive(), 0) << "a mailer outlived its run";
    }

    void Process(const QStringList &entries) {
        AddPending(entries);
        processing.Run();
    }
    QStringList Recipients() const {
        QStringList recipients;
        for (const FakeSmtp::Message &message : sent)
            recipients << message.Recipient;
        return recipients;
    }
    FakeSmtp::Message Mail(const char *recipient, const QString &subject, const QString &text) const {
        return {session.Prefs.SMTPServer,
                session.Prefs.SMTPPort,
                QStringLiteral("\"Ann Editor\" <ann@x.test>"),
                subject,
                text,
                QString::fromLatin1(recipient),
                {}};
    }

    int created = 0;
    const int *aborts = nullptr; // of the mailer that is sending
    std::vector<FakeSmtp::Message> sent;
    std::function<bool(FakeSmtp &)> onSend = [](FakeSmtp &) { return true; };
    PendingProcessing processing{session, lists};
};

TEST_F(NotificationTest, EachChangeIsToldToItsAddress) {
    Process(Words("+aa@x.test -BB@x.test"));
    EXPECT_EQ(sent,
              (std::vector<FakeSmtp::Message>{
                  Mail("aa@x.test", QStringLiteral("Welcome"), QStringLiteral("You are on the list.")),
                  Mail("BB@x.test", QStringLiteral("Goodbye"), QStringLiteral("You are off the list."))}));
    EXPECT_EQ(created, 1);
    EXPECT_EQ(TakeStatus(),
              (QStringList{QStringLiteral("Processing pending list"),
                           QStringLiteral("Processing pending list (1/2)"),
                           QStringLiteral("Processing pending list (1/2 - sending notification)"),
                           QStringLiteral("Processing pending list (2/2)"),
                           QStringLiteral("Processing pending list (2/2 - sending notification)"),
                           QStringLiteral("Pending list processing complete (+1, -1)")}));
}

TEST_F(NotificationTest, AnAddressThatComesAndGoesGetsBothMails) {
    Process(Words("+cc@x.test -cc@x.test"));
    EXPECT_EQ(Recipients(), Words("cc@x.test cc@x.test"));
    EXPECT_EQ(TakeStatus().last(), QStringLiteral("Pending list processing complete (+1, -1)"));
}

TEST_F(NotificationTest, WhatChangesNothingIsToldToNobody) {
    Process(Words("+BB@x.test -zz@x.test unsigned@x.test"));
    EXPECT_EQ(Recipients(), QStringList());
    EXPECT_EQ(TakeStatus().filter(QStringLiteral("notification")), QStringList());
}

TEST_F(NotificationTest, AnyOtherValueThanOneMakesNoMailer) {
    for (int notify : {0, 2, -1}) {
        session.Prefs.Notify = notify;
        Process({QStringLiteral("+n%1@x.test").arg(notify)});
    }
    EXPECT_EQ(created, 0);
    EXPECT_EQ(Recipients(), QStringList());
    EXPECT_EQ(TakeStatus().filter(QStringLiteral("notification")), QStringList());
}

TEST_F(NotificationTest, BackslashNIsALineBreakAndLinesAreWrapped) {
    session.Prefs.SubBody = QStringLiteral("aaaa bbbb cccc\\n\\ndd");
    session.Prefs.SMTPWrap = 10;
    Process(Words("+aa@x.test"));
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].Text, QStringLiteral("aaaa bbbb\r\ncccc\r\n\r\ndd"));
}

TEST_F(NotificationTest, AWidthThatCannotBeIsReportedAndTheRequestsAreProcessed) {
    session.Prefs.SMTPWrap = 0;
    Process(Words("+aa@x.test"));
    EXPECT_EQ(Errors(),
              QStringList(QStringLiteral("5 in Public.WordWrap - Invalid procedure call or argument")));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationTest, AMailThatFailsIsToldAndTheNextIsSent) {
    onSend = [](FakeSmtp &fake) {
        return fake.Current.Recipient != QStringLiteral("aa@x.test") ||
               fake.Fail(550, QStringLiteral("<b>no such user"));
    };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Recipients(), Words("aa@x.test cc@x.test"));
    EXPECT_TRUE(TakeStatus().contains(QStringLiteral("SMTP error 550 - <b>no such user")));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test cc@x.test"));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(profile.Log(QStringLiteral("PendingLog.txt")), Words("+aa@x.test +cc@x.test"));
}

TEST_F(NotificationTest, AFailureThatFindsNoStatusLogIsReportedAndTheRunGoesOn) {
    onSend = [this](FakeSmtp &fake) {
        BlockLog(QStringLiteral("StatusLog.txt"));
        fake.Fail(12002, QStringLiteral("timed out"));
        QDir(profile.Path(QStringLiteral("logs"))).rmdir(QStringLiteral("StatusLog.txt"));
        return false;
    };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Recipients(), Words("aa@x.test cc@x.test"));
    EXPECT_EQ(Errors(), (QStringList{QStringLiteral("70 in Main.SMTP_ErrorSMTP - Permission denied"),
                                     QStringLiteral("70 in Main.SMTP_ErrorSMTP - Permission denied")}));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationTest, TheChangeIsMadeBeforeItIsToldAndLoggedAfterwards) {
    onSend = [this](FakeSmtp &) {
        EXPECT_EQ(Current(), Words("bb@x.test aa@x.test"));
        EXPECT_EQ(profile.Log(QStringLiteral("PendingLog.txt")), QStringList());
        EXPECT_EQ(Pending(), Words("+aa@x.test"));
        return true;
    };
    Process(Words("+aa@x.test"));
    EXPECT_EQ(profile.Log(QStringLiteral("PendingLog.txt")), Words("+aa@x.test"));
}

TEST_F(NotificationTest, RequestsThatArriveWhileAMailIsSentStayPending) {
    onSend = [this](FakeSmtp &) {
        lists.AddPending(QStringLiteral("+late@x.test"));
        return true;
    };
    Process(Words("+aa@x.test -bb@x.test"));
    EXPECT_EQ(Pending(), Words("+late@x.test +late@x.test"));
    EXPECT_EQ(Current(), Words("aa@x.test"));
    EXPECT_EQ(profile.Log(QStringLiteral("PendingLog.txt")), Words("+aa@x.test -bb@x.test"));
}

TEST_F(NotificationTest, RequestsThatArriveAtTheYieldStayPending) {
    QTimer::singleShot(0, &lists, [this] { lists.AddPending(QStringLiteral("+late@x.test")); });
    Process(Words("+aa@x.test"));
    EXPECT_EQ(Pending(), Words("+late@x.test"));
}

TEST_F(NotificationTest, ASecondRunDuringARunDoesNothing) {
    onSend = [this](FakeSmtp &) {
        EXPECT_TRUE(processing.IsRunning());
        processing.Run();
        return true;
    };
    QTimer::singleShot(0, &processing, &PendingProcessing::Run);
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(created, 1);
    EXPECT_EQ(Recipients(), Words("aa@x.test cc@x.test"));
    EXPECT_EQ(profile.Log(QStringLiteral("PendingLog.txt")), Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(TakeStatus().filter(QStringLiteral("complete")).size(), 1);
}

TEST_F(NotificationTest, AbortReachesTheMailerThatIsSending) {
    onSend = [this](FakeSmtp &) {
        processing.Abort();
        EXPECT_EQ(*aborts, 1);
        return false;
    };
    Process(Words("+aa@x.test"));
    processing.Abort(); // nobody is sending any more
    EXPECT_EQ(Recipients(), Words("aa@x.test"));
}

TEST_F(NotificationTest, WhenTheProgramClosesTheRunEndsAndAllRequestsStay) {
    onSend = [this](FakeSmtp &) {
        session.AppExiting = true;
        return false;
    };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Recipients(), Words("aa@x.test"));
    EXPECT_EQ(Pending(), Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(TakeStatus().filter(QStringLiteral("complete")), QStringList());
}

TEST_F(NotificationTest, WhenTheProgramClosesAtTheYieldNoMailIsSent) {
    QTimer::singleShot(0, &lists, [this] { session.AppExiting = true; });
    Process(Words("+aa@x.test"));
    EXPECT_EQ(Recipients(), QStringList());
}

TEST_F(NotificationTest, EachRunTakesTheSettingsOfItsTime) {
    Process(Words("+aa@x.test"));
    session.Prefs.SMTPServer = QStringLiteral("other.x.test");
    Process(Words("+cc@x.test"));
    EXPECT_EQ(created, 2);
    EXPECT_EQ(sent.back().Server, QStringLiteral("other.x.test"));
}

} // namespace
} // namespace varlo
