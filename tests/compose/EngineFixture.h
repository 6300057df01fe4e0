// One engine on a profile of its own, with everything it says kept in order.
#pragma once

#include "compose/SendEngine.h"
#include "core/Literals.h"
#include "core/Preferences.h"
#include "support/Printers.h"
#include "support/TestProfile.h"
#include "support/WaitUntil.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace varlo::test {

class EngineFixture : public testing::Test {
protected:
    EngineFixture() {
        session.Prefs.SMTPServer = u"mail.example.org"_s;
        session.Prefs.SMTPPort = 2525;
        session.Prefs.SMTPFrom = u"Ann Editor"_s;
        session.Prefs.SMTPEmail = u"ann@example.org"_s;
        message.ToName = u"Mailing List"_s;
        message.Subject = u"News"_s;
        message.Text = u"Hello."_s;
        message.Recipients = Addresses(3);
        QObject::connect(engine.get(), &SendEngine::StatusChanged, &keeper,
                         [this](const QString &text) { statuses << text; });
        QObject::connect(engine.get(), &SendEngine::CaptionChanged, &keeper,
                         [this](const QString &text) { captions << text; });
        QObject::connect(engine.get(), &SendEngine::ProgressChanged, &keeper,
                         [this](int percent) { progress.push_back(percent); });
        QObject::connect(engine.get(), &SendEngine::SendingChanged, &keeper,
                         [this](bool on) { sendings.push_back(on); });
        QObject::connect(engine.get(), &SendEngine::Completed, &keeper, [this] { completed = true; });
    }

    // a1@example.org, a2@example.org and so on.
    static QStringList Addresses(int count) {
        QStringList addresses;
        for (int i = 1; i <= count; ++i)
            addresses << u'a' + QString::number(i) + u"@example.org"_s;
        return addresses;
    }

    // Returns when the send is over, or at once when another one runs: whether every recipient had his turn.
    bool Send() {
        if (engine->IsSending()) {
            engine->Send(message);
            return false;
        }
        completed = false;
        engine->Send(message);
        EXPECT_TRUE(WaitUntil([this] { return !engine || !engine->IsSending(); }));
        return completed;
    }

    QTimer *Timer() const { return engine->findChild<QTimer *>(u"tmrTimeRemaining"_s); }
    void Tick() const { QMetaObject::invokeMethod(Timer(), "timeout", Qt::DirectConnection); }

    // The errors of the log: number, routine and description.
    QStringList Errors() const {
        QStringList errors;
        for (const QString &line : profile.Log(u"ErrorLog.txt"_s))
            errors << line.mid(line.indexOf(u"Error "_s) + 6);
        return errors;
    }

    TestProfile profile;
    Session &session = profile.session;
    MakeMailer makeMailer;
    QStringList pending;
    std::unique_ptr<SendEngine> engine = std::make_unique<SendEngine>(
        session, [this](const MailAccount &account) { return makeMailer(account); },
        [this](const PendingRequest &request) { offer(request); });
    std::function<void(const PendingRequest &)> offer = [this](const PendingRequest &request) {
        pending << request.Entry();
    };
    ComposedMessage message;
    QObject keeper; // ends the connections before what they write to
    QStringList statuses;
    QStringList captions;
    std::vector<int> progress;
    std::vector<bool> sendings;
    bool completed = false;
};

} // namespace varlo::test
