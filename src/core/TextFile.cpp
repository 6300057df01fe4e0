#include "core/TextFile.h"

#include "core/RuntimeError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

#include <array>
#include <cerrno>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace varlo {

namespace {

// Code points of the Windows-1252 bytes 0x80 to 0x9F; all others are Latin-1.
constexpr std::array<char16_t, 32> kWindows1252{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr QByteArrayView kByteOrderMark("\xEF\xBB\xBF");

QString FromWindows1252(const QByteArray &bytes) {
    QString text = QString::fromLatin1(bytes);
    for (QChar &c : text)
        if (c.unicode() >= 0x80 && c.unicode() <= 0x9F)
            c = QChar(kWindows1252[c.unicode() - 0x80U]);
    return text;
}

} // namespace

QString DecodeText(const QByteArray &bytes) {
    const QByteArray body = bytes.startsWith(kByteOrderMark) ? bytes.sliced(kByteOrderMark.size()) : bytes;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = utf8.decode(body);
    return utf8.hasError() ? FromWindows1252(body) : text;
}

QByteArray EncodeText(const QString &text) {
#ifdef Q_OS_WIN
    return text.toLocal8Bit();
#else
    return text.toUtf8();
#endif
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
    const bool isNew = !QFileInfo::exists(path);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw QFileInfo(path).dir().exists() ? RuntimeError(PermissionDenied) : RuntimeError(PathNotFound);
    if (isNew && access == FileAccess::OwnerOnly)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    // Flushed by hand: a commit does not notice that its own flush failed, and would put a file cut short in
    // the place of the old one.
    if (file.write(bytes) != bytes.size() || !file.flush())
        throw file.error() == QFileDevice::NoError ? RuntimeError(DiskFull) : FileError(file);
    if (!file.commit())
        throw FileError(file);
}

#ifdef Q_OS_UNIX

// Plain system calls: a list of 32,767 requests writes as many lines, and QFile costs twice the time of the
// calls.
qint64 AppendLine(const QString &path, const QString &line) {
    const QByteArray bytes = EncodeText(line) + "\r\n";
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (descriptor < 0)
        throw errno == ENOENT ? RuntimeError(PathNotFound) : SystemError(errno);
    const auto written = ::write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size()));
    const int code = written < 0 ? errno : ENOSPC;
    // The part that a full disk took goes again: the next line would stand on the same line. Where even that
    // fails, the half line is all that can be had.
    if (written > 0 && written < bytes.size()) [[maybe_unused]]
        const int ignored =
            ::ftruncate(descriptor, ::lseek(descriptor, 0, SEEK_END) - static_cast<off_t>(written));
    const qint64 size = ::lseek(descriptor, 0, SEEK_CUR);
    ::close(descriptor);
    if (written != bytes.size())
        throw SystemError(code);
    return size;
}

#else

qint64 AppendLine(const QString &path, const QString &line) {
    const QByteArray bytes = EncodeText(line) + "\r\n";
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        throw FileError(file);
    const qint64 before = file.size();
    if (file.write(bytes) == bytes.size())
        return before + bytes.size();
    file.resize(before); // see above
    throw RuntimeError(DiskFull);
}

#endif

void RenamePath(const QString &from, const QString &to) {
    const QFileInfo source(from);
    const QFileInfo target(to);
    if (!source.exists())
        throw RuntimeError(FileNotFound);
    if (from == to)
        return;
    // On a file system that ignores letter case, a change of case finds "the other" file, which is the same
    // one.
    if (target.exists() && source.canonicalFilePath() != target.canonicalFilePath())
        throw RuntimeError(FileAlreadyExists);
    const bool renamed = source.isDir() ? QDir().rename(from, to) : QFile::rename(from, to);
    if (!renamed)
        throw target.dir().exists() ? RuntimeError(PermissionDenied) : RuntimeError(PathNotFound);
}

void DeleteFile(const QString &path) {
    QFile file(path);
    if (!file.exists())
        throw RuntimeError(FileNotFound);
    if (!file.remove())
        throw RuntimeError(PermissionDenied);
}

} // namespace varlo
