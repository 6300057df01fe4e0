#include "lists/UnsavedList.h"

#include "core/Literals.h"
#include "core/Reporting.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "lists/ListFile.h"
#include "lists/ListStore.h"

namespace varlo::UnsavedList {

QString Path(const Session &session, const QString &name) {
    return ListFile::Path(session, name) + u".unsaved"_s;
}

bool Keep(const Session &session, const ListStore &lists) {
    if (lists.ListSaved || lists.CurrentListName.isEmpty())
        return false;
    try {
        QString text;
        for (const QString &entry : lists.lstEmailList(kChronological).Entries())
            text += entry + u"\r\n"_s;
        WriteFile(Path(session, lists.CurrentListName), EncodeText(text));
        return true;
    } catch (const RuntimeError &error) {
        LogError(session, u"Main.KeepUnsaved"_s, error);
    }
    return false;
}

void Restore(const Session &session, ListStore &lists) {
    const QString path = Path(session, lists.CurrentListName);
    const QStringList entries = ReadLines(path).mid(0, EntryListModel::kMostEntries);
    lists.lstEmailList(kChronological).SetEntries(entries);
    lists.lstEmailList(kAlphabetical).SetEntries(entries);
    lists.MarkUnsaved();
    lists.UpdateControls();
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
