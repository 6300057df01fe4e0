#include "core/Profiles.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "core/modPublic.h"

#include <QDir>
#include <QFileInfo>

namespace varlo::Profiles {

namespace {

// Whether `name` is that of an entry of its folder, and not a way out of it.
bool IsOwnEntry(const QString &name) {
    return !name.isEmpty() && name != u"."_s && name != u".."_s && !name.contains(u'/') &&
           !name.contains(QDir::separator());
}

} // namespace

QStringList Names(const QString &profilesFolder) {
    QStringList names =
        QDir(profilesFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Unsorted);
    SortNames(names);
    return names;
}

void Create(const QString &profilesFolder, const QString &name) {
    const QDir folder(profilesFolder);
    if (PathExists(folder.filePath(name)))
        throw RuntimeError(PathFileAccess);
    if (!folder.mkdir(name))
        throw folder.exists() ? RuntimeError(PermissionDenied) : RuntimeError(PathNotFound);
}

void Rename(const QString &profilesFolder, const QString &oldName, const QString &newName) {
    const QDir folder(profilesFolder);
    if (!IsOwnEntry(oldName))
        throw RuntimeError(FileNotFound);
    RenamePath(folder.filePath(oldName), folder.filePath(newName));
}

void Delete(const QString &profilesFolder, const QString &name) {
    if (!IsOwnEntry(name))
        return;
    const QString path = QDir(profilesFolder).filePath(name);
    if (QFileInfo(path).isSymLink())
        QFile::remove(path);
    else
        QDir(path).removeRecursively();
}

} // namespace varlo::Profiles
