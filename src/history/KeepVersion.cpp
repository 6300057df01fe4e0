#include "history/KeepVersion.h"

#include "core/Literals.h"
#include "core/ProfileLayout.h"
#include "core/Reporting.h"
#include "core/Settings.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "history/Differences.h"
#include "history/HistoryFolder.h"
#include "history/Retention.h"
#include "history/Versions.h"

#include <QDir>

#include <optional>

namespace varlo::History {

namespace {

const QString kLabel = u"Main.KeepVersion"_s;

// So that the first save of a day does not work off a whole day before it is done.
constexpr int kMostCompressed = 4;

// A version that is on the disk, without its line in the index yet.
struct Kept {
    QString Folder;
    QString Path;
    QStringList Entries;
    IndexRow Row;
};

std::optional<Kept> Keep(const Session &session, const QString &name, const QString &cause,
                         const QStringList &entries) {
    const QString file = ProfileLayout::ListFile(session, name);
    if (!IsOn(session) || !PathExists(file))
        return std::nullopt;
    const QByteArray bytes = ReadFile(file);
    Kept kept{Folder(session, name), {}, SplitLines(DecodeText(bytes)), {}};
    if (kept.Entries == entries)
        return std::nullopt;
    QDir().mkpath(kept.Folder);
    kept.Row = {FreeStem(kept.Folder, session.Now()), cause};
    kept.Path = QDir(kept.Folder).filePath(kept.Row.Stem + kVersionExtension);
    WriteFile(kept.Path, bytes);
    return kept;
}

void Note(Kept kept, const QStringList &entries) {
    const Differences differences = Between(kept.Entries, entries);
    kept.Row.Entries = static_cast<int>(kept.Entries.size());
    kept.Row.Added = static_cast<int>(differences.Added.size());
    kept.Row.Removed = static_cast<int>(differences.Removed.size());
    AppendToIndex(kept.Folder, kept.Row);
}

// A kill between a version and the change behind it leaves the file twice: the next version takes its place.
void DropWhatAKillLeft(QList<Version> &versions) {
    const qsizetype place = versions.size() - 2;
    if (place < 0 || versions[place].Row.Entries >= 0 ||
        ReadVersionBytes(versions[place].Path) != ReadVersionBytes(versions.last().Path))
        return;
    DeleteFile(versions[place].Path);
    versions.removeAt(place);
}

// Ages are counted to the version before the last one, not to now: a clock that is wrong for one save, or a
// computer that stood still for a month, does not thin out the week before.
void TidyUp(QList<Version> versions) {
    DropWhatAKillLeft(versions);
    if (versions.size() < 2)
        return;
    const QDateTime now = versions[versions.size() - 2].Until;
    QList<QDateTime> times;
    for (const Version &version : versions)
        times.append(version.Until);
    const QList<qsizetype> superfluous = Superfluous(times, now);
    for (const qsizetype i : superfluous)
        DeleteFile(versions[i].Path);
    int compressed = 0;
    for (qsizetype i = 0; i < versions.size() && compressed < kMostCompressed; ++i) {
        const QString &path = versions[i].Path;
        const bool isOld = versions[i].Until < now.addDays(-1);
        if (isOld && path.endsWith(kVersionExtension) && !superfluous.contains(i)) {
            Compress(path);
            ++compressed;
        }
    }
}

// What goes wrong with a version is noted, and no more: the list itself is what counts.
template<typename Work> std::optional<RuntimeError> TroubleOf(Work &&work) {
    try {
        work();
    } catch (const RuntimeError &error) {
        return error;
    }
    return std::nullopt;
}

void MoveVersions(const Session &session, const QString &oldName, const QString &newName) {
    const QString folder = Folder(session, newName);
    const QList<Version> versions = Versions(session, oldName);
    for (const Version &version : versions) {
        IndexRow row = version.Row;
        row.Stem = FreeStem(folder, version.Until);
        const bool isCompressed = version.Path.endsWith(kCompressedExtension);
        RenamePath(version.Path, QDir(folder).filePath(row.Stem + kVersionExtension +
                                                       (isCompressed ? kCompressedExtension : QString())));
        if (row.Entries >= 0)
            AppendToIndex(folder, row);
    }
    const QDir left(Folder(session, oldName));
    QFile::remove(left.filePath(u"index.csv"_s));
    QDir().rmdir(left.path()); // stays when there is something else in it
}

} // namespace

bool IsOn(const Session &session) {
    try {
        return session.AllSettings.Read(&Preferences::History) == 1;
    } catch (const RuntimeError &) {
        return true; // rather a version too many
    }
}

void ReplaceKeeping(const Session &session, const QString &name, const QString &cause,
                    const QStringList &entries, const std::function<void()> &change) {
    std::optional<Kept> kept;
    auto trouble = TroubleOf([&] { kept = Keep(session, name, cause, entries); });
    try {
        change();
    } catch (const RuntimeError &) {
        if (kept)
            QFile::remove(kept->Path); // else it stands there twice, and the next version takes its place
        throw;
    }
    if (kept)
        trouble = TroubleOf([&] {
            Note(*kept, entries);
            TidyUp(Versions(session, name));
        });
    if (trouble)
        LogError(session, kLabel, *trouble);
}

void Rename(const Session &session, const QString &oldName, const QString &newName) {
    const QString folder = Folder(session, oldName);
    const QString newFolder = Folder(session, newName);
    const auto trouble = TroubleOf([&] {
        if (!PathExists(folder))
            return;
        const bool isSame =
            QDir(folder).canonicalPath() == QDir(newFolder).canonicalPath(); // but for letter case
        if (PathExists(newFolder) && !isSame)
            MoveVersions(session, oldName, newName);
        else
            RenamePath(folder, newFolder);
    });
    if (trouble)
        LogError(session, kLabel, *trouble);
}

} // namespace varlo::History
