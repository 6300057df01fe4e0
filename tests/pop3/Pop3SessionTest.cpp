// The mailbox session as a dialogue: the server says, the client does, nothing more.
#include "pop3/Pop3Session.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "support/Printers.h"

#include <QByteArrayList>
#include <gtest/gtest.h>

namespace varlo {

using Kind = Pop3Effect::Kind;
using State = Pop3Session::State;

void PrintTo(const Pop3Effect &effect, std::ostream *out) {
    static const char *const names[] = {"Close",    "Connect", "Send",    "Log",   "LogStatus", "ReplyBox",
                                        "ErrorBox", "Examine", "Capture", "Raise", "Encrypt"};
    *out << names[static_cast<int>(effect.What)] << ' ';
    PrintTo(effect.Text, out);
    *out << ' ' << effect.Number;
}

namespace {

Pop3Effect Send(const char *text) {
    return {Kind::Send, QString::fromUtf8(text)};
}
Pop3Effect Log(const char *text) {
    return {Kind::Log, QString::fromUtf8(text)};
}
Pop3Effect LogStatus(const char *text) {
    return {Kind::LogStatus, QString::fromUtf8(text)};
}
Pop3Effect ReplyBox(const char *text) {
    return {Kind::ReplyBox, QString::fromUtf8(text)};
}
Pop3Effect Examine(const char *text) {
    return {Kind::Examine, QString::fromUtf8(text)};
}
Pop3Effect Raise(ErrorNumber number) {
    return {Kind::Raise, RuntimeError(number).Description(), number};
}
const Pop3Effect kClose{Kind::Close, {}};
const Pop3Effect kCapture{Kind::Capture, {}};

const QByteArray kMessage = "+OK\r\nSubject: x\r\n\r\nbody\r\n.\r\n";
const Pop3Effects kNothing;

class Pop3SessionTest : public testing::Test {
protected:
    Pop3SessionTest() { Click(); }

    Pop3Effects Click(int deleteUnrelated = 0) {
        return session.Start({u"pop.x.test"_s, u"joe"_s, u"secret"_s, deleteUnrelated});
    }
    Pop3Effects Server(const QByteArray &says) { return session.DataArrival(says); }
    Pop3Effects Request() { return session.MessageExamined(true); }
    Pop3Effects Unrelated() { return session.MessageExamined(false); }

    // Brings the session to the point where STAT was sent.
    void LogOn() {
        for (const char *reply : {"+OK ready\r\n", "+OK\r\n", "+OK\r\n"})
            Server(reply);
        ASSERT_EQ(session.CurrentState(), State::StatSent);
    }

    Pop3Session session;
};

} // namespace

TEST_F(Pop3SessionTest, ClickClosesAnOldConnectionBeforeItConnects) {
    EXPECT_EQ(
        Click(),
        (Pop3Effects{kClose, {Kind::Connect, u"pop.x.test"_s}, LogStatus("Connecting to POP3 server")}));
}

TEST_F(Pop3SessionTest, EmptyMailbox) {
    EXPECT_EQ(Server("+OK ready\r\n"),
              (Pop3Effects{Log("POP: +OK ready"), LogStatus("Connected to POP3 server"), Send("USER joe"),
                           Log("USER joe")}));
    EXPECT_EQ(Server("+OK name\r\n"),
              (Pop3Effects{Log("POP: +OK name"), Send("PASS secret"), Log("PASS ********")}));
    EXPECT_EQ(Server("+OK in\r\n"), (Pop3Effects{Log("POP: +OK in"), Send("STAT"), Log("STAT")}));
    EXPECT_EQ(Server("+OK 0 0\r\n"), (Pop3Effects{Log("POP: +OK 0 0"), Send("QUIT"), Log("QUIT")}));
    EXPECT_EQ(Server("+OK bye\r\n"), (Pop3Effects{Log("POP: +OK bye"), kClose, kCapture}));
    EXPECT_EQ(session.CurrentState(), State::QuitSent);
}

TEST_F(Pop3SessionTest, ThreeRequests) {
    LogOn();
    EXPECT_EQ(Server("+OK 3 999\r\n"), (Pop3Effects{Log("POP: +OK 3 999"), Send("RETR 1"), Log("RETR 1"),
                                                    LogStatus("Downloading message 1/3")}));
    EXPECT_EQ(Server("+OK 10 octets\r\n"), Pop3Effects{Log("POP: +OK 10 octets")});
    EXPECT_EQ(Server("Subject: x\r\n\r\nbody\r\n.\r\n"), Pop3Effects{Examine("Subject: x\r\n\r\n")});
    EXPECT_EQ(Request(), (Pop3Effects{Send("DELE 1"), Log("DELE 1")}));
    EXPECT_EQ(Server("+OK 1\r\n"), (Pop3Effects{Log("POP: +OK 1"), Send("RETR 2"),
                                                LogStatus("Downloading message 2/3"), Log("RETR 2")}));
    EXPECT_EQ(Server(kMessage),
              (Pop3Effects{Log("POP: +OK\r\nSubject: x\r\n\r\nbody\r\n."), Examine("Subject: x\r\n\r\n")}));
    EXPECT_EQ(Request(), (Pop3Effects{Send("DELE 2"), Log("DELE 2")}));
    EXPECT_EQ(Server("+OK 2\r\n"), (Pop3Effects{Log("POP: +OK 2"), Send("RETR 3"),
                                                LogStatus("Downloading message 3/3"), Log("RETR 3")}));
    Server(kMessage);
    EXPECT_EQ(Request(), (Pop3Effects{Send("DELE 3"), Log("DELE 3")}));
    EXPECT_EQ(Server("+OK 3\r\n"), (Pop3Effects{Log("POP: +OK 3"), Send("QUIT"), Log("QUIT")}));
    EXPECT_EQ(Server("+OK\r\n"), (Pop3Effects{Log("POP: +OK"), kClose, kCapture}));
}

TEST_F(Pop3SessionTest, StlsComesBetweenTheGreetingAndTheUser) {
    EXPECT_EQ(session.Start({u"pop.x.test"_s, u"joe"_s, u"secret"_s, 0, true}).size(), 3U);
    EXPECT_EQ(Server("+OK ready\r\n"),
              (Pop3Effects{Log("POP: +OK ready"), LogStatus("Connected to POP3 server"), Send("STLS"),
                           Log("STLS")}));
    EXPECT_EQ(Server("+OK go\r\n"), (Pop3Effects{Log("POP: +OK go"), {Kind::Encrypt, {}}}));
    EXPECT_EQ(session.CurrentState(), State::Encrypting);
    EXPECT_TRUE(session.AwaitsLine());
    EXPECT_EQ(session.Encrypted(),
              (Pop3Effects{Log("The connection is encrypted"), Send("USER joe"), Log("USER joe")}));
    EXPECT_EQ(Server("+OK\r\n"), (Pop3Effects{Log("POP: +OK"), Send("PASS secret"), Log("PASS ********")}));
}

TEST_F(Pop3SessionTest, NothingCountsThatIsSaidInTheClearAfterStls) {
    session.Start({u"pop.x.test"_s, u"joe"_s, u"secret"_s, 0, true});
    Server("+OK ready\r\n");
    Server("+OK go\r\n");
    for (const char *injected : {"+OK\r\n", "-ERR no\r\n", "+OK 3 9\r\n"})
        EXPECT_EQ(Server(injected), kNothing) << injected;
    EXPECT_EQ(session.CurrentState(), State::Encrypting);
}

TEST_F(Pop3SessionTest, RefusedStlsEndsTheCheckBeforeTheUserIsNamed) {
    session.Start({u"pop.x.test"_s, u"joe"_s, u"secret"_s, 0, true});
    Server("+OK ready\r\n");
    EXPECT_EQ(Server("-ERR what\r\n"), (Pop3Effects{kClose, ReplyBox("POP3 Error [-ERR what\r\n]")}));
}

TEST_F(Pop3SessionTest, PasswordThatAnEncryptedServerRepeatsIsNotShown) {
    session.Start({u"pop.x.test"_s, u"joe"_s, u"secret"_s, 0, false, true});
    Server("+OK\r\n");
    Server("+OK\r\n");
    const Pop3Session before = session;
    EXPECT_EQ(Server("-ERR wrong: secret\r\n"),
              (Pop3Effects{kClose, ReplyBox("POP3 Error [-ERR wrong: ********\r\n]")}));
    session = before;
    EXPECT_EQ(Server("+OK secret it is\r\n").front(), Log("POP: +OK ******** it is"));
}

TEST_F(Pop3SessionTest, EncryptionThatNobodyAskedForSaysNothing) {
    EXPECT_EQ(session.Encrypted(), kNothing);
    LogOn();
    EXPECT_EQ(session.Encrypted(), kNothing);
    EXPECT_EQ(session.CurrentState(), State::StatSent);
}

TEST_F(Pop3SessionTest, RefusalInEveryOneLineStateClosesWithABoxKeepingTheState) {
    const QByteArrayList steps{"+OK\r\n", "+OK\r\n", "+OK\r\n", "+OK 1 9\r\n", kMessage, "+OK\r\n"};
    for (qsizetype refused = 0; refused <= steps.size(); ++refused) {
        session = Pop3Session();
        Click();
        for (const QByteArray &reply : steps.first(refused)) {
            Server(reply);
            if (reply == kMessage)
                Request();
        }
        const State before = session.CurrentState();
        if (before == State::Retrieving)
            continue;
        EXPECT_EQ(Server("-ERR no\r\n"), (Pop3Effects{kClose, ReplyBox("POP3 Error [-ERR no\r\n]")}))
            << refused;
        EXPECT_EQ(session.CurrentState(), before);
    }
}

TEST_F(Pop3SessionTest, ReplyThatIsNoPop3IsARefusal) {
    EXPECT_EQ(Server("<b>220</b>\n"), (Pop3Effects{kClose, ReplyBox("POP3 Error [<b>220</b>\n]")}));
    EXPECT_EQ(Server(" +OK\r\n"), (Pop3Effects{kClose, ReplyBox("POP3 Error [ +OK\r\n]")}));
    EXPECT_EQ(Server(QByteArray()), (Pop3Effects{kClose, ReplyBox("POP3 Error []")}));
    EXPECT_EQ(
        Server(QByteArray("\0-\r\n", 4)),
        (Pop3Effects{kClose, {Kind::ReplyBox, u"POP3 Error ["_s + QString(1, QChar(0)) + u"-\r\n]"_s}}));
}

TEST_F(Pop3SessionTest, LoggedReplyLosesItsLastTwoCharactersWhateverTheyAre) {
    EXPECT_EQ(Server("+OK\n").front(), Log("POP: +O"));
    EXPECT_EQ(Server("+").front(), Log("POP: "));
    EXPECT_EQ(Server("+OK caf\xC3\xA9\r\n").front(), Log("POP: +OK café"));
}

TEST_F(Pop3SessionTest, PasswordIsLoggedAsEightAsterisksWhateverItsLength) {
    for (const QString &password : {u"x"_s, QString(100, u'y')}) {
        session.Start({u"h"_s, u"joe"_s, password, 0});
        Server("+OK\r\n");
        EXPECT_EQ(Server("+OK\r\n"),
                  (Pop3Effects{Log("POP: +OK"), {Kind::Send, u"PASS "_s + password}, Log("PASS ********")}));
    }
}

TEST_F(Pop3SessionTest, StatCountEndsAtTheNextBlank) {
    LogOn();
    EXPECT_EQ(Server("+OK 12 34567\r\n").back(), LogStatus("Downloading message 1/12"));
}

TEST_F(Pop3SessionTest, StatThatNamesNoMessagesIsFollowedByQuit) {
    for (const char *reply : {"+OK 0 0\r\n", "+OK -1 0\r\n", "+OK -32768 \r\n"}) {
        Click();
        LogOn();
        EXPECT_EQ(Server(reply).back(), Log("QUIT")) << reply;
    }
}

TEST_F(Pop3SessionTest, StatThatCannotBeReadEndsTheEventInItsState) {
    LogOn();
    EXPECT_EQ(Server("+OK 12\r\n"), (Pop3Effects{Log("POP: +OK 12"), Raise(InvalidProcedureCall)}));
    EXPECT_EQ(Server("+\r\n"), (Pop3Effects{Log("POP: +"), Raise(InvalidProcedureCall)}));
    EXPECT_EQ(Server("+OK 32768 1\r\n"), (Pop3Effects{Log("POP: +OK 32768 1"), Raise(Overflow)}));
    EXPECT_EQ(Server("+OK 99999 1\r\n"), (Pop3Effects{Log("POP: +OK 99999 1"), Raise(Overflow)}));
    EXPECT_EQ(Server("+OK  12 1\r\n"), (Pop3Effects{Log("POP: +OK  12 1"), Raise(TypeMismatch)}));
    EXPECT_EQ(Server("+OK many 1\r\n"), (Pop3Effects{Log("POP: +OK many 1"), Raise(TypeMismatch)}));
    EXPECT_EQ(session.CurrentState(), State::StatSent);
    EXPECT_EQ(Server("+OK 32767 1\r\n").back(), LogStatus("Downloading message 1/32767"));
}

TEST_F(Pop3SessionTest, EndMarkSplitAcrossChunksEndsOneMessage) {
    LogOn();
    Server("+OK 1 9\r\n");
    EXPECT_EQ(Server("+OK\r\nSubject: x\r\n\r"), Pop3Effects{Log("POP: +OK\r\nSubject: x\r")});
    EXPECT_EQ(Server("\nbody\r\n"), kNothing);
    EXPECT_EQ(Server("."), kNothing);
    EXPECT_EQ(Server("\r"), kNothing);
    EXPECT_EQ(Server("\n"), Pop3Effects{Examine("Subject: x\r\n\r\n")});
}

TEST_F(Pop3SessionTest, ChunkOfTextThatBeginsWithAPlusIsLogged) {
    LogOn();
    Server("+OK 1 9\r\n");
    Server("+OK\r\nSubject: x\r\n\r\n");
    EXPECT_EQ(Server("+1 from me\r\n"), Pop3Effects{Log("POP: +1 from me")});
    EXPECT_EQ(Server("-1 from me\r\n"), kNothing);
}

TEST_F(Pop3SessionTest, UnrelatedMessageStaysAndTheCheckRests) {
    LogOn();
    Server("+OK 2 9\r\n");
    Server(kMessage);
    EXPECT_EQ(Unrelated(), kNothing);
    EXPECT_EQ(session.CurrentState(), State::MessageDone);
    EXPECT_EQ(session.Buffer().Size(), 0);
}

TEST_F(Pop3SessionTest, UnrelatedMessagesGoOnlyWhenTheSettingIsOne) {
    for (const int setting : {-1, 0, 1, 2}) {
        session = Pop3Session();
        Click(setting);
        LogOn();
        Server("+OK 1 9\r\n");
        Server(kMessage);
        EXPECT_EQ(Unrelated(), setting == 1 ? (Pop3Effects{Send("DELE 1"), Log("DELE 1")}) : kNothing)
            << setting;
    }
}

TEST_F(Pop3SessionTest, RefusedRetrIsTextAndTheCheckRests) {
    LogOn();
    Server("+OK 1 9\r\n");
    EXPECT_EQ(Server("-ERR no such message\r\n"), kNothing);
    EXPECT_EQ(session.CurrentState(), State::Retrieving);
}

TEST_F(Pop3SessionTest, NextCheckAfterARefusedRetrFindsTheRefusalBeforeItsMessage) {
    LogOn();
    Server("+OK 1 9\r\n");
    Server("-ERR no such message\r\n");
    Click();
    LogOn();
    EXPECT_EQ(Server("+OK 3 9\r\n"), (Pop3Effects{Log("POP: +OK 3 9"), Send("RETR 1"), Log("RETR 1"),
                                                  LogStatus("Downloading message 2/3")}));
    // The refusal goes as the first line.
    EXPECT_EQ(Server(kMessage).back(), Examine("+OK\r\nSubject: x\r\n\r\n"));
    EXPECT_EQ(Request(), (Pop3Effects{Send("DELE 2"), Log("DELE 2")}));
    EXPECT_EQ(Server("+OK\r\n"), (Pop3Effects{Log("POP: +OK"), Send("RETR 3"),
                                              LogStatus("Downloading message 3/3"), Log("RETR 3")}));
}

TEST_F(Pop3SessionTest, TextOfAnInterruptedMessageStandsBeforeTheNext) {
    LogOn();
    Server("+OK 1 9\r\n");
    Server("+OK\r\nSubject: old\r\n");
    Click();
    LogOn();
    Server("+OK 1 9\r\n");
    EXPECT_EQ(Server("+OK\r\nFrom: new\r\n\r\n.\r\n").back(),
              Examine("Subject: old\r\n+OK\r\nFrom: new\r\n\r\n"));
}

TEST_F(Pop3SessionTest, MessagePastTheLimitEndsTheCheckAndLeavesNothing) {
    LogOn();
    Server("+OK 2 9\r\n");
    Server(kMessage);
    Request();
    Server("+OK\r\n");
    EXPECT_EQ(Server(QByteArray(MessageBuffer::kLongest, 'x')), kNothing);
    EXPECT_EQ(Server("x"), (Pop3Effects{kClose, ReplyBox("POP3 Error [Message 2 is longer than 64 MB]")}));
    EXPECT_EQ(session.Buffer().Size(), 0);
    Click();
    LogOn();
    EXPECT_EQ(Server("+OK 1 9\r\n").back(), LogStatus("Downloading message 1/1"));
    EXPECT_EQ(Server(kMessage).back(), Examine("Subject: x\r\n\r\n"));
}

TEST_F(Pop3SessionTest, ReplyThatIsTooLongEndsTheCheckInEveryOneLineState) {
    const QByteArray longest = "+OK 1 " + QByteArray(Pop3Session::kTooLongReply - 7, '+');
    const QByteArrayList steps{"+OK\r\n", "+OK\r\n", "+OK\r\n", "+OK 1 9\r\n", kMessage};
    for (const qsizetype step : {0, 1, 2, 3, 5}) {
        session = Pop3Session();
        Click();
        for (const QByteArray &reply : steps.first(step))
            Server(reply);
        if (step == 5)
            Request();
        const Pop3Session before = session;
        EXPECT_EQ(Server(longest + '+'),
                  (Pop3Effects{{Kind::Log, u"POP: "_s + QString::fromLatin1(longest.chopped(1))},
                               kClose,
                               ReplyBox("POP3 Error [The reply is too long]")}))
            << step;
        EXPECT_EQ(session.CurrentState(), State::Greeting);
        session = before;
        EXPECT_NE(Server(longest).back().What, Kind::ReplyBox) << step;
    }
}

TEST_F(Pop3SessionTest, ReplyToQuitMayBeLong) {
    LogOn();
    Server("+OK 0 0\r\n");
    EXPECT_EQ(Server(QByteArray(Pop3Session::kTooLongReply, '+')).back(), kCapture);
}

TEST_F(Pop3SessionTest, QuitReplyResetsTheCounters) {
    LogOn();
    Server("+OK 1 9\r\n");
    Server(kMessage);
    Request();
    Server("+OK\r\n");
    Server("+OK bye\r\n");
    Click();
    LogOn();
    EXPECT_EQ(Server("+OK 1 9\r\n").back(), LogStatus("Downloading message 1/1"));
}

TEST_F(Pop3SessionTest, MessageNumberPastItsSixteenBitsIsAnOverflow) {
    for (int check = 0; check < 32767; ++check) {
        Click();
        LogOn();
        Server("+OK 1 9\r\n");
    }
    Click();
    LogOn();
    EXPECT_EQ(Server("+OK 1 9\r\n"), (Pop3Effects{Log("POP: +OK 1 9"), Raise(Overflow)}));
}

TEST_F(Pop3SessionTest, MessageThatWasNeverExaminedLeavesItsTextForTheNextCheck) {
    LogOn();
    Server("+OK 1 9\r\n");
    Server("+OK\r\nFirst: 1\r\nSecond: 2\r\n\r\n.\r\n"); // examining it failed: nothing was reported back
    EXPECT_EQ(session.CurrentState(), State::Retrieving);
    Click();
    LogOn();
    Server("+OK 1 9\r\n");
    EXPECT_EQ(Server("+OK\r\n\r\n.\r\n").back(), Examine("Second: 2\r\n\r\n"));
}

TEST_F(Pop3SessionTest, ConnectionErrorIsShownThenLogged) {
    const QString text = u"POP3 check failed (error 10061 - Connection refused)"_s;
    EXPECT_EQ(session.SocketError(10061, u"Connection refused"_s),
              (Pop3Effects{{Kind::ErrorBox, text}, {Kind::LogStatus, text}}));
    EXPECT_EQ(session.CurrentState(), State::Greeting);
}

TEST_F(Pop3SessionTest, OneLineIsAwaitedEverywhereButInAMessage) {
    EXPECT_TRUE(session.AwaitsLine());
    LogOn();
    EXPECT_TRUE(session.AwaitsLine());
    Server("+OK 1 9\r\n");
    EXPECT_FALSE(session.AwaitsLine());
    Server(kMessage);
    Request();
    EXPECT_TRUE(session.AwaitsLine());
}

TEST_F(Pop3SessionTest, TenThousandMessagesLeaveNothingInTheSession) {
    LogOn();
    Server("+OK 10000 9\r\n");
    for (int i = 1; i < 10000; ++i) {
        Server(kMessage);
        Request();
        EXPECT_EQ(session.Buffer().Size(), 0);
        Server("+OK\r\n");
    }
    Server(kMessage);
    EXPECT_EQ(Request(), (Pop3Effects{Send("DELE 10000"), Log("DELE 10000")}));
    EXPECT_EQ(Server("+OK\r\n").back(), Log("QUIT"));
}

} // namespace varlo
