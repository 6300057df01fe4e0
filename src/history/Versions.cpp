#include "history/Versions.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"
#include "core/TextFile.h"
#include "core/modPublic.h"
#include "history/HistoryFolder.h"

#include <QDir>
#include <QHash>
#include <QSet>

namespace varlo::History {

namespace {

const QString kStemFormat = u"yyyy-MM-dd HHmmss"_s;
constexpr int kCompression = 6;
constexpr qsizetype kLengthBytes = 4;
constexpr uchar kLongest = 0x3F; // of the first length byte: 1 GB; what says more is damaged

// The path of each version by its stem. A kill while one was compressed leaves both files: the first is whole.
QMap<QString, QString> PathsIn(const QString &folder) {
    QMap<QString, QString> paths;
    for (const QString &extension : {kVersionExtension + kCompressedExtension, kVersionExtension}) {
        const QStringList files = QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Unsorted);
        for (const QString &file : files)
            if (file.endsWith(extension) && TimeOf(file.chopped(extension.size())).isValid())
                paths.insert(file.chopped(extension.size()), QDir(folder).filePath(file));
    }
    return paths;
}

// In the order of the saves, which the clock need not keep; what has no line stands where its time says. Stems are
// compared as texts: a list that was saved ten thousand times has as many lines, and each save reads them.
QStringList StemsInOrder(const QMap<QString, QString> &paths, const QList<IndexRow> &index) {
    QStringList noted;
    for (const IndexRow &row : index)
        noted.append(row.Stem);
    noted.removeDuplicates();
    const QSet<QString> known(noted.begin(), noted.end());
    const QStringList files = paths.keys();
    for (const QString &stem : files) {
        if (known.contains(stem))
            continue;
        const QStringView time = QStringView(stem).first(kStemFormat.size());
        const auto next = std::find_if(noted.begin(), noted.end(), [&](const QString &other) {
            return QStringView(other).left(kStemFormat.size()) > time;
        });
        noted.insert(next, stem);
    }
    return noted;
}

} // namespace

QDateTime TimeOf(const QString &stem) {
    return QDateTime::fromString(stem.first(qMin(stem.size(), kStemFormat.size())), kStemFormat);
}

QString FreeStem(const QString &folder, const QDateTime &time) {
    const QString first = time.toString(kStemFormat);
    QString stem = first;
    const auto isTaken = [&] {
        const QString path = QDir(folder).filePath(stem + kVersionExtension);
        return PathExists(path) || PathExists(path + kCompressedExtension);
    };
    for (int i = 2; isTaken(); ++i)
        stem = first + u'-' + QString::number(i);
    return stem;
}

QList<Version> Versions(const Session &session, const QString &name) {
    const QString folder = Folder(session, name);
    const QList<IndexRow> index = ReadIndex(folder);
    QHash<QString, IndexRow> rows;
    for (const IndexRow &row : index)
        rows.insert(row.Stem, row);
    const QMap<QString, QString> paths = PathsIn(folder);
    QList<Version> versions;
    QString gone; // the last one that stood behind the last version
    const auto closeGap = [&] {
        if (!versions.isEmpty() && !gone.isEmpty())
            versions.last().Next = TimeOf(gone);
        gone.clear();
    };
    const QStringList stems = StemsInOrder(paths, index);
    for (const QString &stem : stems) {
        if (!paths.contains(stem)) {
            gone = stem;
            continue;
        }
        closeGap();
        const QDateTime time = TimeOf(stem);
        versions.append({paths[stem], time, time, rows.value(stem, IndexRow{stem, {}})});
    }
    closeGap();
    return versions;
}

QByteArray ReadVersionBytes(const QString &path) {
    QByteArray bytes = ReadFile(path);
    if (!path.endsWith(kCompressedExtension))
        return bytes;
    if (bytes.size() < kLengthBytes || static_cast<uchar>(bytes.front()) > kLongest)
        throw RuntimeError(DeviceIoError);
    QByteArray whole = qUncompress(bytes);
    if (whole.isEmpty() && bytes.first(kLengthBytes) != QByteArray(kLengthBytes, '\0'))
        throw RuntimeError(DeviceIoError);
    return whole;
}

QStringList ReadVersion(const Version &version) {
    return SplitLines(DecodeText(ReadVersionBytes(version.Path)));
}

void Compress(const QString &path) {
    WriteFile(path + kCompressedExtension, qCompress(ReadFile(path), kCompression));
    DeleteFile(path);
}

} // namespace varlo::History
