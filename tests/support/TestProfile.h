// A program folder of the test's own with one open profile, a session on it and a fixed clock.
#pragma once

#include "core/Session.h"
#include "support/ScriptedDialogs.h"

#include <QTemporaryDir>

namespace varlo::test {

// The clock stands at 2026-03-04 05:06:07 until a test moves it.
class TestProfile {
public:
    TestProfile();

    // Writes and reads files of the profile, such as "lists/news.vlo"; bytes as they stand on the disk.
    void Write(const QString &relativePath, const QByteArray &bytes) const;
    QByteArray Read(const QString &relativePath) const;
    QString Path(const QString &relativePath) const;
    // The lines of a log, without their line ends; empty when there is none.
    QStringList Log(const QString &file) const;

    QTemporaryDir Folder;
    ScriptedDialogs Boxes;
    Session session;
    QDateTime Clock{QDate(2026, 3, 4), QTime(5, 6, 7)};
    QStringList StatusTexts;  // every text that reached the status bar
    QStringList ConsoleLines; // every line that reached the console
};

} // namespace varlo::test
