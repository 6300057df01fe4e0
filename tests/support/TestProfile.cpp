#include "support/TestProfile.h"

#include "core/Literals.h"
#include "core/TextFile.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

namespace varlo::test {

TestProfile::TestProfile() : session(Folder.path(), Boxes) {
    session.ProfilePath = QDir(session.ProfilesFolder()).filePath(u"Test"_s);
    for (const char *folder : {"lists", "sent", "logs"})
        EXPECT_TRUE(QDir().mkpath(session.ProfileFile(QString::fromLatin1(folder))));
    session.INI.SetFile(session.ProfileFile(u"prefs.ini"_s));
    session.Now = [this] { return Clock; };
    QObject::connect(&session.Status, &StatusFeed::StatusText, &session.Status,
                     [this](const QString &text) { StatusTexts << text; });
    QObject::connect(&session.Status, &StatusFeed::ConsoleLine, &session.Status,
                     [this](const QString &line) { ConsoleLines << line; });
}

QString TestProfile::Path(const QString &relativePath) const {
    return QDir(session.ProfilePath).filePath(relativePath);
}

void TestProfile::Write(const QString &relativePath, const QByteArray &bytes) const {
    QFile file(Path(relativePath));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << file.errorString().toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray TestProfile::Read(const QString &relativePath) const {
    QFile file(Path(relativePath));
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot read " << file.fileName().toStdString();
        return {};
    }
    return file.readAll();
}

QStringList TestProfile::Log(const QString &file) const {
    const QString path = session.ProfileFile(u"logs"_s, file);
    return QFile::exists(path) ? ReadLines(path) : QStringList();
}

} // namespace varlo::test
