#include "core/RuntimeError.h"

#include <QFileDevice>
#include <QFileInfo>

#include <cerrno>
#include <limits>

namespace varlo {

namespace {

QString DescriptionOf(ErrorNumber number) {
    switch (number) {
    case InvalidProcedureCall:
        return QStringLiteral("Invalid procedure call or argument");
    case Overflow:
        return QStringLiteral("Overflow");
    case TypeMismatch:
        return QStringLiteral("Type mismatch");
    case ResumeWithoutError:
        return QStringLiteral("Resume without error");
    case FileNotFound:
        return QStringLiteral("File not found");
    case FileAlreadyOpen:
        return QStringLiteral("File already open");
    case DeviceIoError:
        return QStringLiteral("Device I/O error");
    case FileAlreadyExists:
        return QStringLiteral("File already exists");
    case DiskFull:
        return QStringLiteral("Disk full");
    case PermissionDenied:
        return QStringLiteral("Permission denied");
    case PathFileAccess:
        return QStringLiteral("Path/File access error");
    case PathNotFound:
        return QStringLiteral("Path not found");
    case KeyAlreadyPresent:
        return QStringLiteral("This key is already associated with an element of this collection");
    }
    return {};
}

} // namespace

RuntimeError::RuntimeError(ErrorNumber number) : RuntimeError(number, DescriptionOf(number)) {
}

RuntimeError::RuntimeError(int number, QString description)
    : number_(number), description_(std::move(description)), utf8_(description_.toUtf8()) {
}

RuntimeError SystemError(int systemCode) {
    switch (systemCode) {
    case ENOENT:
        return RuntimeError(FileNotFound);
    case ENOTDIR:
        return RuntimeError(PathNotFound);
    case EEXIST:
        return RuntimeError(FileAlreadyExists);
    case ENOSPC:
    case EFBIG:
        return RuntimeError(DiskFull);
#ifdef EDQUOT
    case EDQUOT:
        return RuntimeError(DiskFull);
#endif
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return RuntimeError(PermissionDenied);
    case EBUSY:
        return RuntimeError(FileAlreadyOpen);
    default:
        return RuntimeError(DeviceIoError);
    }
}

RuntimeError FileError(const QFileDevice &file) {
    const QFileInfo info(file.fileName());
    switch (file.error()) {
    case QFileDevice::ResourceError:
        return RuntimeError(DiskFull);
    case QFileDevice::PermissionsError:
        return RuntimeError(PermissionDenied);
    case QFileDevice::OpenError:
        if (!info.dir().exists())
            return RuntimeError(PathNotFound);
        if (!info.exists() && !(file.openMode() & QIODevice::WriteOnly))
            return RuntimeError(FileNotFound);
        return RuntimeError(PermissionDenied);
    case QFileDevice::WriteError:
        return RuntimeError(DiskFull);
    default:
        return RuntimeError(DeviceIoError);
    }
}

qint16 To16Bit(qint64 value) {
    if (value < std::numeric_limits<qint16>::min() || value > std::numeric_limits<qint16>::max())
        throw RuntimeError(Overflow);
    return static_cast<qint16>(value);
}

} // namespace varlo
