#include "lists/ListLibrary.h"

#include "core/Literals.h"
#include "core/ProfileLayout.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

#include <QDir>
#include <QFileInfo>

namespace varlo::ListLibrary {

using ProfileLayout::kListExtension;

QString Path(const Session &session, const QString &name) {
    return ProfileLayout::ListFile(session, name);
}

QStringList Names(const Session &session) {
    // Without a name filter: QDir makes a regular expression of it, and brings the library for those.
    QStringList names =
        QDir(ProfileLayout::ListsFolder(session)).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
    names.removeIf([](const QString &name) { return !name.endsWith(kListExtension, Qt::CaseInsensitive); });
    for (QString &name : names)
        name.chop(kListExtension.size());
    // Where the file system tells letter case apart, "NEWS.VLO" is not the file of a list "NEWS".
    names.removeIf([&](const QString &name) { return !PathExists(Path(session, name)); });
    SortNames(names);
    return names;
}

QStringList Read(const Session &session, const QString &name) {
    return ReadLines(Path(session, name));
}

void Write(const Session &session, const QString &name, const QStringList &entries) {
    WriteTo(Path(session, name), entries);
}

void WriteTo(const QString &path, const QStringList &entries) {
    QString text;
    qsizetype length = 0;
    for (const QString &entry : entries)
        length += entry.size() + 2;
    text.reserve(length);
    for (const QString &entry : entries)
        text += entry + u"\r\n"_s;
    WriteFile(path, EncodeText(text));
}

QString KeepBackup(const Session &session, const QString &name) {
    const QString path = Path(session, name);
    if (!PathExists(path))
        return {};
    QString backup = path + u".bak"_s;
    for (int i = 2; PathExists(backup); ++i)
        backup = path + u".bak"_s + QString::number(i);
    WriteFile(backup, ReadFile(path));
    return QFileInfo(backup).fileName();
}

void Create(const Session &session, const QString &name) {
    Write(session, name, {});
}

void Rename(const Session &session, const QString &oldName, const QString &newName) {
    RenamePath(Path(session, oldName), Path(session, newName));
}

void Delete(const Session &session, const QString &name) {
    DeleteFile(Path(session, name));
}

void EnsureListFile(const QString &path) {
    if (!PathExists(path))
        WriteFile(path, {});
}

} // namespace varlo::ListLibrary
