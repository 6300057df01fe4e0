// The mails that processing sends, and what happens while one is being sent.
#include "core/Literals.h"
#include "core/Preferences.h"
#include "lists/ListsFixture.h"
#include "lists/PendingProcessing.h"
#include "support/FakeMailer.h"
#include "support/WaitUntil.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::Failure;
using test::OwnFailure;
using test::SentMail;
using test::WaitUntil;
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
        OpenList(u"news"_s, Words("bb@x.test"));
    }
    ~NotificationTest() override { EXPECT_EQ(mailers.Alive, 0) << "a mailer outlived its run"; }

    // Returns when the run is over.
    void Process(const QStringList &entries) {
        AddPending(entries);
        processing.Run();
        EXPECT_TRUE(WaitUntil([this] { return !processing.IsRunning(); }));
    }
    QStringList Recipients() const { return mailers.Recipients(); }
    SentMail Mail(const char *recipient, const QString &subject, const QString &text) const {
        return {session.Prefs.SMTPServer,
                session.Prefs.SMTPPort,
                u"\"Ann Editor\" <ann@x.test>"_s,
                subject,
                text,
                QString::fromLatin1(recipient),
                {}};
    }

    PendingProcessing processing{session, lists, mailers.Maker()};
};

TEST_F(NotificationTest, EachChangeIsToldToItsAddress) {
    Process(Words("+aa@x.test -BB@x.test"));
    EXPECT_EQ(mailers.Sent,
              (std::vector<SentMail>{Mail("aa@x.test", u"Welcome"_s, u"You are on the list."_s),
                                     Mail("BB@x.test", u"Goodbye"_s, u"You are off the list."_s)}));
    EXPECT_EQ(mailers.Made, 1);
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

TEST_F(NotificationTest, AnAccountThatCannotBeRightStopsTheRunBeforeItsFirstChange) {
    session.Prefs.SMTPEmail = u"List <list@x.test>"_s;
    Process(Words("+aa@x.test -bb@x.test"));
    ASSERT_EQ(profile.Boxes.Shown.size(), 1U);
    EXPECT_EQ(profile.Boxes.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_TRUE(profile.Boxes.Shown[0].Text.startsWith(u"The e-mail address [List <list@x.test>]"_s));
    EXPECT_EQ(Current(), Words("bb@x.test"));
    EXPECT_EQ(Pending(), Words("+aa@x.test -bb@x.test"));
    EXPECT_EQ(mailers.Made, 0);
    session.Prefs.Notify = 0; // nobody is to be told: it does not matter
    processing.Run();
    EXPECT_EQ(Current(), Words("aa@x.test"));
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
    EXPECT_EQ(mailers.Made, 0);
    EXPECT_EQ(Recipients(), QStringList());
    EXPECT_EQ(TakeStatus().filter(u"notification"_s), QStringList());
}

TEST_F(NotificationTest, BackslashNIsALineBreakAndLinesAreWrapped) {
    session.Prefs.SubBody = u"aaaa bbbb cccc\\n\\ndd"_s;
    session.Prefs.SMTPWrap = 10;
    Process(Words("+aa@x.test"));
    ASSERT_EQ(mailers.Sent.size(), 1U);
    EXPECT_EQ(mailers.Sent[0].Text, u"aaaa bbbb\r\ncccc\r\n\r\ndd"_s);
}

TEST_F(NotificationTest, AWidthThatCannotBeIsReportedAndTheRequestsAreProcessed) {
    session.Prefs.SMTPWrap = 0;
    Process(Words("+aa@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"5 in Public.WordWrap - Invalid procedure call or argument"_s));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationTest, AMailThatFailsIsToldAndTheNextIsSent) {
    mailers.OnSend = [this] {
        return mailers.Sent.back().Recipient != u"aa@x.test"_s ? Outcome()
                                                               : Failure(550, u"<b>no such user"_s);
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
    mailers.OnSend = [this] {
        BlockLog(u"StatusLog.txt"_s);
        return Failure(12002, u"timed out"_s);
    };
    profile.Boxes.OnBox = [this](const QString &) {
        QDir(profile.Path(u"logs"_s)).rmdir(u"StatusLog.txt"_s);
    };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Recipients(), Words("aa@x.test cc@x.test"));
    EXPECT_EQ(Errors(), (QStringList{u"70 in Main.SMTP_ErrorSMTP - Permission denied"_s,
                                     u"70 in Main.SMTP_ErrorSMTP - Permission denied"_s}));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationTest, TheChangeIsMadeBeforeItIsToldAndLoggedAfterwards) {
    mailers.OnSend = [this] {
        EXPECT_EQ(Current(), Words("bb@x.test aa@x.test"));
        EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), QStringList());
        EXPECT_EQ(Pending(), Words("+aa@x.test"));
        return Outcome();
    };
    Process(Words("+aa@x.test"));
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test"));
}

TEST_F(NotificationTest, RequestsThatArriveWhileAMailIsSentStayPending) {
    mailers.OnSend = [this] {
        lists.Pending.Offer(PendingRequest::FromEntry(u"+late@x.test"_s, RequestOrigin::FailedDelivery));
        return Outcome();
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
    mailers.OnSend = [this] {
        EXPECT_TRUE(processing.IsRunning());
        processing.Run();
        return Outcome();
    };
    QTimer::singleShot(0, &processing, &PendingProcessing::Run);
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(mailers.Made, 1);
    EXPECT_EQ(Recipients(), Words("aa@x.test cc@x.test"));
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(TakeStatus().filter(u"complete"_s).size(), 1);
}

TEST_F(NotificationTest, AbortReachesTheMailerThatIsSending) {
    mailers.OnSend = [this] {
        processing.Abort();
        EXPECT_EQ(mailers.Alive, 0);
        return Outcome();
    };
    Process(Words("+aa@x.test"));
    processing.Abort(); // nobody is sending any more
    EXPECT_EQ(Recipients(), Words("aa@x.test"));
}

TEST_F(NotificationTest, WhenTheProgramClosesTheRunEndsAndAllRequestsStay) {
    mailers.OnSend = [this] {
        session.AppExiting = true;
        return Failure(12030, u"closing"_s);
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

// ---- What happens meanwhile

TEST_F(NotificationTest, TheRunGoesOnFromEventToEvent) {
    AddPending(Words("+aa@x.test"));
    processing.Run();
    EXPECT_TRUE(processing.IsRunning());
    EXPECT_EQ(Recipients(), QStringList()) << "the windows have their events first";
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test"));
    EXPECT_TRUE(WaitUntil([this] { return !processing.IsRunning(); }));
    EXPECT_EQ(Recipients(), Words("aa@x.test"));
}

TEST_F(NotificationTest, ABoxThatIsOpenHoldsNothingUp) {
    bool endedUnderTheBox = false;
    profile.Boxes.OnBox = [&](const QString &) {
        endedUnderTheBox = WaitUntil([this] { return !processing.IsRunning(); });
    };
    AddPending(Words("+aa@x.test -bb@x.test +cc@x.test"));
    processing.Run();
    session.Boxes.MsgBox(u"open"_s);
    EXPECT_TRUE(endedUnderTheBox);
    EXPECT_EQ(Recipients(), Words("aa@x.test bb@x.test cc@x.test"));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationTest, AFaultOfThisMachineEndsTheRunAndAllRequestsStay) {
    mailers.OnSend = [] { return OwnFailure(53, u"File not found"_s); };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"53 in Main.cmdCapturesAdd - File not found"_s));
    EXPECT_EQ(Pending(), Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), QStringList());
}

TEST_F(NotificationTest, AFaultOfTheAccountEndsTheRunAndAllRequestsStay) {
    mailers.OnSend = [] { return test::AccountFailure(535, u"The password was refused."_s); };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"535 in Main.cmdCapturesAdd - The password was refused."_s));
    EXPECT_EQ(Pending(), Words("+aa@x.test +cc@x.test"));
}

TEST_F(NotificationTest, ARequestThatWaitsForItsMailIsLoggedWhenTheRunIsEnded) {
    mailers.OnSend = [] { return std::nullopt; };
    AddPending(Words("+aa@x.test +cc@x.test"));
    processing.Run();
    ASSERT_TRUE(WaitUntil([this] { return mailers.IsBusy(); }));
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), QStringList());
    processing.Abort();
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test"));
    EXPECT_FALSE(processing.IsRunning());
    EXPECT_EQ(mailers.Alive, 0);
    EXPECT_EQ(Pending(), Words("+aa@x.test +cc@x.test"));
}

TEST_F(NotificationTest, ARunThatIsEndedAtTheYieldSendsAndDoesNothingMore) {
    AddPending(Words("+aa@x.test +cc@x.test"));
    processing.Run();
    processing.Abort();
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test"));
    TakeStatus();
    QCoreApplication::processEvents();
    EXPECT_EQ(Recipients() + TakeStatus(), QStringList());
}

TEST_F(NotificationTest, ARunThatEndsUnderTheBoxOfItsOwnErrorIsOver) {
    mailers.OnSend = [this] {
        BlockLog(u"StatusLog.txt"_s);
        return Failure(550, u"no"_s);
    };
    profile.Boxes.OnBox = [this](const QString &) { processing.Abort(); };
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Errors(), QStringList(u"70 in Main.SMTP_ErrorSMTP - Permission denied"_s));
    EXPECT_EQ(profile.Log(u"PendingLog.txt"_s), Words("+aa@x.test"));
    EXPECT_EQ(Pending(), Words("+aa@x.test +cc@x.test"));
}

TEST_F(NotificationTest, EachRunTakesTheSettingsOfItsTime) {
    Process(Words("+aa@x.test"));
    session.Prefs.SMTPServer = u"other.x.test"_s;
    Process(Words("+cc@x.test"));
    EXPECT_EQ(mailers.Made, 2);
    EXPECT_EQ(mailers.Sent.back().Server, u"other.x.test"_s);
}

} // namespace
} // namespace varlo
