// The one exception type of the program, with its fixed numbers and descriptions.
#pragma once

#include <QString>

#include <exception>

class QFileDevice;

namespace varlo {

enum ErrorNumber : int {
    InvalidProcedureCall = 5,
    Overflow = 6,
    TypeMismatch = 13,
    ResumeWithoutError = 20,
    FileNotFound = 53,
    FileAlreadyOpen = 55,
    DeviceIoError = 57,
    FileAlreadyExists = 58,
    DiskFull = 61,
    PermissionDenied = 70,
    PathFileAccess = 75,
    PathNotFound = 76,
    KeyAlreadyPresent = 457,
};

// Thrown by the lowest layer that fails and caught at the border of the routine that reports it, never
// further.
class RuntimeError : public std::exception {
public:
    // A known number with its description.
    explicit RuntimeError(ErrorNumber number);
    // Any number, with a description of its own (an SMTP reply, an exception of a library).
    RuntimeError(int number, QString description);

    int Number() const { return number_; }
    const QString &Description() const { return description_; }
    const char *what() const noexcept override { return utf8_.constData(); }

private:
    int number_;
    QString description_;
    QByteArray utf8_; // keeps what() alive
};

// The program's error for the last failure of `file`, told apart by the system's own error code.
RuntimeError FileError(const QFileDevice &file);

// The program's error for a system error code (errno on POSIX systems).
RuntimeError SystemError(int systemCode);

// `value` as a 16-bit signed whole number. Throws Overflow when it does not fit.
qint16 To16Bit(qint64 value);

} // namespace varlo
