#include "pictures/SampleProfile.h"

#include "core/Literals.h"
#include "core/Settings.h"
#include "core/TextFile.h"
#include "pop3/FakePending.h"
#include "pop3/Pop3Check.h"
#include "support/FakePop3Server.h"
#include "support/WaitUntil.h"

#include <QDir>

namespace varlo::test {

namespace {

const QByteArray kNewsletter = "william.archer@example.com\r\n"
                               "sofia.lindqvist@example.net\r\n"
                               "m.okafor@example.org\r\n"
                               "hannah.vogel@example.net\r\n"
                               "jan.dekker@example.org\r\n"
                               "claire.fontaine@example.com\r\n"
                               "peter.novak@example.net\r\n"
                               "aiko.tanaka@example.org\r\n"
                               "garden@example.com\r\n"
                               "rosa.martinez@example.net\r\n"
                               "tom.whitfield@example.com\r\n"
                               "ines.carvalho@example.org\r\n"
                               "liam.byrne@example.net\r\n"
                               "agnes.kovacs@example.com\r\n"
                               "david.stone@example.org\r\n"
                               "yusuf.demir@example.net\r\n"
                               "emma.holm@example.com\r\n"
                               "b.castellani@example.org\r\n";

const QByteArray kSettings =
    "[General]\r\nNotify=1\r\n"
    "[SMTP]\r\nSMTPServer=smtp.example.org\r\nSMTPFrom=The Garden Society\r\n"
    "SMTPEmail=news@example.org\r\n"
    "[POP3]\r\nPOPServer=localhost\r\nPOPUsername=news\r\nPOPPassword=secret-word\r\n"
    "[Notify]\r\n"
    "SubBody=Welcome!\\n\\nYour e-mail address has been subscribed to our mailing list.\r\n"
    "[Signature]\r\nText=-- \\nThe Garden Society\\nnews@example.org\r\nAutoAdd=1\r\n"
    "[Main]\r\nListCurrent=2\r\n";

QByteArray Mail(const char *subject, const char *from, const char *id) {
    return QByteArray("From: ") + from + "\r\nSubject: " + subject + "\r\nMessage-ID: <" + id +
           "@example.org>\r\n\r\n";
}

} // namespace

SampleProfile::SampleProfile() : session(folder_.path(), boxes_) {
    for (const char *name : {"Chess Club", "Garden Society", "Private"})
        QDir().mkpath(QDir(session.ProfilesFolder()).filePath(QString::fromLatin1(name)));
    session.ProfilePath = QDir(session.ProfilesFolder()).filePath(u"Garden Society"_s);
    for (const char *name : {"lists", "sent", "logs"})
        QDir().mkpath(session.ProfileFile(QString::fromLatin1(name)));
    WriteLists();
    WriteSettings();
    session.Now = [this] { return clock_ = clock_.addSecs(1); };
}

void SampleProfile::WriteLists() const {
    const auto write = [this](const char *name, const QByteArray &bytes) {
        WriteFile(session.ProfileFile(u"lists"_s, QString::fromLatin1(name)), bytes);
    };
    write("Announcements.vlo", "press@example.com\r\ncity.council@example.org\r\n");
    write("Members.vlo", "hannah.vogel@example.net\r\njan.dekker@example.org\r\nemma.holm@example.com\r\n");
    write("Newsletter.vlo", kNewsletter);
}

void SampleProfile::WriteSettings() const {
    WriteFile(QDir(session.ProgramFolder).filePath(u"global.ini"_s), "[Profiles]\r\nProfileCurrent=1\r\n");
    WriteFile(session.ProfileFile(u"prefs.ini"_s), kSettings);
}

QStringList SampleProfile::CheckMailbox() {
    FakePop3Server server;
    server.Mailbox = {Mail("subscribe", "Greta Winter <greta.winter@example.com>", "5f0c1a"),
                      Mail("unsubscribe", "David Stone <david.stone@example.org>", "91d27e")};
    FakePending pending(session);
    Pop3Check check(
        session, pending.Door(), [] {}, server.serverPort());
    bool complete = false;
    QObject::connect(&session.Status, &StatusFeed::StatusText, &check,
                     [&](const QString &text) { complete = complete || text.contains(u"check complete"_s); });
    check.Start();
    if (!WaitUntil([&] { return complete; }))
        qFatal("the mailbox check did not end");
    session.Prefs.POPServer = u"pop.example.org"_s; // that is pictured, not used
    session.AllSettings.Write({&Preferences::POPServer});
    return pending.Entries;
}

void SampleProfile::WriteAttachment(const QString &path, int bytes) const {
    WriteFile(path, QByteArray(bytes, 'x'));
}

void SampleProfile::RemoveLists() const {
    QDir(session.ProfileFile(u"lists"_s)).removeRecursively();
}

} // namespace varlo::test
