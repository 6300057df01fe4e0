#include "compose/modDialogs.h"

#include <QDir>

namespace varlo {

QString AllFilesFilter() {
    return QStringLiteral("All Files") + QChar(u'\0') + QStringLiteral("*.*") + QChar(u'\0');
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
