// Reading and writing of whole text files: encodings, safe replacement, appending.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace varlo {

// Bytes of a file as text: UTF-8, else the code page of older programs (FromAnsi: no byte is lost). A UTF-8
// byte-order mark at the start is dropped.
QString DecodeText(const QByteArray &bytes);

// Text as the bytes of a file: UTF-8 on every system, so that a profile can move between them. No byte-order mark.
QByteArray EncodeText(const QString &text);

// The lines of a text, without their ends: CR LF, or the lone LF that an editor on Linux leaves (no line of
// ours ever holds one). The last line counts with or without an end; an empty text has no lines.
QStringList SplitLines(const QString &text);

// SplitLines(DecodeText(ReadFile(path))), without the copies of the whole text in between: lists are long.
QStringList ReadLines(const QString &path);

// All bytes of the file. Throws RuntimeError (53 when it does not exist, 70, 57).
QByteArray ReadFile(const QString &path);

enum class FileAccess { Normal, OwnerOnly };

// Replaces the file at `path` by `bytes` as one step: after a crash, a full disk or a kill the old file is
// there or the new one. `access` is used only when the file is new. A file that another program holds open is tried
// again for a second. Throws RuntimeError (61, 70, 75 for the name of a device, 76, 57); the old file then stays as
// it was.
void WriteFile(const QString &path, const QByteArray &bytes, FileAccess access = FileAccess::Normal);

// Appends `line` and CR LF with one write and closes the file again; the file is created when missing. A line
// that the disk takes only in part is not there at all. The size of the file then, in bytes. Throws
// RuntimeError.
qint64 AppendLine(const QString &path, const QString &line);

// Renames a file or folder. Throws RuntimeError: 53 when `from` is missing, 58 when `to` exists and is
// another one.
void RenamePath(const QString &from, const QString &to);

// Deletes the file. Throws RuntimeError (53, 70).
void DeleteFile(const QString &path);

} // namespace varlo
