// Notifications with the real component, against a server on loopback that follows a script.
#include "core/Literals.h"
#include "core/Preferences.h"
#include "core/RuntimeError.h"
#include "lists/ListsFixture.h"
#include "lists/PendingProcessing.h"
#include "smtp/SMTP.h"
#include "support/FakeSmtpServer.h"
#include "support/WaitUntil.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace varlo {
namespace {

using test::FakeSmtpServer;
using test::SmtpFault;
using test::SmtpScript;
using test::SmtpStep;
using test::Words;

class NotificationOverWireTest : public test::ListsFixture {
protected:
    void Start(SmtpScript script = {}) {
        server = std::make_unique<FakeSmtpServer>(std::move(script));
        session.Prefs.Notify = 1;
        session.Prefs.SMTPServer = u"127.0.0.1"_s;
        session.Prefs.SMTPPort = To16Bit(server->Port());
        session.Prefs.SMTPFrom = u"Jörg Editor"_s;
        session.Prefs.SMTPEmail = u"ann@x.test"_s;
        session.Prefs.SubSubject = u"Welcome"_s;
        session.Prefs.SubBody = u"Hello,\\n\\nyou are on the list."_s;
        session.Prefs.UnsubSubject = u"Goodbye"_s;
        session.Prefs.UnsubBody = u"You are off the list."_s;
        OpenList(u"news"_s, Words("bb@x.test"));
    }
    static SmtpScript Fault(SmtpStep at, SmtpFault::Deed what, const QByteArray &bytes,
                            const QByteArray &holding) {
        SmtpScript script;
        script.Faults = {{.At = at, .What = what, .Bytes = bytes, .Holding = holding}};
        return script;
    }
    void Process(const QStringList &entries) {
        AddPending(entries);
        processing.Run();
        EXPECT_TRUE(test::WaitUntil([this] { return !processing.IsRunning(); }));
    }
    // Who got a mail, in order.
    QStringList Received(qsizetype expected) {
        EXPECT_TRUE(test::WaitUntil([&] { return server->Mails().size() >= expected; }));
        QStringList received;
        for (const test::SmtpMail &mail : server->Mails())
            received << QString::fromUtf8(mail.Recipients.join(", "));
        return received;
    }

    std::unique_ptr<FakeSmtpServer> server;
    PendingProcessing processing{
        session, lists, [](const MailAccount &account) { return std::make_unique<OSSMTP::SMTP>(account); }};
};

TEST_F(NotificationOverWireTest, EachChangeIsToldOverOneConnection) {
    Start();
    Process(Words("+aa@x.test -bb@x.test +AA@x.test"));
    EXPECT_EQ(Received(2), Words("aa@x.test bb@x.test"));
    EXPECT_EQ(server->Connections(), 1);
    const QList<test::SmtpMail> mails = server->Mails();
    EXPECT_EQ(mails[0].Sender, QByteArray("ann@x.test"));
    EXPECT_TRUE(mails[0].Data.contains("\r\nSubject: Welcome\r\n"));
    EXPECT_TRUE(mails[0].Data.contains("\r\n\r\nHello,\r\n\r\nyou are on the list."));
    EXPECT_TRUE(mails[1].Data.contains("\r\nSubject: Goodbye\r\n"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (+1, -1)"_s);
}

TEST_F(NotificationOverWireTest, ARecipientThatIsRefusedIsToldAndTheNextGetsItsMail) {
    Start(Fault(SmtpStep::Rcpt, SmtpFault::Reply, "550 no such user\r\n", "aa@x.test"));
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Received(1), Words("cc@x.test"));
    EXPECT_TRUE(TakeStatus().contains(u"SMTP error 550 - no such user"_s));
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test cc@x.test"));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationOverWireTest, WithoutAServerTheRequestsAreProcessedAllTheSame) {
    Start();
    server.reset();
    Process(Words("+aa@x.test"));
    EXPECT_EQ(TakeStatus().filter(u"SMTP error 12029"_s).size(), 1);
    EXPECT_EQ(Current(), Words("bb@x.test aa@x.test"));
    EXPECT_EQ(Pending(), QStringList());
}

TEST_F(NotificationOverWireTest, WhileTheServerIsSilentRequestsArriveAndStayPending) {
    Start(Fault(SmtpStep::Message, SmtpFault::ReplyThenSilence, {}, {}));
    bool late = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &lists.Open, [&] {
        if (!server->Dialogue().contains("C: (message)"))
            return;
        watch.stop();
        late = true;
        lists.Pending.Offer(PendingRequest::FromEntry(u"+late@x.test"_s, RequestOrigin::FailedDelivery));
        processing.Run();
        server.reset();
    });
    watch.start(5);
    Process(Words("+aa@x.test"));
    EXPECT_TRUE(late);
    EXPECT_EQ(Pending(), Words("+late@x.test"));
    EXPECT_EQ(TakeStatus().last(), u"Pending list processing complete (+1)"_s);
}

TEST_F(NotificationOverWireTest, ClosingDuringASilenceEndsTheRunAtOnce) {
    Start(Fault(SmtpStep::Greeting, SmtpFault::Silence, {}, {}));
    QTimer::singleShot(50, &lists.Open, [&] {
        session.AppExiting = true;
        processing.Abort();
    });
    Process(Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(Pending(), Words("+aa@x.test +cc@x.test"));
    EXPECT_EQ(server->Mails(), QList<test::SmtpMail>());
}

} // namespace
} // namespace varlo
