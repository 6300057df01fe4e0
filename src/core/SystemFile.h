// What a file needs of the system itself. One source for each kind of system; nothing else here is told apart.
#pragma once

#include <QByteArray>
#include <QString>

class QFileDevice;

namespace varlo::SystemFile {

// Appends `bytes` to the file, which is made when missing, with one write. Bytes that the disk takes only in part
// are not there at all. The size of the file then. Throws RuntimeError.
qint64 Append(const QString &path, const QByteArray &bytes);

// Lets nobody but its owner (and the system's administrators) read or write the open `file`, which is being written
// to take the place of one at that path unless it `isNew`. Rights that the old one got by hand stay where the system
// hands them on.
void MakePrivate(QFileDevice &file, bool isNew);

// True when another program holds the file at `path` so that it cannot be replaced now, but can be soon: a virus
// scanner, an indexer, a backup. Never on systems where an open file can be replaced.
bool IsHeld(const QString &path);

// True when a file can be made in the folder.
bool CanWriteIn(const QString &folder);

// True when the name at the end of `path` stands for a device of the system, whatever its folder: what is written
// there is lost.
bool IsDevice(const QString &path);

} // namespace varlo::SystemFile
