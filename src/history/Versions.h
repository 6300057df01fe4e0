// The versions of a list that were kept.
#pragma once

#include "core/Session.h"
#include "history/HistoryIndex.h"

namespace varlo::History {

// The extension of a version, and what follows it when the version is compressed.
inline const QString kVersionExtension = u".vlo"_s;
inline const QString kCompressedExtension = u".z"_s;

struct Version {
    QString Path;
    QDateTime Until; // when it was replaced, by the operator's clock
    QDateTime
        Next;     // when the version came that follows here; later than Until where others between have gone
    IndexRow Row; // with nothing but the stem when a crash left no note
};

// The oldest first. None when the list has no history. Throws RuntimeError (70, 57).
QList<Version> Versions(const Session &session, const QString &name);

// What a version held. Throws RuntimeError (53, 70, 57: it is damaged).
QStringList ReadVersion(const Version &version);
QByteArray ReadVersionBytes(const QString &path);

// Compresses the file of a version: first the new one is written whole, then the old one goes. Throws RuntimeError.
void Compress(const QString &path);

// The time that a stem stands for; invalid when it is no stem.
QDateTime TimeOf(const QString &stem);
// The stem for a version that is replaced at that time, a free one in the folder.
QString FreeStem(const QString &folder, const QDateTime &time);

} // namespace varlo::History
