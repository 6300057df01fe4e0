// When an address joined a list and left it, across the versions that were kept.
#pragma once

#include <QDateTime>
#include <QStringList>

#include <functional>

namespace varlo::History {

// One version, or the list as it is now, which comes last.
struct TrailStop {
    QDateTime Until; // when it was replaced; invalid for the last one
    QDateTime Next;  // when the stop that follows came; later than Until where others between have gone
    QString Cause;   // what replaced it
    std::function<QStringList()> Entries; // may throw RuntimeError: that stop is passed over
};

struct TrailEvent {
    enum class Kind { WasThere, Joined, Left } What;
    QDateTime From;  // when, or the earliest; of WasThere: until when at least
    QDateTime Until; // the latest; the same as From when it is known to the second
    QString Cause;   // known then, too

    bool operator==(const TrailEvent &) const = default;
};

// What happened to the address (letter case aside), the oldest first; nothing when no stop has it.
QList<TrailEvent> TrailOf(const QString &address, const QList<TrailStop> &stops);

} // namespace varlo::History
