// What happens while the component waits: windows stay alive, a destruction ends it, mails follow one another.

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "net/ScriptedServer.h"
#include "smtp/SMTP.h"
#include "smtp/Sender.h"

#include <QEventLoop>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace varlo::test {

namespace {

using Kind = Outcome::Kind;

const QString kAnn = u"ann@example.com"_s;
const QString kBob = u"bob@example.com"_s;

SmtpScript SilentAt(SmtpStep step, int times = 1) {
    SmtpScript script;
    script.Faults = {{step, SmtpFault::Silence, "", "", 0, times}};
    return script;
}

constexpr SmtpStep kSteps[] = {SmtpStep::Greeting, SmtpStep::Ehlo,         SmtpStep::Mail,   SmtpStep::Rcpt,
                               SmtpStep::Data,     SmtpStep::MessageBegin, SmtpStep::Message};

// What a window does meanwhile.
class Ticker {
public:
    Ticker() {
        QObject::connect(&timer_, &QTimer::timeout, [this] { ++Ticks; });
        timer_.start(1);
    }
    int Ticks = 0;

private:
    QTimer timer_;
};

QString MakeFile(const QTemporaryDir &folder, qint64 size) {
    QFile file(folder.filePath(u"large.bin"_s));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(file.resize(size));
    return file.fileName();
}

// Submits the next mail in the handler of the one before until `enough` says so.
void SendInHandlers(Sender &sender, const std::function<bool()> &enough) {
    QObject context;
    QObject::connect(&sender.Component(), &OSSMTP::SMTP::Finished, &context, [&] {
        if (!enough())
            sender.Submit(kAnn);
    });
    sender.Submit(kAnn);
    EXPECT_TRUE(WaitUntil(enough));
}

} // namespace

TEST(SMTPWaitTest, SilenceAtAnyStepIsATimeOutAndTheNextMessageGoesThrough) {
    for (const SmtpStep step : kSteps) {
        const FakeSmtpServer server(SilentAt(step));
        Sender sender(server);
        sender.Timeout = 200;
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Errors, (SmtpErrors{{OSSMTP::TimedOut, u"The server did not answer in time"_s}}))
            << "step " << static_cast<int>(step);
        EXPECT_EQ(server.Connections(), 1) << "a time-out is not tried again";
        EXPECT_TRUE(sender.SendTo(kAnn));
        EXPECT_EQ(server.Mails().size(), 1);
    }
}

TEST(SMTPWaitTest, SilenceIsInDoubtOnlyAfterTheWholeMessage) {
    for (const auto &[step, kind] :
         {std::pair(SmtpStep::Greeting, Kind::NotTried), std::pair(SmtpStep::Rcpt, Kind::Later),
          std::pair(SmtpStep::Message, Kind::InDoubt)}) {
        const FakeSmtpServer server(SilentAt(step));
        Sender sender(server);
        sender.Timeout = 200;
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Last(),
                  (Outcome{kind, OSSMTP::TimedOut, u"The server did not answer in time"_s, false}));
    }
}

TEST(SMTPWaitTest, ServerThatStopsReadingWithinTheMessageIsATimeOutForLater) {
    const FakeSmtpServer server(SilentAt(SmtpStep::MessageBegin));
    Sender sender(server);
    sender.Timeout = 200;
    sender.Message.Text = u"much\r\n"_s.repeated(4'000'000); // more than the buffers of a socket hold
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Last(),
              (Outcome{Kind::Later, OSSMTP::TimedOut, u"The server did not answer in time"_s, false}));
}

TEST(SMTPWaitTest, WhatIsWaitedForIsTold) {
    const QString host = u"[127.0.0.1]"_s;
    for (const auto &[step, text] :
         {std::pair(SmtpStep::Greeting, u"Waiting for %1 to let us in, 60 seconds at most"_s),
          std::pair(SmtpStep::Ehlo, u"Waiting for %1 to let us in, 60 seconds at most"_s),
          std::pair(SmtpStep::Rcpt, u"Waiting for %1 to take the recipient, 60 seconds at most"_s),
          std::pair(SmtpStep::Message, u"Waiting for %1 to take the message, 10 minutes at most"_s)}) {
        const FakeSmtpServer server(SilentAt(step));
        OSSMTP::SMTP smtp(Sender(server).Account);
        smtp.SetPatience(20);
        QStringList told;
        QObject::connect(&smtp, &Mailer::Waiting, [&](const QString &what) { told << what; });
        smtp.Submit({std::make_shared<const MailMessage>(MailMessage{u"News"_s, u"Hello\r\n"_s, {}}), kAnn});
        const Ticker window;
        EXPECT_TRUE(WaitUntil([&] { return !told.isEmpty() && window.Ticks > 60; }));
        EXPECT_EQ(told.last(), text.arg(host));
        EXPECT_EQ(told.count(told.last()), 1) << "once is enough";
    }
}

TEST(SMTPWaitTest, QuickServerIsNeverWaitedFor) {
    const FakeSmtpServer server;
    Sender sender(server);
    int told = 0;
    QObject::connect(&sender.Component(), &Mailer::Waiting, [&] { ++told; });
    sender.Component().SetPatience(1000);
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(told, 0);
}

TEST(SMTPWaitTest, EachAnswerHasTheWholeTime) {
    // Six answers of 200 ms each, together more than the limit.
    QTcpServer slow;
    ASSERT_TRUE(slow.listen(QHostAddress::LocalHost));
    QObject::connect(&slow, &QTcpServer::newConnection, [&slow] {
        QTcpSocket *socket = slow.nextPendingConnection();
        const auto later = [socket](const char *text) {
            QTimer::singleShot(200, socket, [socket, text] { socket->write(text); });
        };
        later("220 hi\r\n");
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket, later] {
            const QByteArray input = socket->readAll();
            if (input.startsWith("EHLO"))
                later("250 slow\r\n");
            else
                later(input.startsWith("DATA") ? "354 go\r\n" : "250 ok\r\n");
        });
    });
    Sender sender(slow.serverPort());
    sender.Timeout = 900;
    EXPECT_TRUE(sender.SendTo(kAnn));
}

TEST(SMTPWaitTest, WindowsStayAliveDuringSilence) {
    for (const SmtpStep step : kSteps) {
        const FakeSmtpServer server(SilentAt(step));
        Sender sender(server);
        sender.Submit(kAnn);
        const Ticker window;
        EXPECT_TRUE(WaitUntil([&] { return window.Ticks > 10; })) << "step " << static_cast<int>(step);
    }
}

TEST(SMTPWaitTest, WindowsStayAliveDuringAFastRun) {
    const FakeSmtpServer server;
    Sender sender(server);
    const Ticker window;
    SendInHandlers(sender, [&] { return window.Ticks > 5; });
    EXPECT_EQ(sender.Errors, SmtpErrors());
}

TEST(SMTPWaitTest, WindowsStayAliveWhileALargeFileIsReadAndSent) {
    const QTemporaryDir folder;
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Message.Attachments << MakeFile(folder, 50'000'000);
    const Ticker window;
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_GT(window.Ticks, 2);
}

TEST(SMTPWaitTest, FileThatVanishesWhileAnotherIsReadIsTold) {
    const QTemporaryDir folder;
    const FakeSmtpServer server;
    Sender sender(server);
    QFile second(folder.filePath(u"second.txt"_s));
    ASSERT_TRUE(second.open(QIODevice::WriteOnly));
    sender.Message.Attachments << MakeFile(folder, 50'000'000) << second.fileName();
    sender.Submit(kAnn);
    ASSERT_TRUE(second.remove());
    ASSERT_TRUE(WaitUntil([&] { return !sender.Outcomes.empty(); }));
    EXPECT_EQ(sender.Last(),
              (Outcome{Kind::NotTried, FileNotFound, RuntimeError(FileNotFound).Description(), true}));
    EXPECT_EQ(server.Connections(), 0);
}

TEST(SMTPWaitTest, MailsFollowOneAnotherInTheHandlersWithoutRecursion) {
    const FakeSmtpServer server;
    Sender sender(server);
    int depth = 0;
    int deepest = 0;
    QObject::connect(&sender.Component(), &OSSMTP::SMTP::Finished, [&] {
        deepest = std::max(deepest, ++depth);
        if (sender.Outcomes.size() < 300)
            sender.Submit(sender.Outcomes.size() % 3 == 0 ? u"no one"_s : kAnn); // fails without a server
        --depth;
    });
    sender.Submit(kAnn);
    EXPECT_TRUE(WaitUntil([&] { return sender.Outcomes.size() == 300; }));
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(server.Mails().size(), 201);
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPWaitTest, MailsGoOnWhileABoxIsOpen) {
    const FakeSmtpServer server;
    Sender sender(server);
    qsizetype before = 0;
    qsizetype during = 0;
    QTimer::singleShot(0, [&] {
        QEventLoop box;
        before = qsizetype(sender.Outcomes.size());
        QObject::connect(&sender.Component(), &OSSMTP::SMTP::Finished, &box, [&] {
            during = qsizetype(sender.Outcomes.size()) - before;
            if (during > 20)
                box.quit();
        });
        box.exec();
    });
    SendInHandlers(sender, [&] { return during > 20; });
}

TEST(SMTPWaitTest, ServerThatTalksBetweenTwoMailsIsNotListenedTo) {
    ScriptedServer server;
    server.Greeting = "220 hi\r\n";
    server.OnReceived = [&](const QByteArray &bytes) {
        server.Say(bytes.startsWith("DATA") ? "354 go\r\n" : "250 ok\r\n");
    };
    Sender sender(server.serverPort());
    EXPECT_TRUE(sender.SendTo(kAnn));
    server.Say(QByteArray("250 and another thing\r\n").repeated(1000));
    EXPECT_TRUE(WaitUntil([&] { return server.Ended == 1; }));
    EXPECT_TRUE(sender.SendTo(kBob)) << "on a new connection";
}

TEST(SMTPWaitTest, HandlerOfTheErrorMaySendAgain) {
    SmtpScript script;
    script.Faults = {{SmtpStep::Rcpt, SmtpFault::Reply, "550 no\r\n", "ann"}};
    const FakeSmtpServer server(script);
    Sender sender(server);
    QObject::connect(&sender.Component(), &OSSMTP::SMTP::Finished, [&](const Outcome &outcome) {
        if (outcome.Result != Kind::Sent)
            sender.Submit(kBob);
    });
    sender.Submit(kAnn);
    EXPECT_TRUE(WaitUntil([&] { return sender.Outcomes.size() == 2; }));
    EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
}

TEST(SMTPWaitTest, ObjectDestroyedWhileItWaitsDropsTheMail) {
    for (const auto &[step, said] :
         {std::pair(SmtpStep::Ehlo, "C: EHLO"), std::pair(SmtpStep::Mail, "C: MAIL"),
          std::pair(SmtpStep::Rcpt, "C: RCPT"), std::pair(SmtpStep::Data, "C: DATA"),
          std::pair(SmtpStep::Message, "C: (message)")}) {
        FakeSmtpServer server(SilentAt(step));
        Sender sender(server);
        sender.Submit(kAnn);
        EXPECT_TRUE(server.WaitFor(said));
        sender.Leave();
        server.Follow({});
        EXPECT_TRUE(sender.SendTo(kBob)) << "by another one, on a connection of its own";
        EXPECT_EQ(sender.Outcomes.size(), 1U);
        EXPECT_EQ(Reached(server), QByteArrayList{"bob@example.com"});
    }
}

TEST(SMTPWaitTest, ObjectDestroyedWhileALargeFileIsReadConnectsNowhere) {
    const QTemporaryDir folder;
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Message.Attachments << MakeFile(folder, 200'000'000);
    sender.Submit(kAnn);
    sender.Leave();
    const Ticker window;
    EXPECT_TRUE(WaitUntil([&] { return window.Ticks > 10; }));
    EXPECT_EQ(server.Connections(), 0);
}

TEST(SMTPWaitTest, ObjectDestroyedDuringAConnectThatNobodyAnswersIsGoneAtOnce) {
    // The queue of a listener that accepts nothing is filled, so that the next connect hangs.
    QTcpServer listener;
    listener.setListenBacklogSize(0);
    ASSERT_TRUE(listener.listen(QHostAddress::LocalHost));
    listener.pauseAccepting();
    std::vector<std::unique_ptr<QTcpSocket>> fillers;
    for (int i = 0; i < 4; ++i) {
        fillers.push_back(std::make_unique<QTcpSocket>());
        fillers.back()->connectToHost(listener.serverAddress(), listener.serverPort());
    }
    Sender sender(listener.serverPort());
    QString told;
    OSSMTP::SMTP smtp(sender.Account);
    smtp.SetPatience(20);
    QObject::connect(&smtp, &Mailer::Waiting, [&](const QString &what) { told = what; });
    smtp.Submit({std::make_shared<const MailMessage>(sender.Message), kAnn});
    sender.Submit(kAnn);
    EXPECT_TRUE(WaitUntil([&] { return !told.isEmpty(); }));
    EXPECT_EQ(told, u"Waiting for a connection to [127.0.0.1], 30 seconds at most"_s);
    sender.Leave();
    EXPECT_EQ(sender.Outcomes.size(), 0U);
}

TEST(SMTPWaitTest, ObjectDestroyedByTheHandlersOfItsSignalsIsSafe) {
    for (const SmtpStep step : {SmtpStep::Ehlo, SmtpStep::Rcpt, SmtpStep::Message}) {
        SmtpScript script;
        script.Faults = {{step, SmtpFault::Reply, "550 no\r\n550 no\r\n", ""}};
        const FakeSmtpServer server(script);
        Sender sender(server);
        QObject::connect(&sender.Component(), &OSSMTP::SMTP::ErrorSMTP, [&] { sender.Leave(); });
        sender.Submit(kAnn);
        EXPECT_TRUE(WaitUntil([&] { return !sender.Errors.empty(); }));
        EXPECT_EQ(sender.Outcomes.size(), 0U);
    }
    const FakeSmtpServer server;
    Sender sender(server);
    QObject::connect(&sender.Component(), &OSSMTP::SMTP::Finished, [&] { sender.Leave(); });
    EXPECT_TRUE(sender.SendTo(kAnn));
}

} // namespace varlo::test
