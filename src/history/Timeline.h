// Everything that is kept of one list, in the words of its operator.
#pragma once

#include "core/Session.h"
#include "history/AddressTrail.h"

namespace varlo::History {

struct TimelineRow {
    enum class Kind {
        Backup, // "LIST.vlo.bak": the file when it was too long to be loaded
        Version,
        Now,     // the file
        Unsaved, // "LIST.vlo.unsaved"
    } What;
    QString Path;
    QDateTime Until; // when it was replaced; of what was not, when it was written
    QDateTime Next;  // see Version
    QString Cause;   // what replaced it; of what was not, what it is
    int Entries = -1;
    int Added = -1; // -1 when not known
    int Removed = -1;
};

// The oldest first: backups, versions, the file, unsaved changes. Throws RuntimeError (70, 57).
QList<TimelineRow> TimelineOf(const Session &session, const QString &name);
// Throws RuntimeError (53, 70, 57: it is damaged).
QStringList ReadRow(const TimelineRow &row);

// When the address joined the list and left it, one line for each, and what holds now. Versions that cannot be read
// are passed over.
QStringList TrailTexts(const QString &address, const QList<TimelineRow> &rows);

// Date and time in the system's format, with seconds.
QString TimeText(const QDateTime &time);
// A row as it is called in a sentence: "the version until 21/11/2026 21:05:00", "now".
QString NameOf(const TimelineRow &row);

} // namespace varlo::History
