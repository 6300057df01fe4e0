#include "core/RuntimeError.h"
#include "core/SystemFile.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace varlo::SystemFile {

// Plain system calls: a list of 32,767 requests writes as many lines, and QFile costs twice the time of the
// calls.
qint64 Append(const QString &path, const QByteArray &bytes) {
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

void MakePrivate(QFileDevice &file, bool isNew) {
    if (isNew)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}

bool IsHeld(const QString &) {
    return false;
}

bool CanWriteIn(const QString &folder) {
    return QFileInfo(folder).isWritable();
}

bool IsDevice(const QString &) {
    return false; // a device is a file of its own, with rights of its own
}

} // namespace varlo::SystemFile
