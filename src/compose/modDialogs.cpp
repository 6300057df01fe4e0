#include "compose/modDialogs.h"

#include "core/Literals.h"

#include <QDir>

namespace varlo {

QString AllFilesFilter() {
    return u"All Files"_s + QChar(u'\0') + u"*.*"_s + QChar(u'\0');
}

QString OpenFile(Session &session, const QString &filter, const QString &folder, const QString &title) {
    return QDir::toNativeSeparators(session.Boxes.OpenFileBox(filter, folder, title));
}

QString SaveFile(Session &session, const QString &filter, const QString &folder, const QString &title) {
    return QDir::toNativeSeparators(session.Boxes.SaveFileBox(filter, folder, title));
}

QString BrowseFolder(Session &session, const QString &folder, const QString &title) {
    return QDir::toNativeSeparators(session.Boxes.FolderBox(folder, title));
}

} // namespace varlo
