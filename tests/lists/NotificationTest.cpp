// The mails that processing sends, and what happens while one is being sent.
#include "core/Literals.h"
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
        session.Prefs.SMTPServer = u"mail.x.test"_s;
        session.Prefs.SMTPPort = 2525;
        session.Prefs.SMTPFrom = u"Ann Editor"_s;
        session.Prefs.SMTPEmail = u"ann@x.test"_s;
        session.Prefs.SMTPWrap = 72;
        session.Prefs.SubSubject = u"Welcome"_s;
        session.Prefs.SubBody = u"You are on the list."_s;
        session.Prefs.UnsubSubject = u"Goodbye"_s;
        session.Prefs.UnsubBody = u"You are off the list."_s;
        FakeSmtp::OnCreated = [this](FakeSmtp &fake) {
            ++created;
            fake.OnSend = [this, &fake] {
                sent.push_back(fake.Sent.back());
                aborts = &fake.Aborts;
                return onSend(fake);
            };
        };
        OpenList(u"news"_s, Words("bb@x.test"));
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
                u"\"Ann Editor\" <ann@x.test>"_s,
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
              (std::vector<FakeSmtp::Message>{Mail("aa@x.test", u"Welcome"_s, u"You are on the list."_s),
                                              Mail("BB@x.test", u"Goodbye"_s, u"You are off the list."_s)}));
    EXPECT_EQ(created, 1);
    EXPECT_EQ(TakeStatus(), (QStringList{u"Processing pending list"_s, u"Processing pending list (1/2)"_s,
                                         u"Processing pending list (1/2 - sending notification)"_s,
                                         u"Processing pending list (2/2)"_s,
                                         u"Processing pending list (2/2 - sending notification)"_s,
                                         u"Pending list processing complete (+1, -1)"_s}));
}

TEST_F(NotificationTest, AnAddressThatComesAndGoesGetsBothMails) {
    Process(Words("+cc@x.test -cc@x.test"));
    EXPECT_EQ(Recipients(), Words("cc@x.test cc@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (+1, -1)"_s);
}

TEST_F(NotificationTest, WhatChangesNothingIsToldToNobody) {
    Process(Words("+BB@x.test -zz@x.test unsigned@x.test"));
    EXPECT_EQ(Recipients(), QStringList());
    EXPECT_EQ(TakeStatus().filter(u"notification"_s), QStringList());
}

TEST_F(NotificationTest, AnyOtherValueThanOneMakesNoMailer) {
    for (int notify : {0, 2, -1}) {
        session.Prefs.Notify = notify;
        Process({u"+n%1@x.test"_s.arg(notify)});
    }
    EXPECT_EQ(created, 0);
    EXPECT_EQ(Recipients(), QStringList());
    EXPECT_EQ(TakeStatus().filter(u"notification"_s), QStringList());
}

TEST_F(NotificationTest, BackslashNIsALineBreakAndLinesAreWrapped) {
    session.Prefs.SubBody = u"aaaa bbbb cccc\\n\\ndd"_s;
    session.Prefs.SMTPWrap = 10;
    Process(Words("+aa@x.test"));
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0].Text, u"aaaa bbbb\r\ncccc\r\n\r\ndd"_s);
}

TEST_F(NotificationTest, AWidthThatCannotBeIsReportedAndTheRequestsAreProcessed) {
    session.Prefs.SMTPWrap = 0;
    Process(Words("+aa@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"5 in Public.WordWrap - Invalid procedure call or argument"_s));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationTest, AMailThatFailsIsToldAndTheNextIsSent) {
    onSend = [](FakeSmtp &fake) {
        return fake.Current.Recipient != u"aa@x.test"_s || fake.Fail(550, u"<b>no such user"_s);
    };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Recipients(), Words("aa@x.test cc@x.test"));
    EXPECT_TRUE(TakeStatus().contains(u"SMTP error 550 - <b>no such user"_s));
    EXPECT_EQ(Pending(), QStringList());
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test cc@x.test"));
    EXPECT_EQ(profile.Boxes.Texts(), QStringList());
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test +cc@x.test"));
}

TEST_F(NotificationTest, AFailureThatFindsNoStatusLogIsReportedAndTheRunGoesOn) {
    onSend = [this](FakeSmtp &fake) {
        BlockLog(u"StatusLog.txt"_s);
        fake.Fail(12002, u"timed out"_s);
        QDir(profile.Path(u"logs"_s)).rmdir(u"StatusLog.txt"_s);
        return false;
    };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Recipients(), Words("aa@x.test cc@x.test"));
    EXPECT_EQ(Errors(), (QStringList{u"70 in Main.SMTP_ErrorSMTP - Permission denied"_s,
                                     u"70 in Main.SMTP_ErrorSMTP - Permission denied"_s}));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationTest, TheChangeIsMadeBeforeItIsToldAndLoggedAfterwards) {
    onSend = [this](FakeSmtp &) {
        EXPECT_EQ(Current(), Words("bb@x.test aa@x.test"));
        EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), QStringList());
        EXPECT_EQ(Pending(), Words("+aa@x.test"));
        return true;
    };
    Process(Words("+aa@x.test"));
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test"));
}

TEST_F(NotificationTest, RequestsThatArriveWhileAMailIsSentStayPending) {
    onSend = [this](FakeSmtp &) {
        lists.Pending.Offer(PendingRequest::FromEntry(u"+late@x.test"_s, RequestOrigin::FailedDelivery));
        return true;
    };
    Process(Words("+aa@x.test -bb@x.test"));
    EXPECT_EQ(Pending(), Words("+late@x.test +late@x.test"));
    EXPECT_EQ(Current(), Words("aa@x.test"));
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test -bb@x.test"));
}

TEST_F(NotificationTest, RequestsThatArriveAtTheYieldStayPending) {
    QTimer::singleShot(0, &lists.Open, [this] {
        lists.Pending.Offer(PendingRequest::FromEntry(u"+late@x.test"_s, RequestOrigin::FailedDelivery));
    });
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
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(TakeStatus().filter(u"complete"_s).size(), 1);
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
    EXPECT_EQ(TakeStatus().filter(u"complete"_s), QStringList());
}

TEST_F(NotificationTest, WhenTheProgramClosesAtTheYieldNoMailIsSent) {
    QTimer::singleShot(0, &lists.Open, [this] { session.AppExiting = true; });
    Process(Words("+aa@x.test"));
    EXPECT_EQ(Recipients(), QStringList());
}

TEST_F(NotificationTest, EachRunTakesTheSettingsOfItsTime) {
    Process(Words("+aa@x.test"));
    session.Prefs.SMTPServer = u"other.x.test"_s;
    Process(Words("+cc@x.test"));
    EXPECT_EQ(created, 2);
    EXPECT_EQ(sent.back().Server, u"other.x.test"_s);
}

} // namespace
} // namespace varlo
