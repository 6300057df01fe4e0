// A profile with one list, saved as the program saves it.
#pragma once

#include "core/Literals.h"
#include "core/ProfileLayout.h"
#include "core/TextFile.h"
#include "history/KeepVersion.h"
#include "history/Versions.h"
#include "support/TestProfile.h"

#include <QDir>
#include <gtest/gtest.h>

namespace varlo::test {

class HistoryFixture : public testing::Test {
protected:
    static QStringList Words(const char *text) {
        return QString::fromUtf8(text).split(u' ', Qt::SkipEmptyParts);
    }
    static QByteArray Bytes(const QStringList &entries) {
        QByteArray bytes;
        for (const QString &entry : entries)
            bytes += entry.toUtf8() + "\r\n";
        return bytes;
    }
    void WriteList(const QStringList &entries, const QString &name = u"news"_s) const {
        WriteFile(ProfileLayout::ListFile(session, name), Bytes(entries));
    }
    void Save(const QStringList &entries, const QString &cause = u"Save"_s,
              const QString &name = u"news"_s) const {
        History::ReplaceKeeping(session, name, cause, entries, [&] { WriteList(entries, name); });
    }
    QList<History::Version> Versions(const QString &name = u"news"_s) const {
        return History::Versions(session, name);
    }
    // The entries of all versions, "a b" for each.
    QStringList Kept(const QString &name = u"news"_s) const {
        QStringList kept;
        for (const History::Version &version : Versions(name))
            kept.append(History::ReadVersion(version).join(u' '));
        return kept;
    }
    QStringList HistoryFiles(const QString &folder = u"news"_s) const {
        return QDir(profile.Path(u"history/"_s + folder)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    // A file in the history of the list, whatever it holds.
    void Put(const char *file, const QByteArray &bytes, const QString &folder = u"news"_s) const {
        QDir().mkpath(profile.Path(u"history/"_s + folder));
        profile.Write(u"history/"_s + folder + u'/' + QString::fromLatin1(file), bytes);
    }
    QStringList Errors() const { return profile.Log(u"ErrorLog.txt"_s); }
    void Wait(qint64 seconds) { profile.Clock = profile.Clock.addSecs(seconds); }

    TestProfile profile;
    Session &session = profile.session;
};

} // namespace varlo::test
