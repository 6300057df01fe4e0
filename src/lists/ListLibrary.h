// The mailing list files of the open profile, and everything that is done to them. A file has one address a
// line, each line ended by CR LF.
#pragma once

#include "core/Session.h"

namespace varlo::ListLibrary {

// The file of the list `name`.
QString Path(const Session &session, const QString &name);

// The names of all lists, sorted without regard to letter case, ties by code point.
QStringList Names(const Session &session);

// The lines as they stand, empty ones included. Throws RuntimeError (53, 70, 57).
QStringList Read(const Session &session, const QString &name);

// Replaces the file as one step. Throws RuntimeError; the old file then stays as it was.
void Write(const Session &session, const QString &name, const QStringList &entries);
// The same with any file.
void WriteTo(const QString &path, const QStringList &entries);

// Keeps the list's file beside it as "name.vlo.bak" (".bak2", ".bak3", ... when that is taken) and returns
// the file name of the copy; empty when there is no file to keep. Throws RuntimeError.
QString KeepBackup(const Session &session, const QString &name);

// Creates the list or empties the one of that name. Throws RuntimeError.
void Create(const Session &session, const QString &name);

// Throws RuntimeError: 53 when the list is missing, 58 when the new name is taken.
void Rename(const Session &session, const QString &oldName, const QString &newName);

// Throws RuntimeError (53, 70).
void Delete(const Session &session, const QString &name);

// Creates an empty file at `path` when none exists. Throws RuntimeError.
void EnsureListFile(const QString &path);

} // namespace varlo::ListLibrary
