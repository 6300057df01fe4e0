#include "compose/AttachmentList.h"

#include "core/Literals.h"
#include "core/RuntimeError.h"

#include <QDir>
#include <QFileInfo>

namespace varlo {

namespace {

qint64 FileSize(const QString &path) {
    const QFileInfo info(path);
    if (!info.isFile())
        throw RuntimeError(FileNotFound);
    if (!info.isReadable())
        throw RuntimeError(PermissionDenied);
    return info.size();
}

// In whole numbers: a double would lose the half of very large totals.
qint64 AddedInKilobytes(qint64 total, qint64 bytes) {
    const qint64 sum = total + bytes / 1024;
    const qint64 rest = bytes % 1024;
    return sum + (rest > 512 || (rest == 512 && sum % 2 != 0) ? 1 : 0);
}

} // namespace

QStringList AttachmentPaths(const QStringList &array) {
    return array.isEmpty() || array.first().isEmpty() ? QStringList() : array;
}

QStringList AttachmentArray(const QStringList &paths) {
    return paths.isEmpty() ? QStringList(QString()) : paths;
}

QString AttachmentSummary(const QStringList &paths) {
    qint64 total = 0;
    for (const QString &path : paths)
        total = AddedInKilobytes(total, FileSize(path));
    return QString::number(paths.size()) + u" Files ("_s + QString::number(total) + u" KB)"_s;
}

QString UnreadableText(const QStringList &paths) {
    QStringList names;
    for (const QString &path : paths)
        if (const QFileInfo info(path); !info.isFile() || !info.isReadable())
            names << u'[' + info.fileName() + u']';
    if (names.isEmpty())
        return {};
    return (names.size() == 1 ? u"An attached file can no longer be read: "_s
                              : u"Attached files can no longer be read: "_s) +
           names.join(u", "_s);
}

QStringList DroppedFiles(const QList<QUrl> &urls) {
    QStringList files;
    for (const QUrl &url : urls) {
        const QString path = url.toLocalFile();
        if (!path.isEmpty() && !QFileInfo(path).isDir())
            files << QDir::toNativeSeparators(path);
    }
    return files;
}

} // namespace varlo
