// A mailbox check with its server, its preferences and its Pending list.
#pragma once

#include "core/Literals.h"
#include "pop3/FakePending.h"
#include "pop3/Pop3Check.h"
#include "support/FakePop3Server.h"
#include "support/Printers.h"
#include "support/Settle.h"
#include "support/TestProfile.h"
#include "support/WaitUntil.h"

#include <gtest/gtest.h>

#include <memory>

namespace varlo::test {

inline ShownBox ReplyBox(const QString &reply) {
    return {u"Varlo POP3 Error"_s, u"POP3 Error ["_s + reply + u']', BoxButtons::Ok, BoxIcon::Exclamation};
}

inline QStringList Texts(std::initializer_list<const char *> texts) {
    QStringList list;
    for (const char *text : texts)
        list << QString::fromUtf8(text);
    return list;
}

inline QByteArray Mail(const char *subject, const char *from, const char *id = "") {
    return QByteArray("From: ") + from + "\r\nSubject: " + subject + "\r\nMessage-ID: " + id +
           "\r\n\r\nbody\r\n";
}

class Pop3CheckTest : public testing::Test {
protected:
    Pop3CheckTest() {
        Set("POPServer", u"127.0.0.1"_s);
        Set("POPUsername", u"joe"_s);
        Set("POPPassword", u"secret"_s);
        Set("POPPort", u"1"_s); // stored, and never used
    }

    // As the file has it, where the check reads it.
    void Set(const char *key, const QString &value) {
        profile.session.INI.SetSection(u"POP3"_s);
        profile.session.INI.Values(QString::fromLatin1(key), value);
    }

    static bool Until(const std::function<bool()> &condition) { return test::WaitUntil(condition); }
    bool UntilComplete(int checks = 1) {
        return Until([&] { return Completed() == checks; });
    }
    qsizetype Completed() const { return profile.StatusTexts.filter(u"POP3 check complete"_s).size(); }
    bool UntilSent(const char *command) {
        return Until([&] { return server.Commands.contains(command); });
    }
    bool UntilBox() {
        return Until([&] { return !profile.Boxes.Shown.empty(); });
    }
    // The console's lines without their times.
    QStringList Console() const {
        QStringList lines;
        for (const QString &line : profile.ConsoleLines)
            lines << line.mid(line.indexOf(u'|') + 2);
        return lines;
    }
    // The folder of the logs goes when the console has the line that ends so.
    QMetaObject::Connection LoseLogsAt(const QString &ending) {
        return QObject::connect(&profile.session.Status, &StatusFeed::ConsoleLine,
                                [this, ending](const QString &line) {
                                    if (line.endsWith(ending))
                                        QDir(profile.Path(u"logs"_s)).removeRecursively();
                                });
    }
    ShownBox ErrorBox(int number) const {
        ShownBox box = profile.Boxes.Shown.back();
        EXPECT_TRUE(box.Title.endsWith(u" Error %1 in Unknown"_s.arg(number))) << box.Title.toStdString();
        return box;
    }

    test::TestProfile profile;
    test::FakePop3Server server;
    test::FakePending pending{profile.session};
    int PreferencesOpened = 0;
    std::unique_ptr<Pop3Check> check = std::make_unique<Pop3Check>(
        profile.session, pending.Door(), [this] { ++PreferencesOpened; }, server.serverPort());
};

} // namespace varlo::test
