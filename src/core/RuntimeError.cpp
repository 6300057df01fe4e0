#include "core/RuntimeError.h"

#include "core/Literals.h"

#include <QDir>
#include <QFileDevice>
#include <QFileInfo>

#include <cerrno>
#include <limits>

namespace varlo {

namespace {

QString DescriptionOf(ErrorNumber number) {
    switch (number) {
    case InvalidProcedureCall:
        return u"Invalid procedure call or argument"_s;
    case Overflow:
        return u"Overflow"_s;
    case TypeMismatch:
        return u"Type mismatch"_s;
    case ResumeWithoutError:
        return u"Resume without error"_s;
    case FileNotFound:
        return u"File not found"_s;
    case FileAlreadyOpen:
        return u"File already open"_s;
    case DeviceIoError:
        return u"Device I/O error"_s;
    case FileAlreadyExists:
        return u"File already exists"_s;
    case DiskFull:
        return u"Disk full"_s;
    case PermissionDenied:
        return u"Permission denied"_s;
    case PathFileAccess:
        return u"Path/File access error"_s;
    case PathNotFound:
        return u"Path not found"_s;
    case KeyAlreadyPresent:
        return u"This key is already associated with an element of this collection"_s;
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
#ifdef EDQUOT
    case EDQUOT:
#endif
        return RuntimeError(DiskFull);
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
    case QFileDevice::RenameError: // the new file is whole, and something keeps it from the old one's place
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
