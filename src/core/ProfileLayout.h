// Where everything of the open profile lies: the one place that knows its folders and file names.
#pragma once

#include "core/Session.h"

namespace varlo::ProfileLayout {

// The extension of a list file.
inline const QString kListExtension = u".vlo"_s;

QString Settings(const Session &session);
QString Draft(const Session &session);
QString Unsent(const Session &session);

QString ListsFolder(const Session &session);
// The file of the list `name`.
QString ListFile(const Session &session, const QString &name);
QString SentFolder(const Session &session);
QString SentCopy(const Session &session, const QString &file);
QString LogsFolder(const Session &session);
QString Log(const Session &session, const QString &file);

// The folder of the versions of lists; made when the first one is kept.
QString HistoryFolder(const Session &session);

// The folders that every profile has, in the order in which they are made.
QStringList Folders(const Session &session);

} // namespace varlo::ProfileLayout
