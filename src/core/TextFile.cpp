#include "core/TextFile.h"

#include "core/AnsiText.h"
#include "core/Patience.h"
#include "core/RuntimeError.h"
#include "core/SystemFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

namespace varlo {

namespace {

constexpr QByteArrayView kByteOrderMark("\xEF\xBB\xBF");

// A device would swallow what is meant for a file.
void RefuseDevice(const QString &path) {
    if (SystemFile::IsDevice(path))
        throw RuntimeError(PathFileAccess);
}

template<typename Attempt> auto WhileHeld(const QString &path, Attempt attempt) {
    return Patiently(attempt, [&path] { return SystemFile::IsHeld(path); });
}

void Replace(const QString &path, const QByteArray &bytes, FileAccess access) {
    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw QFileInfo(path).dir().exists() ? RuntimeError(PermissionDenied) : RuntimeError(PathNotFound);
    if (access == FileAccess::OwnerOnly)
        SystemFile::MakePrivate(file, isNew);
    // Flushed by hand: a commit does not notice that its own flush failed, and would put a file cut short in
    // the place of the old one.
    if (file.write(bytes) != bytes.size() || !file.flush())
        throw file.error() == QFileDevice::NoError ? RuntimeError(DiskFull) : FileError(file);
    if (!file.commit())
        throw FileError(file);
}

void Rename(const QString &from, const QString &to) {
    const QFileInfo source(from);
    const bool renamed = source.isDir() ? QDir().rename(from, to) : QFile::rename(from, to);
    if (!renamed)
        throw QFileInfo(to).dir().exists() ? RuntimeError(PermissionDenied) : RuntimeError(PathNotFound);
}

} // namespace

QString DecodeText(const QByteArray &bytes) {
    const QByteArray body = bytes.startsWith(kByteOrderMark) ? bytes.sliced(kByteOrderMark.size()) : bytes;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(body);
    return utf8.hasError() ? FromAnsi(body) : text;
}

QByteArray EncodeText(const QString &text) {
    return text.toUtf8();
}

QStringList SplitLines(const QString &text) {
    if (text.isEmpty())
        return {};
    QStringList lines = text.split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    for (QString &line : lines)
        if (line.endsWith(u'\r'))
            line.chop(1);
    return lines;
}

QByteArray ReadFile(const QString &path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw FileError(file);
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        throw RuntimeError(DeviceIoError);
    return bytes;
}

QStringList ReadLines(const QString &path) {
    const QByteArray bytes = ReadFile(path);
    // A mark at the start of a line is part of it, but would be lost if the line were decoded by itself.
    // Looking for its first byte alone is a matter of microseconds.
    if (bytes.contains(kByteOrderMark.front()) || !QUtf8StringView(bytes).isValidUtf8())
        return SplitLines(DecodeText(bytes));
    QStringList lines;
    lines.reserve(bytes.count('\n') + 1);
    for (qsizetype start = 0; start < bytes.size();) {
        const qsizetype lineFeed = bytes.indexOf('\n', start);
        const qsizetype end = lineFeed < 0 ? bytes.size() : lineFeed;
        const qsizetype chopped = end > start && bytes[end - 1] == '\r' ? 1 : 0;
        lines.append(QString::fromUtf8(bytes.constData() + start, end - start - chopped));
        start = end + 1;
    }
    return lines;
}

void WriteFile(const QString &path, const QByteArray &bytes, FileAccess access) {
    RefuseDevice(path);
    WhileHeld(path, [&] { Replace(path, bytes, access); });
}

qint64 AppendLine(const QString &path, const QString &line) {
    RefuseDevice(path);
    return WhileHeld(path, [&] { return SystemFile::Append(path, EncodeText(line) + "\r\n"); });
}

void RenamePath(const QString &from, const QString &to) {
    const QFileInfo source(from);
    const QFileInfo target(to);
    if (!source.exists())
        throw RuntimeError(FileNotFound);
    if (from == to)
        return;
    // On a file system that ignores letter case, a change of case finds "the other" file, which is the same
    // one.
    if (target.exists() && source != target)
        throw RuntimeError(FileAlreadyExists);
    RefuseDevice(to);
    WhileHeld(from, [&] { Rename(from, to); });
}

void DeleteFile(const QString &path) {
    QFile file(path);
    if (!file.exists())
        throw RuntimeError(FileNotFound);
    WhileHeld(path, [&file] {
        if (!file.remove())
            throw RuntimeError(PermissionDenied);
    });
}

} // namespace varlo
