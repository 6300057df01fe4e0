#include "history/Timeline.h"

#include "core/Literals.h"
#include "core/ProfileLayout.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "history/Versions.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace varlo::History {

namespace {

using Kind = TimelineRow::Kind;

void AppendFile(QList<TimelineRow> &rows, Kind what, const QString &path, const QString &cause) {
    if (!PathExists(path))
        return;
    const QDateTime written = QFileInfo(path).lastModified();
    rows.append({what, path, written, written, cause});
}

QStringList BackupsOf(const QString &file) {
    const QFileInfo list(file);
    QStringList names = list.dir().entryList(QDir::Files | QDir::Hidden, QDir::Time | QDir::Reversed);
    names.removeIf([&](const QString &name) { return !name.startsWith(list.fileName() + u".bak"_s); });
    return names;
}

// What the stops are to a trail. Backups and unsaved changes are no part of what was on the list when.
QList<TrailStop> StopsOf(const QList<TimelineRow> &rows) {
    QList<TrailStop> stops;
    for (const TimelineRow &row : rows) {
        if (row.What == Kind::Version)
            stops.append({row.Until, row.Next, row.Cause, [row] { return ReadRow(row); }});
        else if (row.What == Kind::Now)
            stops.append({{}, {}, {}, [row] { return ReadRow(row); }});
    }
    return stops;
}

QString EventText(const TrailEvent &event) {
    if (event.What == TrailEvent::Kind::WasThere)
        return event.Until.isValid()
                   ? u"In the oldest version, which was replaced on "_s + TimeText(event.Until)
                   : u"On the list; no earlier version is kept"_s;
    const QString what = event.What == TrailEvent::Kind::Joined ? u"Joined"_s : u"Left"_s;
    if (event.From != event.Until)
        return what + u" between "_s + TimeText(event.From) + u" and "_s + TimeText(event.Until);
    const QString cause = event.Cause.isEmpty() ? QString() : u" - "_s + event.Cause;
    return what + u" on "_s + TimeText(event.From) + cause;
}

} // namespace

QList<TimelineRow> TimelineOf(const Session &session, const QString &name) {
    const QString file = ProfileLayout::ListFile(session, name);
    QList<TimelineRow> rows;
    const QStringList backups = BackupsOf(file);
    for (const QString &backup : backups)
        AppendFile(rows, Kind::Backup, QFileInfo(file).dir().filePath(backup),
                   u"Too long to be loaded: "_s + backup);
    const QList<Version> versions = Versions(session, name);
    for (const Version &version : versions)
        rows.append({Kind::Version, version.Path, version.Until, version.Next, version.Row.Cause,
                     version.Row.Entries, version.Row.Added, version.Row.Removed});
    AppendFile(rows, Kind::Now, file, u"The list as it is saved now"_s);
    AppendFile(rows, Kind::Unsaved, file + u".unsaved"_s, u"Not saved when the program had to end"_s);
    return rows;
}

QStringList ReadRow(const TimelineRow &row) {
    return SplitLines(DecodeText(ReadVersionBytes(row.Path)));
}

QStringList TrailTexts(const QString &address, const QList<TimelineRow> &rows) {
    const QList<TrailEvent> events = TrailOf(address, StopsOf(rows));
    QStringList texts;
    for (const TrailEvent &event : events)
        texts.append(EventText(event));
    if (texts.isEmpty())
        return {u"["_s + address + u"] is in no version of this list."_s};
    const bool isThere = events.last().What != TrailEvent::Kind::Left;
    const bool hasNow =
        std::any_of(rows.begin(), rows.end(), [](const TimelineRow &row) { return row.What == Kind::Now; });
    if (!hasNow)
        texts.append(u"The list was deleted."_s);
    else
        texts.append(isThere ? u"On the list now."_s : u"Not on the list now."_s);
    return texts;
}

QString TimeText(const QDateTime &time) {
    const QLocale locale = QLocale::system();
    QString format = locale.timeFormat(QLocale::ShortFormat);
    if (const qsizetype minutes = format.indexOf(u"mm"_s); minutes > 0 && !format.contains(u's'))
        format.insert(minutes + 2, format.at(minutes - 1) + u"ss"_s);
    return locale.toString(time.date(), QLocale::ShortFormat) + u' ' + locale.toString(time.time(), format);
}

QString NameOf(const TimelineRow &row) {
    switch (row.What) {
    case Kind::Version:
        return u"the version until "_s + TimeText(row.Until);
    case Kind::Now:
        return u"now"_s;
    case Kind::Unsaved:
        return u"the unsaved changes"_s;
    case Kind::Backup:
        break;
    }
    return u"the backup of "_s + TimeText(row.Until);
}

} // namespace varlo::History
