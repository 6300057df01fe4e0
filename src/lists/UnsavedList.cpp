#include "lists/UnsavedList.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "lists/ListLibrary.h"
#include "lists/OpenList.h"

namespace varlo::UnsavedList {

QString Path(const Session &session, const QString &name) {
    return ListLibrary::Path(session, name) + u".unsaved"_s;
}

bool Keep(const Session &session, const OpenList &list) {
    if (list.IsSaved() || list.Name().isEmpty())
        return false;
    try {
        ListLibrary::WriteTo(Path(session, list.Name()), list.Box(kChronological).Model().Entries());
        return true;
    } catch (const RuntimeError &error) {
        LogError(session, u"Main.KeepUnsaved"_s, error);
    }
    return false;
}

void Restore(const Session &session, OpenList &list) {
    const QString path = Path(session, list.Name());
    const QStringList entries = ReadLines(path).mid(0, EntryListModel::kMostEntries);
    list.ReplaceAll(entries);
    DeleteFile(path);
}

void Rename(const Session &session, const QString &name, const QString &newName) {
    if (PathExists(Path(session, name)))
        RenamePath(Path(session, name), Path(session, newName));
}

void Discard(const Session &session, const QString &name) {
    const QString path = Path(session, name);
    if (PathExists(path))
        DeleteFile(path);
}

} // namespace varlo::UnsavedList
