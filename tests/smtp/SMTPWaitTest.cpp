// What happens while the component waits: windows stay alive, an abort ends it, a destruction too.

#include "core/Literals.h"
#include "smtp/SMTP.h"
#include "smtp/Sender.h"

#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace varlo::test {

namespace {

constexpr qint64 kLively = 100; // ms in which a window has to answer
const QString kAnn = u"ann@example.com"_s;

SmtpScript SilentAt(SmtpStep step, int times = 1) {
    SmtpScript script;
    script.Faults = {{step, SmtpFault::Silence, "", "", 0, times}};
    return script;
}

// The shortest of a few measurements of milliseconds: a busy machine may delay some of them, not all.
qint64 Best(const std::function<qint64()> &measure) {
    qint64 best = measure();
    for (int i = 0; i < 4 && best >= kLively; ++i)
        best = std::min(best, measure());
    return best;
}

// How long a send went on after its abort.
qint64 TimeToAbort(Sender &sender) {
    QElapsedTimer clock;
    QTimer::singleShot(50, [&] {
        clock.start();
        sender.Smtp.Abort();
    });
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, SmtpErrors());
    return clock.elapsed();
}

constexpr SmtpStep kSteps[] = {SmtpStep::Greeting, SmtpStep::Ehlo,         SmtpStep::Mail,   SmtpStep::Rcpt,
                               SmtpStep::Data,     SmtpStep::MessageBegin, SmtpStep::Message};

} // namespace

TEST(SMTPWaitTest, SilenceAtAnyStepIsATimeOutAndTheNextMessageGoesThrough) {
    for (const SmtpStep step : kSteps) {
        const FakeSmtpServer server(SilentAt(step));
        Sender sender(server);
        sender.Smtp.SetTimeout(200);
        EXPECT_FALSE(sender.SendTo(kAnn));
        EXPECT_EQ(sender.Errors, (SmtpErrors{{OSSMTP::TimedOut, u"The server did not answer in time"_s}}))
            << "step " << static_cast<int>(step);
        EXPECT_EQ(server.Connections(), 1) << "a time-out is not tried again";
        EXPECT_TRUE(sender.SendTo(kAnn));
        EXPECT_EQ(server.Mails().size(), 1);
    }
}

TEST(SMTPWaitTest, EachAnswerHasTheWholeTime) {
    // Greeting, EHLO and the transaction each take 150 ms, together more than the limit.
    QTcpServer slow;
    ASSERT_TRUE(slow.listen(QHostAddress::LocalHost));
    QObject::connect(&slow, &QTcpServer::newConnection, [&slow] {
        QTcpSocket *socket = slow.nextPendingConnection();
        const auto later = [socket](const char *text) {
            QTimer::singleShot(150, socket, [socket, text] { socket->write(text); });
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
    sender.Smtp.SetTimeout(300);
    EXPECT_TRUE(sender.SendTo(kAnn));
}

TEST(SMTPWaitTest, WindowsStayAliveDuringSilence) {
    for (const SmtpStep step : kSteps) {
        const auto longestGap = [step] {
            const FakeSmtpServer server(SilentAt(step));
            Sender sender(server);
            sender.Smtp.SetTimeout(300);
            const Heartbeat heart;
            EXPECT_FALSE(sender.SendTo(kAnn));
            EXPECT_GT(heart.Beats, 10);
            return heart.LongestGap;
        };
        EXPECT_LT(Best(longestGap), kLively) << "step " << static_cast<int>(step);
    }
}

TEST(SMTPWaitTest, WindowsStayAliveDuringAFastRun) {
    const auto longestGap = [] {
        const FakeSmtpServer server;
        Sender sender(server);
        const Heartbeat heart;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 400)
            EXPECT_TRUE(sender.SendTo(kAnn));
        EXPECT_GT(heart.Beats, 2);
        return heart.LongestGap;
    };
    EXPECT_LT(Best(longestGap), kLively);
}

TEST(SMTPWaitTest, WindowsStayAliveWhileALargeFileIsReadAndSent) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"large.bin"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(50'000'000));
    file.close();
    const auto longestGap = [&file] {
        const FakeSmtpServer server;
        Sender sender(server);
        sender.Smtp.AddAttachment(file.fileName(), file.fileName());
        const Heartbeat heart;
        EXPECT_TRUE(sender.SendTo(kAnn));
        EXPECT_GT(heart.Beats, 2);
        return heart.LongestGap;
    };
    EXPECT_LT(Best(longestGap), kLively);
}

TEST(SMTPWaitTest, AbortEndsTheReadingOfALargeFile) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"endless.bin"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(200'000'000));
    const FakeSmtpServer server;
    Sender sender(server);
    sender.Smtp.AddAttachment(file.fileName(), file.fileName());
    QTimer::singleShot(0, [&] { sender.Smtp.Abort(); });
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_EQ(sender.Errors, SmtpErrors());
    EXPECT_EQ(server.Connections(), 0);
}

TEST(SMTPWaitTest, AbortEndsAnyWaitAtOnceWithoutAnEvent) {
    for (const SmtpStep step : kSteps) {
        const FakeSmtpServer server(SilentAt(step, -1));
        Sender sender(server);
        EXPECT_LT(Best([&sender] { return TimeToAbort(sender); }), kLively)
            << "step " << static_cast<int>(step);
    }
}

TEST(SMTPWaitTest, AbortEndsOneSendOnly) {
    const FakeSmtpServer server(SilentAt(SmtpStep::Data));
    Sender sender(server);
    TimeToAbort(sender);
    EXPECT_TRUE(sender.SendTo(kAnn));
}

TEST(SMTPWaitTest, AbortEndsAConnectThatNobodyAnswers) {
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
    EXPECT_LT(Best([&sender] { return TimeToAbort(sender); }), kLively);
}

TEST(SMTPWaitTest, AbortWhileNothingRunsDropsTheConnection) {
    const FakeSmtpServer server;
    Sender sender(server);
    EXPECT_TRUE(sender.SendTo(kAnn));
    sender.Smtp.Abort();
    sender.Smtp.Abort();
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_EQ(server.Connections(), 2);
}

TEST(SMTPWaitTest, SendWithinASendIsRefusedWithoutAnEvent) {
    const FakeSmtpServer server(SilentAt(SmtpStep::Data));
    Sender sender(server);
    sender.Smtp.SetTimeout(300);
    bool inner = true;
    QTimer::singleShot(50, [&] {
        inner = sender.Smtp.Send();
        EXPECT_EQ(sender.Errors, SmtpErrors());
    });
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_FALSE(inner);
    EXPECT_EQ(sender.Errors.size(), 1U);
    EXPECT_EQ(server.Connections(), 1);
}

TEST(SMTPWaitTest, WhatIsSetDuringASendCountsForTheNext) {
    SmtpScript script;
    script.Extensions = {};
    script.Faults = {{SmtpStep::Mail, SmtpFault::Close, "", "", 0, 1}};
    const FakeSmtpServer server(script);
    Sender sender(server);
    QTimer::singleShot(0, [&] { sender.Smtp.SetRecipient(u"bob@example.com"_s); });
    EXPECT_TRUE(sender.SendTo(kAnn));
    EXPECT_TRUE(sender.Smtp.Send());
    EXPECT_EQ(Reached(server), QByteArrayList({"ann@example.com", "bob@example.com"}));
}

TEST(SMTPWaitTest, HandlerOfTheErrorMaySendAgain) {
    SmtpScript script;
    script.Faults = {{SmtpStep::Rcpt, SmtpFault::Reply, "550 no\r\n", "ann"}};
    const FakeSmtpServer server(script);
    Sender sender(server);
    bool second = false;
    QObject::connect(&sender.Smtp, &OSSMTP::SMTP::ErrorSMTP,
                     [&] { second = sender.SendTo(u"bob@example.com"_s); });
    EXPECT_FALSE(sender.SendTo(kAnn));
    EXPECT_TRUE(second);
}

TEST(SMTPWaitTest, ObjectDestroyedWhileItWaitsEndsTheSend) {
    for (const SmtpStep step : kSteps) {
        const FakeSmtpServer server(SilentAt(step));
        auto sender = std::make_unique<Sender>(server);
        QTimer::singleShot(50, [&] {
            sender->Smtp.Abort();
            sender.reset();
        });
        EXPECT_FALSE(sender->SendTo(kAnn));
        EXPECT_EQ(sender, nullptr);
    }
}

TEST(SMTPWaitTest, ObjectDestroyedByTheHandlerOfItsErrorIsSafe) {
    const FakeSmtpServer server;
    auto *smtp = new OSSMTP::SMTP;
    smtp->SetServer(u"127.0.0.1"_s);
    smtp->SetPort(server.Port());
    bool told = false;
    QObject::connect(smtp, &OSSMTP::SMTP::ErrorSMTP, [&] {
        told = true;
        delete smtp;
    });
    EXPECT_FALSE(smtp->Send());
    EXPECT_TRUE(told);
}

} // namespace varlo::test
